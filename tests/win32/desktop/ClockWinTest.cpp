#include "win32/desktop/ClockWin.h"

#include "win32/PerformanceCounter.h"
#include "win32/WindowsHeaders.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(ClockWinTest, TicksAreFineAndMonotonic) {
    const ClockWin clock;
    const std::int32_t first = clock.TickCount();
    std::int32_t last = first;
    std::int32_t smallestStep = 1000;
    const std::int64_t start = PerformanceMicroseconds();
    while (PerformanceMicroseconds() - start < 100'000) {
        const std::int32_t now = clock.TickCount();
        ASSERT_GE(now, last);
        if (now != last)
            smallestStep = std::min(smallestStep, now - last);
        last = now;
    }
    EXPECT_LE(smallestStep, 5); // the system's own counter moves by about 16
}

TEST(ClockWinTest, DifferencesAreExactToTheMillisecond) {
    const ClockWin clock;
    const auto take = [&](std::int64_t& before, std::int64_t& after) {
        before = PerformanceMicroseconds();
        const std::int32_t ticks = clock.TickCount();
        after = PerformanceMicroseconds();
        return ticks;
    };
    std::int64_t beforeFirst, afterFirst, beforeLast, afterLast;
    const std::int32_t first = take(beforeFirst, afterFirst);
    std::int32_t last;
    do
        last = take(beforeLast, afterLast);
    while (beforeLast - afterFirst < 100'000);
    EXPECT_GE(last - first, (beforeLast - afterFirst) / 1000 - 1);
    EXPECT_LE(last - first, (afterLast - beforeFirst) / 1000 + 1);
}

TEST(ClockWinTest, TicksAreTheSystems) {
    const ClockWin clock;
    const auto ahead = clock.TickCount() - static_cast<std::int32_t>(GetTickCount());
    EXPECT_GE(ahead, -1);
    EXPECT_LE(ahead, 300);
}

TEST(ClockWinTest, NowIsLocalTime) {
    SYSTEMTIME before, after;
    GetLocalTime(&before);
    const LocalTime now = ClockWin().Now();
    GetLocalTime(&after);
    const auto dateTime = [](const SYSTEMTIME& t) {
        return DateTime::From({t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond});
    };
    EXPECT_GE(now.time, dateTime(before));
    EXPECT_LE(now.time, dateTime(after));
    EXPECT_GE(now.milliseconds, 0);
    EXPECT_LE(now.milliseconds, 999);
    if (before.wMilliseconds <= after.wMilliseconds && dateTime(before) == dateTime(after)) {
        EXPECT_GE(now.milliseconds, before.wMilliseconds);
        EXPECT_LE(now.milliseconds, after.wMilliseconds);
    }
}

} // namespace
} // namespace quarn
