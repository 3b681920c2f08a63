// Finding a command by the name typed (see command_table.h).

#include "runtime/commands/command_table.h"

#include <utility>

#include "runtime/commands/command_input.h"

namespace kelvo::commands {
namespace {

// Aliases as the host's default alias file has them; the dialog commands this host has
// no dialog for (LAYER, INSERT, PURGE) run their command-line form.
constexpr std::pair<const wchar_t*, const wchar_t*> kAliases[] = {
    {L"L", L"LINE"},         {L"C", L"CIRCLE"},   {L"A", L"ARC"},        {L"PL", L"PLINE"},
    {L"DT", L"TEXT"},        {L"DTEXT", L"TEXT"}, {L"I", L"-INSERT"},    {L"-I", L"-INSERT"},
    {L"INSERT", L"-INSERT"}, {L"E", L"ERASE"},    {L"M", L"MOVE"},       {L"CO", L"COPY"},
    {L"CP", L"COPY"},        {L"RO", L"ROTATE"},  {L"SC", L"SCALE"},     {L"MI", L"MIRROR"},
    {L"X", L"EXPLODE"},      {L"LA", L"-LAYER"},  {L"-LA", L"-LAYER"},   {L"LAYER", L"-LAYER"},
    {L"PU", L"-PURGE"},      {L"-PU", L"-PURGE"}, {L"PURGE", L"-PURGE"}, {L"Z", L"ZOOM"},
    {L"RE", L"REGEN"},       {L"R", L"REDRAW"},
};

}  // namespace

std::wstring bareCommandName(const std::wstring& typed) {
    std::size_t i = 0;
    while (i < typed.size() && (typed[i] == L'_' || typed[i] == L'.')) ++i;
    return upper(typed.substr(i));
}

const CommandEntry* findCommand(const std::wstring& typed) {
    std::wstring name = bareCommandName(typed);
    for (auto& [alias, target] : kAliases)
        if (name == alias) name = target;
    for (auto family :
         {geometryCommands(), editCommands(), layerCommands(), undoCommands(), viewCommands()})
        for (const CommandEntry& entry : family)
            if (name == entry.name) return &entry;
    return nullptr;
}

bool isUndoCommand(const CommandEntry& entry) {
    std::wstring name = entry.name;
    return name == L"UNDO" || name == L"U";
}

}  // namespace kelvo::commands
