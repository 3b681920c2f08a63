// Beeps, the message box that answers with the button's name, random numbers and the
// version query.
#include "module/message_functions.h"

#include <string>

#include "adslib.h"
#include "host_ui.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "module/random_numbers.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

struct Keyword {
    const ACHAR* text;
    unsigned value;
};

// Button sets: each replaces the whole style, icons and default button included.
constexpr Keyword kButtonKeywords[] = {
    {L"ABORT", MB_ABORTRETRYIGNORE},  {L"OK", MB_OK},       {L"OKCANCEL", MB_OKCANCEL},
    {L"RETRYCANCEL", MB_RETRYCANCEL}, {L"YESNO", MB_YESNO}, {L"YESNOCANCEL", MB_YESNOCANCEL},
};

// Icons and default buttons: combined into the style.
constexpr Keyword kFlagKeywords[] = {
    {L"!", MB_ICONEXCLAMATION}, {L"i", MB_ICONINFORMATION}, {L"?", MB_ICONQUESTION},
    {L"STOP", MB_ICONSTOP},     {L"DEF1", MB_DEFBUTTON1},   {L"DEF2", MB_DEFBUTTON2},
    {L"DEF3", MB_DEFBUTTON3},
};

constexpr Keyword kBeepSounds[] = {
    {L"?", MB_ICONQUESTION},
    {L"*", MB_ICONASTERISK},
    {L"HAND", MB_ICONHAND},
    {L"!", MB_ICONEXCLAMATION},
    {L"OK", 0},
};

const Keyword* findKeyword(const auto& keywords, const std::wstring& text) {
    for (const Keyword& keyword : keywords) {
        if (text == keyword.text) return &keyword;
    }
    return nullptr;
}

unsigned applyStyleKeyword(unsigned style, const std::wstring& text) {
    if (const Keyword* buttons = findKeyword(kButtonKeywords, text)) return buttons->value;
    if (const Keyword* flag = findKeyword(kFlagKeywords, text)) return style | flag->value;
    return style;
}

const ACHAR* buttonName(int answer) {
    static constexpr const ACHAR* kNames[] = {L"OK",     L"CANCEL", L"ABORT", L"RETRY",
                                              L"IGNORE", L"YES",    L"NO"};
    if (answer < IDOK || answer > IDNO) return nullptr;
    return kNames[answer - IDOK];
}

int showMessageBox(const std::wstring& caption, const std::wstring& message, unsigned style) {
    HostWindow active = hostGetActiveWindow();
    const int answer = hostMessageBox(active, message.c_str(), caption.c_str(), style);
    hostSetActiveWindow(active);
    return answer;
}

int beepHandler() {
    HandlerArgs args;
    hostMessageBeep(MB_SIMPLEBEEP);
    acedRetT();
    return kArgOk;
}

int messageBeepHandler() {
    HandlerArgs args;
    std::wstring name;
    if (readText(args.cursor(), name)) {
        const Keyword* sound = findKeyword(kBeepSounds, name);
        hostMessageBeep(sound != nullptr ? sound->value : MB_SIMPLEBEEP);
    }
    acedRetT();
    return kArgOk;
}

int messageBoxHandler() {
    HandlerArgs args;
    std::wstring caption, message;
    if (!readText(args.cursor(), caption) || !readText(args.cursor(), message)) {
        return kWrongArgType;
    }
    readListBegin(args.cursor());
    unsigned style = MB_OK;
    for (std::wstring keyword; readText(args.cursor(), keyword);) {
        style = applyStyleKeyword(style, keyword);
    }
    if (const ACHAR* name = buttonName(showMessageBox(caption, message, style))) {
        acedRetStr(name);
    }
    return kArgOk;
}

int randomHandler() {
    HandlerArgs args;
    acedRetInt(nextRandomNumber());
    return kArgOk;
}

int versionHandler() {
    HandlerArgs args;
    acedRetInt(-1);
    return kArgOk;
}

}  // namespace

int kvBeep() {
    return runDatabaseCall(beepHandler);
}
int kvMessageBeep() {
    return runDatabaseCall(messageBeepHandler);
}
int kvMessageBox() {
    return runDatabaseCall(messageBoxHandler);
}
int kvRandom() {
    return runDatabaseCall(randomHandler);
}
int kvGetVersion() {
    return runDatabaseCall(versionHandler);
}

}  // namespace kelvo
