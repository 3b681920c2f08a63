// ZOOM, REGEN and REDRAW: a headless host has no view to change, so they take their
// answers as the host asks for them and change nothing (a script that zooms runs on).

#include "runtime/commands/command_input.h"
#include "runtime/commands/command_table.h"
#include "runtime/commands/prompts.h"

namespace kelvo::commands {
namespace {

void zoomCommand(Context& c) {
    std::wstring kw;
    const std::vector<std::wstring> options = {L"All",      L"Center", L"Dynamic", L"Extents",
                                               L"Previous", L"Scale",  L"Window",  L"Object"};
    Input in = c.next(prompt::kZoom);
    if (in.kind == Input::Kind::Point) {
        c.point(L"Specify opposite corner:");
        return;
    }
    if (in.kind != Input::Kind::Text) return;
    for (const auto& option : options)
        if (keywordMatches(option, in.text)) kw = option;
    if (kw == L"Center") {
        c.point(L"Specify center point:");
        c.text(L"Enter magnification or height <1.0000>:");
    } else if (kw == L"Window") {
        c.point(L"Specify first corner:");
        c.point(L"Specify opposite corner:");
    } else if (kw == L"Scale") {
        c.text(L"Enter a scale factor (nX or nXP):");
    } else if (kw == L"Object") {
        c.select();
    } else if (kw.empty() && in.text.find(L',') != std::wstring::npos) {
        c.point(L"Specify opposite corner:");
    }
}

void regenCommand(Context& c) {
    c.say(L"Regenerating model.");
}

void redrawCommand(Context&) {}

constexpr CommandEntry kViewCommands[] = {
    {L"ZOOM", zoomCommand},
    {L"REGEN", regenCommand},
    {L"REDRAW", redrawCommand},
};

}  // namespace

std::span<const CommandEntry> viewCommands() {
    return kViewCommands;
}

}  // namespace kelvo::commands
