#include "win32/desktop/ContinuousTicks.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

// A coarse counter; it returns the time of its last step.
std::uint32_t Coarse(std::int64_t microseconds, std::int64_t step = 16000) {
    return static_cast<std::uint32_t>(microseconds / step * step / 1000);
}

TEST(ContinuousTicksTest, AdvancesByTheMillisecondBetweenSteps) {
    ContinuousTicks ticks(Coarse(5'000'000), 0);
    const std::uint32_t first = ticks.At(Coarse(5'000'000), 0);
    for (std::int64_t passed = 0; passed < 1'000'000; passed += 1000)
        EXPECT_EQ(ticks.At(Coarse(5'000'000 + passed), passed) - first, passed / 1000);
}

TEST(ContinuousTicksTest, StartingAnywhereInAStepNeedsNoCorrection) {
    for (std::int64_t offset = 0; offset < 16000; offset += 500) {
        ContinuousTicks ticks(Coarse(offset), 0);
        const std::uint32_t first = ticks.At(Coarse(offset), 0);
        EXPECT_EQ(ticks.At(Coarse(offset + 100'000), 100'000) - first, 100U) << offset;
    }
}

TEST(ContinuousTicksTest, WrapsWithTheCoarseCounter) {
    const std::uint32_t start = 0xFFFFFFFFU - 19;
    ContinuousTicks ticks(start, 0);
    const std::uint32_t first = ticks.At(start, 0);
    const std::uint32_t last = ticks.At(start + 32, 40'000);
    EXPECT_LT(last, first);
    EXPECT_EQ(last - first, 40U);
}

TEST(ContinuousTicksTest, NeverRunsBackwards) {
    ContinuousTicks ticks(1000, 1'000'000);
    const std::uint32_t first = ticks.At(1000, 1'000'000);
    EXPECT_EQ(ticks.At(1000, 900'000), first); // a fine counter that jumps back
    EXPECT_EQ(ticks.At(1000, 901'000), first + 1);
}

TEST(ContinuousTicksTest, DriftIsBoundedAndShortDifferencesStayExact) {
    // The fine counter a hundred parts in a million too slow or too fast, over a day.
    for (const int drift : {-100, 100}) {
        ContinuousTicks ticks(0, 0);
        const auto at = [&](std::int64_t now) {
            return ticks.At(Coarse(now), now + now / 1'000'000 * drift);
        };
        for (std::int64_t now = 0; now < 86'400'000'000; now += 10'000'000) {
            const std::uint32_t sent = at(now);
            const auto ahead = static_cast<std::int32_t>(sent - Coarse(now));
            EXPECT_GE(ahead, 0);
            EXPECT_LE(ahead, 250);
            EXPECT_NEAR(at(now + 40'000) - sent, 40, 1) << "drift " << drift << " at " << now;
        }
    }
}

TEST(ContinuousTicksTest, FollowsTheCoarseCounterThroughAGap) {
    // The fine counter stopped while the computer slept for an hour.
    ContinuousTicks ticks(1000, 0);
    EXPECT_EQ(ticks.At(1000 + 3'600'000, 1000), 1000U + 3'600'000U);
    EXPECT_EQ(ticks.At(1000 + 3'600'000, 9000), 1000U + 3'600'008U);
}

TEST(ContinuousTicksTest, ACoarseCounterThatIsLateDoesNotStopIt) {
    ContinuousTicks ticks(1000, 0);
    const std::uint32_t first = ticks.At(1000, 0);
    EXPECT_EQ(ticks.At(1000, 100'000) - first, 100U);
    EXPECT_EQ(ticks.At(1000, 200'000) - first, 200U);
    EXPECT_EQ(ticks.At(1000, 10'000'000), 1250U); // but only to this limit
}

} // namespace
} // namespace quarn
