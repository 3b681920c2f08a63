// A test interpreter whose output is captured and whose input is scripted.
#pragma once

#include <deque>
#include <string>

#include "lisp/interp.h"

namespace lisp::test {

class TestInterp {
public:
    TestInterp()
        : interp_({[this](std::wstring_view s) { out_ += s; },
                   [this](std::wstring_view prompt) -> std::optional<std::wstring> {
                       out_ += prompt;
                       if (input_.empty()) return std::nullopt;
                       std::wstring line = input_.front();
                       input_.pop_front();
                       return line;
                   },
                   [](std::wstring_view) -> std::optional<std::filesystem::path> {
                       return std::nullopt;
                   },
                   {},
                   {}}) {}

    // Evaluates the source and returns the prin1 form of the last value.
    std::wstring run(std::wstring_view source) { return Interp::prin1String(interp_.evalString(source)); }
    // The message of the error that evaluating the source throws, or "" when none.
    std::wstring error(std::wstring_view source) {
        try {
            interp_.evalString(source);
        } catch (const Error& e) {
            return e.message();
        }
        return L"";
    }
    void feed(std::wstring line) { input_.push_back(std::move(line)); }
    std::wstring takeOutput() { return std::exchange(out_, {}); }
    Interp& interp() { return interp_; }

private:
    std::wstring out_;
    std::deque<std::wstring> input_;
    Interp interp_;
};

}  // namespace lisp::test
