// The error a DXF file raises when it cannot be read or written: a message that names the
// line where reading stopped, when there is one.
#pragma once

#include <stdexcept>
#include <string>

namespace kelvo::host::dxf {

class DxfError : public std::runtime_error {
public:
    explicit DxfError(const std::string& message, int line = 0)
        : std::runtime_error(line > 0 ? "line " + std::to_string(line) + ": " + message
                                      : message),
          line_(line) {}
    int line() const { return line_; }

private:
    int line_;
};

}  // namespace kelvo::host::dxf
