// The undo history of one drawing: what the UNDO command takes back.
//
// Design. The log keeps a baseline: for every object of the drawing, its DWG-filer image
// (class, bytes, erased flag), and a copy of the header variables. A checkpoint compares
// the drawing with the baseline; every object whose image differs (or that is new) gives
// an entry holding its image from before the change (none for a new object), and the
// baseline takes the new images. The entries of one checkpoint form a group, labelled
// with the command that made them; a group stays open between UNDO BEgin and UNDO End,
// and each checkpoint then adds to it (an object keeps its oldest image).
//
// Undoing a group puts each recorded image back in place: a new object of the recorded
// class is read from the image and takes the place of the current one behind the same
// object id (so entity names held by LISP stay valid), with the recorded erased flag; an
// object made in the group is erased. A class the class dictionary cannot make (the
// symbol tables) reads its image into the object in place instead. The owner's image (a
// block's entity list, a table's records) comes back the same way, so the drawing is as
// it was, handle for handle. Handles are not reused: the handle seed keeps counting.
//
// States: no group open --begin()--> group open --end()--> no group open. mark() puts a
// mark between groups; back() undoes groups down to the newest mark and removes it.
//
// The diff costs one serialization of each object per checkpoint, skipped when the
// database's write count (every opening for write, every object added) has not moved
// since the last one; the history holds only the before-images of what changed. The
// history starts with the log (the first command of the drawing): what was there before
// is the starting point.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "runtime/drawing/drawing_access.h"

namespace kelvo::commands {

class UndoLog {
public:
    explicit UndoLog(AcDbDatabase& db);

    AcDbDatabase& database() const { return *db_; }

    // Records what changed since the last checkpoint as a group labelled `label` (into the
    // open group when there is one). With `always`, an empty group is kept too (a command
    // that changed nothing is still one operation).
    void checkpoint(const std::wstring& label, bool always = false);

    void begin();  // ends an open group, opens a new one
    void end();    // closes the open group (nothing when none is open)
    bool groupOpen() const { return open_; }
    void mark();

    struct Outcome {
        std::vector<std::wstring> labels;  // of the groups undone, newest first
        bool hitMark = false;              // stopped at a mark (number) or removed one (back)
        bool everything = false;           // nothing is left to undo
    };
    // Undoes up to `count` groups, stopping at a mark.
    Outcome undo(int count);
    // Undoes back to the newest mark and removes it; without a mark, everything.
    Outcome back();
    bool hasMark() const;
    // Throws std::runtime_error when an object of the drawing is open (it cannot be
    // replaced then); nothing is changed in that case.
    void requireClosed() const;

private:
    struct Image {
        std::wstring className;
        bool isEntity = false;
        bool erased = false;
        bool proxy = false;  // only its erased flag is taken back
        std::vector<std::uint8_t> bytes;
        bool operator==(const Image&) const = default;
    };
    using Header = std::map<std::wstring, drawing::HeaderValue>;
    struct Group {
        std::wstring label;
        bool isMark = false;
        std::map<std::uint64_t, std::optional<Image>> before;  // by handle
        std::optional<Header> header;
    };

    std::map<std::uint64_t, Image> snapshot() const;
    void undoGroup(Group& group);

    AcDbDatabase* db_;
    std::map<std::uint64_t, Image> baseline_;
    std::uint64_t seenWrites_ = 0;  // the database's write count at the baseline
    Header headerBaseline_;
    std::vector<Group> groups_;
    bool open_ = false;
};

}  // namespace kelvo::commands
