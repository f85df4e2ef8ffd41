#pragma once

// What a fuzz target demands of a routine: where it does not hold, the process ends, which both the fuzzer
// and a replay report with the input at fault.

#include <cstdio>
#include <cstdlib>

namespace quarn::fuzz {

inline void Require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

} // namespace quarn::fuzz
