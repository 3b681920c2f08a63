// Random numbers in the range the product's LISP code expects (0 to 32767).
#include "module/random_numbers.h"

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace kelvo {

void seedRandomNumbers() {
    std::srand(static_cast<unsigned>(static_cast<std::uint32_t>(std::time(nullptr))));
}

int nextRandomNumber() {
    // The C library here may draw up to 2^31 - 1; keep the high bits of the draw.
    constexpr long long kRange = 32768;
    return static_cast<int>(static_cast<long long>(std::rand()) * kRange /
                            (static_cast<long long>(RAND_MAX) + 1));
}

}  // namespace kelvo
