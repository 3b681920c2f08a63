// The host's AutoLISP-compatible interpreter. One Interp per open document: each has its
// own global bindings, as a CAD host keeps LISP definitions per document.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "value.h"

namespace lisp {

// A LISP error. The message is the text that follows "; error: ".
class Error : public std::exception {
public:
    explicit Error(std::wstring message);
    const std::wstring& message() const { return message_; }
    const char* what() const noexcept override { return narrow_.c_str(); }

private:
    std::wstring message_;
    std::string narrow_;
};

// (vl-exit-with-value v): leaves the running code with a value. vl-catch-all-apply
// answers the value; at the top level it is the value of the form.
class ExitWithValue : public Error {
public:
    explicit ExitWithValue(Value value) : Error(L"vl-exit-with-value"), value_(std::move(value)) {}
    const Value& value() const { return value_; }

private:
    Value value_;
};

// What the interpreter needs from its host.
struct InterpIO {
    // Text printed by princ, prin1, print, prompt, terpri and the get* prompts.
    std::function<void(std::wstring_view)> write;
    // One line of user input for a get* function (without the newline); nullopt when no
    // input is left, which cancels the request.
    std::function<std::optional<std::wstring>(std::wstring_view prompt)> readLine;
    // Finds a file along the host's support path (for load and findfile); nullopt when
    // not found.
    std::function<std::optional<std::filesystem::path>(std::wstring_view name)> findFile;
    // The host's system variables: reads one (nullopt when the host has none), and the
    // host's own write of one that a function sets as it runs (ERRNO). Either may be
    // left empty: the interpreter then uses the variables' defaults.
    std::function<std::optional<Value>(std::wstring_view name)> getVar;
    std::function<void(std::wstring_view name, Value value)> setVar;
};

class Interp {
public:
    explicit Interp(InterpIO io);
    ~Interp();
    Interp(const Interp&) = delete;
    Interp& operator=(const Interp&) = delete;

    // Reads and evaluates every form of `source`; returns the last value. Throws Error.
    Value evalString(std::wstring_view source);
    Value eval(const Value& form);
    // Calls a function value, or the function bound to a symbol, with evaluated args.
    Value apply(const Value& function, std::vector<Value> args);
    // Loads a LISP file as (load) does; returns the value of its last form.
    Value loadFile(const std::filesystem::path& file);

    // Runs the error handling of a top-level error: calls a user-defined *error* with the
    // message, else returns false so the caller prints "; error: <message>".
    bool runErrorHandler(const Error& error);

    void defineSubr(std::wstring_view name, NativeFn fn, bool external = false);
    Value getGlobal(std::wstring_view name) const;
    void setGlobal(std::wstring_view name, Value value);

    // True when `source` holds only complete forms (no open list or string).
    static bool formsComplete(std::wstring_view source);
    // Reads every form of `source` without evaluating it (the host runs a script form by
    // form, each in the drawing current when it starts). Throws Error on malformed input.
    static std::vector<Value> readForms(std::wstring_view source);
    // True for the value of (princ) with no argument, which the command line does not echo.
    static bool isSilent(const Value& v);

    // The printed forms of a value: prin1 (strings quoted and escaped) and princ.
    static std::wstring prin1String(const Value& v);
    static std::wstring princString(const Value& v);

    InterpIO& io();
    // A system variable's integer value; `fallback` when the host has none or it is not
    // an integer.
    int intVariable(std::wstring_view name, int fallback);
    // Sets ERRNO, as the host's functions do when a call fails (0 after success).
    void setErrno(int code);

    // The interpreter's own state, for its built-in libraries (see interp_impl.h).
    struct Impl;
    Impl& impl() { return *impl_; }

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace lisp
