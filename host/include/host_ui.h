// The host's user-interface services for modules: message boxes, beeps, the active
// window and the main window, and opening documents through the desktop. The backend
// (console or windows) is the host's choice; with scripted answers nothing waits.
#pragma once

#include "adsdef.h"

using HostWindow = void*;

// Message box styles and answers; the values are the ones the product's code uses.
constexpr unsigned MB_OK = 0x0;
constexpr unsigned MB_OKCANCEL = 0x1;
constexpr unsigned MB_ABORTRETRYIGNORE = 0x2;
constexpr unsigned MB_YESNOCANCEL = 0x3;
constexpr unsigned MB_YESNO = 0x4;
constexpr unsigned MB_RETRYCANCEL = 0x5;
constexpr unsigned MB_ICONHAND = 0x10;
constexpr unsigned MB_ICONSTOP = MB_ICONHAND;
constexpr unsigned MB_ICONERROR = MB_ICONHAND;
constexpr unsigned MB_ICONQUESTION = 0x20;
constexpr unsigned MB_ICONEXCLAMATION = 0x30;
constexpr unsigned MB_ICONASTERISK = 0x40;
constexpr unsigned MB_ICONINFORMATION = MB_ICONASTERISK;
constexpr unsigned MB_DEFBUTTON1 = 0x000;
constexpr unsigned MB_DEFBUTTON2 = 0x100;
constexpr unsigned MB_DEFBUTTON3 = 0x200;

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Beep sounds.
constexpr unsigned MB_SIMPLEBEEP = 0xFFFFFFFF;

// Shows a message box and returns the pressed button (IDOK ...), or 0 when none could be
// shown. The owner may be null.
KELVO_HOST_API int hostMessageBox(HostWindow owner, const ACHAR* text, const ACHAR* caption,
                                  unsigned style);
// Sounds a beep: MB_SIMPLEBEEP, 0 (default sound) or an icon value.
KELVO_HOST_API bool hostMessageBeep(unsigned sound);
KELVO_HOST_API HostWindow hostGetActiveWindow();
KELVO_HOST_API HostWindow hostSetActiveWindow(HostWindow window);
KELVO_HOST_API HostWindow hostMainWindow();
// Opens a document or URL with the desktop's opener. Returns a value above 32 on success,
// 32 or less on failure, as the shell does.
KELVO_HOST_API long hostShellExecute(const ACHAR* verb, const ACHAR* file);
