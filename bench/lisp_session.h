// The module's database functions as a user's program reaches them: LISP evaluated by
// the current drawing's interpreter, which calls the module's callbacks through the
// host's external-call path and turns their value lists into LISP values. The module is
// the one a ModuleSession loaded; the same table and index are used.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/raw_floor.h"
#include "lisp/value.h"

namespace lisp {
class Interp;
}

namespace kelvo::bench {

// What a LISP list is made of, counted by walking it (the interpreter has no size of its
// own to tell).
struct ListCensus {
    std::int64_t conses = 0;
    std::int64_t strings = 0;
    std::int64_t characters = 0;  // in those strings
    std::int64_t numbers = 0;
    std::int64_t others = 0;  // symbols, names ...
};
ListCensus censusOf(const lisp::Value& list);

// The memory of one select into a LISP list.
struct SelectMemory {
    std::int64_t rows = 0;
    // The process's resident high-water mark above where it stood before the select
    // (reset through /proc/self/clear_refs); -1 when the mark cannot be reset.
    std::int64_t peakBytes = -1;
    // The allocator's bytes in use (mallinfo2) while the list is kept, above before.
    std::int64_t listBytes = 0;
    ListCensus census;
};

class LispSession {
public:
    // Uses the current drawing's interpreter of the host the module is loaded into.
    LispSession();

    // The table and index that kv_ functions use next, as (kv_table ...) sets them.
    void useTable(const std::wstring& index);
    // Sets the keys of the seek loops as LISP lists (outside any timed run).
    void setNames(const std::vector<std::wstring>& names);
    void setGroupCodes(const std::vector<GroupCode>& keys);

    // The timed programs; each returns the count the LISP program computed.
    std::int64_t walk();                       // kv_top, then kv_skip to the end
    std::int64_t seekNames();                  // kv_seek on each name
    std::int64_t seekGroupCodes();             // kv_seek on each (group code) list
    std::int64_t select(std::int64_t lastId);  // (length (kv_sql ...))

    // One select kept alive as a LISP variable, with its memory; the variable is cleared
    // before returning.
    SelectMemory selectMemory(std::int64_t lastId);

    // Evaluates `source` and returns the integer it yields; throws when it is not one.
    std::int64_t count(const std::wstring& source);
    lisp::Interp& interp() { return *interp_; }

private:
    lisp::Interp* interp_;
};

}  // namespace kelvo::bench
