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

    // The interpreter's own state, for its built-in libraries (see interp_impl.h).
    struct Impl;
    Impl& impl() { return *impl_; }

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace lisp
