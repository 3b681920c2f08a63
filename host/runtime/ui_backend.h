// The user-interface backend of the host: message boxes and beeps now, dialogs later.
#pragma once

#include <deque>
#include <fstream>
#include <memory>
#include <string>

#include "adsdef.h"

namespace kelvo::host {

class KELVO_HOST_API UiBackend {
public:
    virtual ~UiBackend() = default;
    // Shows a message box; returns the pressed button (IDOK ...).
    virtual int messageBox(std::wstring_view text, std::wstring_view caption, unsigned style) = 0;
    virtual void beep(unsigned sound) = 0;
    virtual long shellExecute(std::wstring_view verb, std::wstring_view file) = 0;
};

// Asks on the command line, or takes scripted answers (one button name per line); with
// no answer left and no terminal, a box answers its default button. Every event can be
// logged, one line each, for tests.
std::unique_ptr<UiBackend> makeConsoleUi(std::deque<std::wstring> answers,
                                         std::string logFile);

}  // namespace kelvo::host
