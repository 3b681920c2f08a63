// The console user interface: message boxes asked on the terminal or answered from a
// script, beeps rung on the terminal, documents opened with the desktop's opener. Every
// event is logged, one line each, when a log file is given.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cwctype>
#include <iostream>
#include <vector>

#include "host_ui.h"
#include "runtime/host.h"
#include "utf8.h"
#include "runtime/ui_backend.h"

extern char** environ;

namespace kelvo::host {
namespace {

struct Button {
    int id;
    const wchar_t* name;
};

// The buttons of a box, by the low four bits of its style.
std::vector<Button> buttonsOf(unsigned style) {
    switch (style & 0xF) {
        case MB_OKCANCEL: return {{IDOK, L"OK"}, {IDCANCEL, L"CANCEL"}};
        case MB_ABORTRETRYIGNORE: return {{IDABORT, L"ABORT"}, {IDRETRY, L"RETRY"}, {IDIGNORE, L"IGNORE"}};
        case MB_YESNOCANCEL: return {{IDYES, L"YES"}, {IDNO, L"NO"}, {IDCANCEL, L"CANCEL"}};
        case MB_YESNO: return {{IDYES, L"YES"}, {IDNO, L"NO"}};
        case MB_RETRYCANCEL: return {{IDRETRY, L"RETRY"}, {IDCANCEL, L"CANCEL"}};
        default: return {{IDOK, L"OK"}};
    }
}

size_t defaultIndex(unsigned style, size_t count) {
    size_t index = (style >> 8) & 0xF;
    return index < count ? index : 0;
}

std::wstring upper(std::wstring s) {
    for (auto& c : s) c = static_cast<wchar_t>(std::towupper(c));
    return s;
}

// Quotes a text for the log: backslash, quote and control characters escaped.
std::wstring quoted(std::wstring_view text) {
    std::wstring out = L"\"";
    for (wchar_t c : text) {
        if (c == L'\n') out += L"\\n";
        else if (c == L'\t') out += L"\\t";
        else if (c == L'"' || c == L'\\') (out += L'\\') += c;
        else out += c;
    }
    return out + L"\"";
}

std::wstring hex(unsigned value) {
    wchar_t buf[16];
    std::swprintf(buf, 16, L"0x%X", value);
    return buf;
}

class ConsoleUi : public UiBackend {
public:
    ConsoleUi(std::deque<std::wstring> answers, const std::string& logFile)
        : answers_(std::move(answers)) {
        if (!logFile.empty()) log_.open(logFile, std::ios::app);
    }

    int messageBox(std::wstring_view text, std::wstring_view caption, unsigned style) override {
        auto buttons = buttonsOf(style);
        const Button& chosen = buttons[choose(buttons, text, caption, style)];
        log(L"messagebox caption=" + quoted(caption) + L" text=" + quoted(text) + L" style=" +
            hex(style) + L" answer=" + chosen.name);
        return chosen.id;
    }

    void beep(unsigned sound) override {
        log(L"beep " + hex(sound));
        if (isatty(STDERR_FILENO)) std::fputc('\a', stderr);
    }

    long shellExecute(std::wstring_view verb, std::wstring_view file) override {
        long result = openWithDesktop(file);
        log(L"shell " + std::wstring(verb) + L" " + quoted(file) + L" result=" +
            std::to_wstring(result));
        return result;
    }

private:
    size_t choose(const std::vector<Button>& buttons, std::wstring_view text,
                  std::wstring_view caption, unsigned style) {
        size_t fallback = defaultIndex(style, buttons.size());
        if (!answers_.empty()) {
            std::wstring answer = upper(answers_.front());
            answers_.pop_front();
            for (size_t i = 0; i < buttons.size(); ++i)
                if (answer == buttons[i].name) return i;
            warn(L"scripted answer '" + answer + L"' is not a button of the box " +
                 quoted(caption) + L"; the default button is taken");
            return fallback;
        }
        if (!isatty(STDIN_FILENO)) return fallback;
        return askOnTerminal(buttons, text, caption, fallback);
    }

    size_t askOnTerminal(const std::vector<Button>& buttons, std::wstring_view text,
                         std::wstring_view caption, size_t fallback) {
        Host& host = Host::instance();
        host.write(L"\n[" + std::wstring(caption) + L"] " + std::wstring(text) + L"\n");
        std::wstring choices;
        for (auto& b : buttons) choices += (choices.empty() ? L"" : L"/") + std::wstring(b.name);
        for (;;) {
            host.write(L"[" + choices + L"] <" + buttons[fallback].name + L">: ");
            std::string line;
            if (!std::getline(std::cin, line) || line.empty()) return fallback;
            std::wstring answer = upper(fromUtf8(line));
            for (size_t i = 0; i < buttons.size(); ++i)
                if (std::wstring(buttons[i].name).starts_with(answer)) return i;
        }
    }

    static long openWithDesktop(std::wstring_view file) {
        std::string target = toUtf8(file);
        char opener[] = "xdg-open";
        char* argv[] = {opener, target.data(), nullptr};
        pid_t pid = 0;
        if (posix_spawnp(&pid, opener, nullptr, nullptr, argv, environ) != 0) return 2;
        int status = 0;
        if (waitpid(pid, &status, 0) < 0) return 2;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 42 : 31;
    }

    void warn(const std::wstring& message) {
        std::fflush(stdout);
        std::fprintf(stderr, "kelvo-host: %s\n", toUtf8(message).c_str());
    }

    void log(const std::wstring& line) {
        if (log_.is_open()) log_ << toUtf8(line) << '\n' << std::flush;
    }

    std::deque<std::wstring> answers_;
    std::ofstream log_;
};

}  // namespace

std::unique_ptr<UiBackend> makeConsoleUi(std::deque<std::wstring> answers, std::string logFile) {
    return std::make_unique<ConsoleUi>(std::move(answers), logFile);
}

}  // namespace kelvo::host

// --- the module-facing user-interface calls -----------------------------------------

namespace {
// Windows are not real in the console: the host's main window is a token, and the active
// window is remembered so that a module can restore it.
int mainWindowToken;
HostWindow activeWindow = &mainWindowToken;
}  // namespace

int hostMessageBox(HostWindow, const ACHAR* text, const ACHAR* caption, unsigned style) {
    return kelvo::host::Host::instance().ui().messageBox(text ? text : L"",
                                                         caption ? caption : L"", style);
}

bool hostMessageBeep(unsigned sound) {
    kelvo::host::Host::instance().ui().beep(sound);
    return true;
}

HostWindow hostGetActiveWindow() { return activeWindow; }

HostWindow hostSetActiveWindow(HostWindow window) {
    HostWindow previous = activeWindow;
    activeWindow = window;
    return previous;
}

HostWindow hostMainWindow() { return &mainWindowToken; }

long hostShellExecute(const ACHAR* verb, const ACHAR* file) {
    return kelvo::host::Host::instance().ui().shellExecute(verb ? verb : L"", file ? file : L"");
}
