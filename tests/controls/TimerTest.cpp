#include "controls/Timer.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(TimerTest, NotifiesItsDriverOnlyOfRealChanges) {
    Timer timer;
    int changes = 0;
    timer.Changed = [&] { ++changes; };
    timer.SetEnabled(false);
    timer.SetInterval(0);
    EXPECT_EQ(changes, 0);
    timer.SetInterval(1000);
    timer.SetEnabled(true);
    EXPECT_EQ(changes, 2);
    timer.SetInterval(1000); // a running timer keeps its phase
    timer.SetEnabled(true);
    EXPECT_EQ(changes, 2);
    timer.SetInterval(500);
    timer.SetEnabled(false);
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(timer.Interval(), 500);
    EXPECT_FALSE(timer.Enabled());
}

TEST(TimerTest, NeedsNoDriver) {
    Timer timer;
    timer.SetEnabled(true);
    timer.SetInterval(-1);
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.Interval(), -1);
}

} // namespace
} // namespace quarn
