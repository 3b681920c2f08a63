// UNDO and U: the drawing's undo history (undo_log.h) from the command line.
//   a number (Enter: 1)  undoes that many commands, stopping at a mark
//   BEgin, End           make what comes between one step ("GROUP")
//   Mark, Back           Back undoes down to the newest mark (asking first when there is
//                        none: everything would go)
//   Auto, Control        accepted; this host always records everything (Control All)
// What was undone is named on one line, as the host does.

#include <stdexcept>

#include "runtime/commands/command_input.h"
#include "runtime/commands/command_table.h"
#include "runtime/commands/prompts.h"
#include "runtime/commands/undo_log.h"
#include "utf8.h"

namespace kelvo::commands {
namespace {

using namespace prompt;

void tell(Context& c, const UndoLog::Outcome& outcome) {
    std::wstring line;
    for (const auto& label : outcome.labels) line += (line.empty() ? L"" : L" ") + label;
    if (!line.empty()) c.say(line);
    if (outcome.hitMark) c.say(L"Mark encountered");
    if (outcome.everything) c.say(L"Everything has been undone");
}

void undoSteps(Context& c, int count) {
    try {
        tell(c, c.undo().undo(count));
    } catch (const std::runtime_error& e) {
        c.report(fromUtf8(e.what()));
    }
}

void undoCommand(Context& c) {
    c.say(kUndoSettings);
    UndoLog& log = c.undo();
    for (;;) {
        Input in = c.next(kUndoOption);
        if (in.kind == Input::Kind::Enter) return undoSteps(c, 1);
        double number = 0;
        bool isNumber = in.kind == Input::Kind::Number;
        if (in.kind == Input::Kind::Number) number = in.number;
        if (in.kind == Input::Kind::Text) {
            wchar_t* end = nullptr;
            number = std::wcstod(in.text.c_str(), &end);
            isNumber = end != in.text.c_str() && *end == 0;
        }
        if (isNumber) {
            if (number < 1 || number != static_cast<int>(number)) {
                c.report(L"Requires a positive integer or option keyword.");
                continue;
            }
            return undoSteps(c, static_cast<int>(number));
        }
        std::wstring kw;
        if (in.kind == Input::Kind::Text)
            for (const wchar_t* option : {L"Auto", L"Control", L"BEgin", L"End", L"Mark", L"Back"})
                if (keywordMatches(option, in.text)) kw = option;
        if (kw == L"BEgin") return log.begin();
        if (kw == L"End") return log.end();
        if (kw == L"Mark") {
            log.checkpoint(L"");
            return log.mark();
        }
        if (kw == L"Back") {
            if (!log.hasMark() &&
                c.keyword(kUndoEverything, {L"Yes", L"No"}, std::wstring(L"Yes")) == L"No")
                return;
            try {
                tell(c, log.back());
            } catch (const std::runtime_error& e) {
                c.report(fromUtf8(e.what()));
            }
            return;
        }
        if (kw == L"Auto") {
            c.keyword(L"Enter UNDO Auto mode [ON/OFF] <On>:", {L"ON", L"OFF"}, std::wstring(L"ON"));
            return;
        }
        if (kw == L"Control") {
            std::wstring control =
                c.keyword(L"Enter an UNDO control option [All/None/One/Combine/Layer] <All>:",
                          {L"All", L"None", L"One", L"Combine", L"Layer"}, std::wstring(L"All"));
            if (control == L"None" || control == L"One")
                c.report(L"This host keeps the whole undo history (Control All).");
            return;
        }
        c.report(L"Requires a positive integer or option keyword.");
    }
}

void uCommand(Context& c) {
    undoSteps(c, 1);
}

constexpr CommandEntry kUndoCommands[] = {
    {L"UNDO", undoCommand},
    {L"U", uCommand},
};

}  // namespace

std::span<const CommandEntry> undoCommands() {
    return kUndoCommands;
}

}  // namespace kelvo::commands
