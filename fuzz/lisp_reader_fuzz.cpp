// Fuzz target: the LISP reader. Bytes are decoded as UTF-8 (as a source file is) and read
// form by form; each form printed with prin1 must read back to a form that prints the
// same, so what the printer writes the reader takes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz_check.h"
#include "lisp/interp.h"
#include "lisp/reader.h"
#include "utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring source =
        kelvo::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
    lisp::Reader reader(source);
    try {
        for (int forms = 0; forms < 64; ++forms) {
            auto form = reader.next();
            if (!form) break;
            const std::wstring printed = lisp::Interp::prin1String(*form);
            lisp::Reader again(printed);
            auto back = again.next();
            FUZZ_CHECK(back.has_value(), "a printed form reads back");
            FUZZ_CHECK(lisp::Interp::prin1String(*back) == printed,
                       "a printed form reads back to the same text");
        }
    } catch (const lisp::Error&) {
        // Malformed or incomplete text: an error the user sees, never a crash.
    }
    return 0;
}
