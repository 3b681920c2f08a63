// The reader: AutoLISP source text to values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "interp.h"

namespace lisp {

// Input ended inside a list or string; the text may still be completed.
class IncompleteInput : public Error {
public:
    using Error::Error;
};

class Reader {
public:
    explicit Reader(std::wstring_view source) : src_(source) {}

    // The next form, or nullopt at the end of the text. Throws Error on bad syntax
    // ("extra right paren on input"), IncompleteInput when the text ends mid-form.
    std::optional<Value> next();

private:
    Value readForm();
    Value readString();
    Value readAtom();
    void skipBlank();
    bool atEnd() const { return pos_ >= src_.size(); }

    std::wstring_view src_;
    std::size_t pos_ = 0;
};

// Reads a number or a symbol from one token ("12", "1.5e3", "foo", "nil").
Value parseAtom(std::wstring_view token);

}  // namespace lisp
