// A program that stays open next to the game for a working day: nothing accumulates, and neither a wrap of
// the tick counter nor a clock that is set back disturbs a scan.

#include "tests/views/ScanTest.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quarn {
namespace {

constexpr std::int32_t Minute = 60'000;

class LongSessionTest : public ScanTest {
  protected:
    static constexpr std::int32_t Servers = 30;
    static constexpr std::int32_t Silent = 7;

    void StartOneSilent() {
        StartWith(Servers);
        Silence(Silent);
    }

    void ScanAndCheck() {
        browser.network.ForgetAsked();
        browser.RefreshAll();
        ASSERT_EQ(Asked().size(), static_cast<std::size_t>(Servers));
        ExpectIdle();
        ASSERT_EQ(browser.RowCount(), Servers);
        ASSERT_EQ(browser.Message(), "Ready.");
        for (std::int32_t number = 1; number <= Servers; ++number)
            ASSERT_EQ(Server(number).Ping, number == Silent ? Timeout : Latency) << number;
    }
};

TEST_F(LongSessionTest, NothingAccumulatesInEightHours) {
    StartOneSilent();
    ScanAndCheck();
    const std::size_t logLines = browser.LogFile().size();
    const std::size_t pending = browser.fake.events.Pending();
    const std::vector<std::string> files = browser.fake.files.Paths();
    for (std::int32_t minute = 5; minute <= 8 * 60; minute += 5) {
        browser.fake.events.RunFor(5 * Minute);
        ScanAndCheck();
    }
    EXPECT_EQ(browser.LogFile().size(), logLines);
    EXPECT_EQ(browser.fake.events.Pending(), pending);
    EXPECT_EQ(browser.fake.files.Paths(), files);
    EXPECT_EQ(browser.Errors(), std::vector<std::string>{});
}

TEST_F(LongSessionTest, TheTickCounterMayWrapBetweenAndDuringScans) {
    for (const std::int64_t wrap : {std::int64_t{1} << 31, std::int64_t{1} << 32}) {
        SCOPED_TRACE(wrap);
        HeadlessBrowser fresh;
        // Half a scan before the wrap.
        fresh.fake.clock.SetTickCount(static_cast<std::int32_t>(wrap - Servers * Latency / 2));
        const auto listed = HeadlessBrowser::Addresses(Servers);
        fresh.PutList("q3", listed);
        fresh.PutServers(listed);
        fresh.Set("Selection", "LastGame", HeadlessBrowser::Q3);
        ASSERT_TRUE(fresh.Start());
        for (int scan = 0; scan < 3; ++scan) {
            fresh.RefreshAll();
            EXPECT_EQ(fresh.Message(), "Ready.");
            for (std::int32_t number = 1; number <= Servers; ++number)
                EXPECT_EQ(fresh.program.Servers[number].Ping, Latency) << number;
        }
        EXPECT_EQ(fresh.Errors(), std::vector<std::string>{});
    }
}

TEST_F(LongSessionTest, AClockThatIsSetBackChangesNoPing) {
    StartOneSilent();
    for (const int year : {2025, 1999, 1970}) {
        browser.In(Servers * Latency / 2, [&, year] { browser.fake.clock.SetNow({year, 1, 1, 0, 0, 0}); });
        ScanAndCheck();
    }
}

} // namespace
} // namespace quarn
