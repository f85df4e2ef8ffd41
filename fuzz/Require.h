#pragma once

// What a fuzz target demands of a routine. If it does not hold, the process aborts; the fuzzer and a replay
// then report the input.

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn::fuzz {

inline void Require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

inline void RequireNone(const std::vector<std::string>& violations) {
    for (const std::string& violation : violations)
        Require(false, violation.c_str());
}

// A wait that would never end is recorded by the fakes as a failed test.
inline void RequireEveryWaitEnds() {
    Require(!::testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed(), "every wait ends");
}

} // namespace quarn::fuzz
