// The module's random generator: the C runtime's, seeded once at module start, drawn
// by kv_random and tv_tv-rand.
#pragma once

namespace kelvo {

// Seeds with the current time (truncated to 32 bits).
void seedRandomNumbers();
// 0 to 32767, whatever the C library's RAND_MAX.
int nextRandomNumber();

}  // namespace kelvo
