// The host's system variables as data: every variable's name, type, default, access,
// where its value lives and the range a write must respect. The rows are in
// sysvar_table.tsv, built into the host library.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lisp/value.h"

namespace kelvo::host {

enum class SysvarType { Int, Real, Str, List };

enum class SysvarScope {
    Session,  // one value for the whole session
    Drawing,  // one value per open drawing (the drawing's header variables among them)
    Host,     // worked out by the host when read (clock, files, the drawing's state)
};

struct Sysvar {
    std::wstring name;  // upper case
    SysvarType type = SysvarType::Int;
    lisp::Value initial;  // the default
    bool readOnly = false;
    SysvarScope scope = SysvarScope::Session;
    std::optional<double> low, high;  // inclusive bounds of a numeric write
};

// The variable of that name (any case); nullptr when the host has none.
const Sysvar* findSysvar(std::wstring_view name);
// The number of variables in the table.
std::size_t sysvarCount();

}  // namespace kelvo::host
