// What a running command reads: one input per prompt, from the arguments of `command`
// (or a line of --input for a pause), and the typed readers every command uses (points,
// distances, angles, keywords, text, object selection). A reader that gets input it
// cannot use prints the host's message and asks again, taking the next input.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"

namespace kelvo::commands {

// One answer to a prompt.
struct Input {
    enum class Kind { Enter, Text, Point, Number, Entity, Selection, Pause };
    Kind kind = Kind::Enter;
    std::wstring text;              // Text
    AcGePoint3d point;              // Point
    double number = 0;              // Number
    std::vector<AcDbObjectId> ids;  // Entity (one), Selection
    bool integer = false;           // Number given as an integer
};

// Esc: the command ends where it is (what it made so far stays).
struct CommandCancelled {};
// The command cannot go on (its message is printed); the rest of the answers given with
// it are dropped, as they belong to no command.
struct CommandFailed {};

class UndoLog;

class Context {
public:
    // `take` gives the next input (it may wait for the next call of `command`).
    Context(AcDbDatabase& db, UndoLog& undo, bool echo, std::function<Input()> take);

    AcDbDatabase& db() const { return *db_; }
    UndoLog& undo() const { return *undo_; }
    bool echo() const { return echo_; }

    // A line as the host prints it: messages of the command when CMDECHO is 1.
    void say(const std::wstring& line) const;
    // A line printed whatever CMDECHO is (refusals, errors).
    void report(const std::wstring& line) const;

    // The next input for a prompt ("Specify first point:"), printed with what answered
    // it; a pause reads the next --input line (Esc or no line cancels).
    Input next(const std::wstring& prompt);

    // A point; a keyword (set in *keyword, "" for Enter when allowEnter) gives nullopt.
    // Text answers are "x,y[,z]", "@dx,dy[,dz]" (from the last point) and "@d<a" or "d<a".
    std::optional<AcGePoint3d> point(const std::wstring& prompt,
                                     const std::vector<std::wstring>& keywords = {},
                                     std::wstring* keyword = nullptr, bool allowEnter = false);
    // A distance: a number, or a point whose distance from `base` it is. Enter gives
    // `fallback` when there is one; a keyword gives nullopt with *keyword set.
    std::optional<double> distance(const std::wstring& prompt, const AcGePoint3d* base,
                                   std::optional<double> fallback,
                                   const std::vector<std::wstring>& keywords = {},
                                   std::wstring* keyword = nullptr);
    // An angle in degrees (a number), or a point giving the direction from `base`;
    // answered in radians.
    std::optional<double> angle(const std::wstring& prompt, const AcGePoint3d* base,
                                std::optional<double> fallback,
                                const std::vector<std::wstring>& keywords = {},
                                std::wstring* keyword = nullptr);
    // One of the keywords (its full spelling); Enter gives `fallback` ("" allowed).
    std::wstring keyword(const std::wstring& prompt, const std::vector<std::wstring>& keywords,
                         std::optional<std::wstring> fallback);
    // Text as typed; Enter gives "".
    std::wstring text(const std::wstring& prompt);
    // "Select objects:" until Enter: entity names, selection sets, Last, Previous, ALL,
    // Remove and Add. Entities on locked layers are left out, as the host does.
    std::vector<AcDbObjectId> select();

    AcGePoint3d lastPoint() const { return lastPoint_; }
    void setLastPoint(const AcGePoint3d& p) { lastPoint_ = p; }

    // The selection the previous command used (Previous), per drawing.
    static std::vector<AcDbObjectId>& previousSelection(AcDbDatabase& db);

private:
    std::optional<AcGePoint3d> pointFromText(const std::wstring& text) const;

    AcDbDatabase* db_;
    UndoLog* undo_;
    bool echo_;
    std::function<Input()> take_;
    AcGePoint3d lastPoint_;
};

// True when `input` names `keyword` (whole, or by its capital letters as the host
// abbreviates: "BEgin" by "BE", "mOde" by "O").
bool keywordMatches(const std::wstring& keyword, const std::wstring& input);
std::wstring upper(std::wstring text);
// A real as the host shows it in prompts (LUPREC 4: "2.5000").
std::wstring formatReal(double value);

}  // namespace kelvo::commands
