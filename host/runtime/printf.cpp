// acutPrintf: printf on the command line. The host's convention is that %s takes an ACHAR
// string, so the format is rewritten with %ls before the C library formats it.

#include <cstdarg>
#include <cwchar>
#include <string>
#include <vector>

#include "adslib.h"
#include "runtime/host.h"

namespace {

// Rewrites each %s (with any flags, width and precision) as %ls; other specs are kept.
std::wstring wideStringSpecs(const ACHAR* format) {
    std::wstring out;
    for (const ACHAR* p = format; *p; ++p) {
        out += *p;
        if (*p != L'%') continue;
        ++p;
        while (*p && std::wcschr(L"-+ #0123456789.*", *p)) out += *p++;
        while (*p && std::wcschr(L"hlLqjzt", *p)) out += *p++;
        if (!*p) break;
        if (*p == L's' && out.back() != L'l') out += L'l';
        out += *p;
    }
    return out;
}

}  // namespace

int acutPrintf(const ACHAR* format, ...) {
    if (!format) return RTERROR;
    std::wstring fmt = wideStringSpecs(format);
    std::vector<wchar_t> buffer(256);
    for (;;) {
        va_list ap;
        va_start(ap, format);
        int n = std::vswprintf(buffer.data(), buffer.size(), fmt.c_str(), ap);
        va_end(ap);
        if (n >= 0 && static_cast<size_t>(n) < buffer.size()) {
            kelvo::host::Host::instance().write(std::wstring_view(buffer.data(), n));
            return n;
        }
        if (buffer.size() > (1u << 24)) return RTERROR;
        buffer.resize(buffer.size() * 4);
    }
}
