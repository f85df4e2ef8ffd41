#include "win32/TimerWin.h"

#include "tests/win32/harness/Pumping.h"
#include "win32/PerformanceCounter.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class TimerWinTest : public ::testing::Test {
  protected:
    TimerWinTest() {
        timer.Tick = [this] { ++ticks; };
    }

    // A timer of the test itself shows that this thread's timers run.
    static bool PumpForAWhile() {
        bool over = false;
        Timer other;
        const TimerWin driver(other);
        other.Tick = [&] { over = true; };
        other.SetInterval(100);
        other.SetEnabled(true);
        return PumpUntil([&] { return over; });
    }

    Timer timer;
    int ticks = 0;
};

TEST_F(TimerWinTest, TicksAgainAndAgainInItsInterval) {
    const TimerWin driver(timer);
    timer.SetInterval(30);
    timer.SetEnabled(true);
    const std::int64_t start = PerformanceMicroseconds();
    ASSERT_TRUE(PumpUntil([&] { return ticks == 3; }));
    EXPECT_GE(PerformanceMicroseconds() - start, 80'000); // less the rounding of the system's clock
}

TEST_F(TimerWinTest, TicksWhenItWasEnabledBefore) {
    timer.SetInterval(10);
    timer.SetEnabled(true);
    const TimerWin driver(timer);
    EXPECT_TRUE(PumpUntil([&] { return ticks == 1; }));
}

TEST_F(TimerWinTest, NeverTicksDisabledOrWithoutAnInterval) {
    const TimerWin driver(timer);
    timer.SetInterval(10);
    ASSERT_TRUE(PumpForAWhile());
    timer.SetEnabled(true);
    timer.SetEnabled(false);
    ASSERT_TRUE(PumpForAWhile());
    timer.SetEnabled(true);
    for (const std::int32_t interval : {0, -1, -2147483647 - 1}) {
        timer.SetInterval(interval);
        ASSERT_TRUE(PumpForAWhile());
    }
    EXPECT_EQ(ticks, 0);
}

TEST_F(TimerWinTest, SettingTheSameIntervalKeepsThePhase) {
    const TimerWin driver(timer);
    timer.SetInterval(200);
    timer.SetEnabled(true);
    // If it restarted each time, it would never reach its first tick.
    EXPECT_TRUE(PumpUntil([&] {
        timer.SetInterval(200);
        timer.SetEnabled(true);
        return ticks == 1;
    }));
}

TEST_F(TimerWinTest, ATickOfAnEarlierStartIsDropped) {
    const TimerWin driver(timer);
    timer.SetInterval(1'000'000);
    timer.SetEnabled(true); // start 1
    const HWND window = FindWindowExA(HWND_MESSAGE, nullptr, "QuarnMessages", nullptr);
    timer.SetInterval(2'000'000); // start 2
    SendMessageA(window, WM_TIMER, 1, 0);
    EXPECT_EQ(ticks, 0);
    SendMessageA(window, WM_TIMER, 2, 0);
    EXPECT_EQ(ticks, 1);
    timer.SetEnabled(false);
    SendMessageA(window, WM_TIMER, 2, 0);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerWinTest, StopsWithItsDriver) {
    timer.SetInterval(10);
    timer.SetEnabled(true);
    { const TimerWin driver(timer); }
    timer.SetInterval(20);
    ASSERT_TRUE(PumpForAWhile());
    EXPECT_EQ(ticks, 0);
}

TEST_F(TimerWinTest, AHandlerMayStopItsTimer) {
    const TimerWin driver(timer);
    timer.Tick = [this] {
        ++ticks;
        timer.SetEnabled(false);
    };
    timer.SetInterval(10);
    timer.SetEnabled(true);
    ASSERT_TRUE(PumpForAWhile());
    EXPECT_EQ(ticks, 1);
}

} // namespace
} // namespace quarn
