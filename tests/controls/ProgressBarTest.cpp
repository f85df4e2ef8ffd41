#include "controls/ProgressBar.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace quarn {
namespace {

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

TEST(ProgressBarTest, KeepsItsValueWithinItsRange) {
    struct Case {
        std::int32_t maximum;
        std::int32_t value;
        std::int32_t expected;
    };
    for (const Case& c : {Case{250, 17, 17}, Case{250, 250, 250}, Case{250, 251, 250},
                          Case{250, Highest, 250}, Case{250, -1, 0}, Case{250, Lowest, 0}, Case{0, 1, 0},
                          Case{-5, 1, 0}, Case{Lowest, 3, 0}, Case{Highest, Highest, Highest}}) {
        ProgressBar bar;
        bar.SetMaximum(c.maximum);
        bar.SetValue(c.value);
        EXPECT_EQ(bar.Value(), c.expected) << c.value << " of " << c.maximum;
    }
}

TEST(ProgressBarTest, FallsBackToAMaximumBelowItsValue) {
    ProgressBar bar;
    bar.SetValue(90);
    bar.SetMaximum(20);
    EXPECT_EQ(bar.Value(), 20);
    bar.SetMaximum(50);
    EXPECT_EQ(bar.Value(), 20);
}

} // namespace
} // namespace quarn
