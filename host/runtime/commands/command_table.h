// The commands of the host's command processor, as tables (one per family) and the
// lookup that takes a name as typed: "_" (the international name) and "." (the built-in
// command, never a redefinition) in front are dropped, aliases name their command.
#pragma once

#include <span>
#include <string>

namespace kelvo::commands {

class Context;

using CommandFn = void (*)(Context&);

struct CommandEntry {
    const wchar_t* name;  // upper case, as the host lists it: "LINE", "-LAYER"
    CommandFn run;
};

std::span<const CommandEntry> geometryCommands();  // LINE CIRCLE ARC PLINE TEXT -INSERT
std::span<const CommandEntry> editCommands();      // ERASE MOVE COPY ROTATE SCALE MIRROR EXPLODE
std::span<const CommandEntry> layerCommands();     // -LAYER -PURGE
std::span<const CommandEntry> undoCommands();      // UNDO U
std::span<const CommandEntry> viewCommands();      // ZOOM REGEN REDRAW

// The name without its "_" and "." prefixes, upper case.
std::wstring bareCommandName(const std::wstring& typed);
// The command a typed name runs, or null for an unknown command.
const CommandEntry* findCommand(const std::wstring& typed);
// UNDO and U keep their own history steps (they are not one).
bool isUndoCommand(const CommandEntry& entry);

}  // namespace kelvo::commands
