// One step after the other. Whole scans: see ScanEngineTest.cpp.

#include "views/SequentialScan.h"

#include "tests/views/ScanTest.h"

#include <deque>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SequentialScanTest : public ScanTest {
  protected:
    // A scan of these servers, in a list of five.
    SequentialScan& Begin(std::deque<std::uint32_t> numbers) {
        StartWith(5);
        results.emplace(Context(), browser.Form().servers, browser.Form().details);
        results->Begin();
        std::deque<std::uint32_t> listed;
        for (std::int32_t row = 1; row <= browser.RowCount(); ++row)
            listed.push_back(browser.Controls().lvwServers.Row(row).subject);
        for (std::uint32_t& number : numbers)
            number = listed[number - 1];
        browser.Controls().tmrTimeout.SetEnabled(true);
        browser.Controls().tmrTimeout.Tick = [this] { wait.ReplyState = 2; };
        scan.emplace(Context(),
                     SequentialScan::Parts{browser.Form().servers, browser.Form().details, *results, wait},
                     progress.emplace(Context()),
                     SequentialScan::Task{.wanted = std::move(numbers),
                                          .listed = std::move(listed),
                                          .stopped = [this] { return stopped; }});
        browser.Controls().sckServer.DataArrival = [this](std::uint32_t query, std::int32_t tick) {
            if (auto reply = browser.Controls().sckServer.Take(query, tick))
                taken.push_back(scan->TakeReply(*reply));
        };
        return *scan;
    }

    MainFormContext Context() {
        return {browser.program, browser.fake.desktop, browser.window, browser.Controls(), gate,
                browser.engines};
    }

    CommandGate gate{browser.fake.events};
    ReplyWait wait;
    std::optional<QueryResults> results;
    std::optional<ScanProgress> progress;
    std::optional<SequentialScan> scan;
    std::vector<bool> taken; // results of TakeReply
    bool stopped = false;
};

TEST_F(SequentialScanTest, EachStepAsksOneServerAndFinishesTheOneBefore) {
    SequentialScan& steps = Begin({2, 4});
    EXPECT_FALSE(steps.CanStep());
    EXPECT_TRUE(steps.Step());
    EXPECT_THAT(Asked(), ElementsAre(2));
    EXPECT_FALSE(steps.CanStep());
    browser.fake.events.RunFor(Latency);
    EXPECT_THAT(taken, ElementsAre(true));
    EXPECT_TRUE(steps.CanStep());
    EXPECT_EQ(Server(2).Name, "Live 2");
    EXPECT_EQ(browser.Cell(2, NameColumn), "Server 2");
    EXPECT_TRUE(steps.Step());
    EXPECT_EQ(browser.Cell(2, NameColumn), "Live 2");
    EXPECT_THAT(Asked(), ElementsAre(2, 4));
    EXPECT_FALSE(steps.CanStep());
    browser.fake.events.RunFor(Latency);
    EXPECT_FALSE(steps.Step());
    EXPECT_EQ(browser.Cell(4, NameColumn), "Live 4");
    EXPECT_FALSE(steps.CanStep());
    EXPECT_EQ(wait.ReplyState, 0);
    EXPECT_EQ(wait.QuerySentTick, 0);
}

TEST_F(SequentialScanTest, ATickFinishesASilentServer) {
    SequentialScan& steps = Begin({1, 2});
    Silence(1);
    steps.Step();
    browser.fake.events.RunFor(Timeout - 1);
    EXPECT_FALSE(steps.CanStep());
    browser.fake.events.RunFor(1);
    EXPECT_TRUE(steps.CanStep());
    EXPECT_TRUE(steps.Step());
    EXPECT_EQ(Server(1).Ping, Timeout);
    EXPECT_THAT(Asked(), ElementsAre(1, 2));
}

TEST_F(SequentialScanTest, ATickAfterAReplyDoesNotMakeItASilence) {
    SequentialScan& steps = Begin({1});
    steps.Step();
    browser.fake.events.RunFor(Timeout);
    EXPECT_FALSE(steps.Step());
    EXPECT_EQ(Server(1).Ping, Latency);
}

TEST_F(SequentialScanTest, AReplyToAFinishedQueryIsNotTaken) {
    SequentialScan& steps = Begin({1, 2});
    Script(1, [&] {
        browser.sckServer.ReplyIn(10, HonestReply(1));
        browser.sckServer.ReplyIn(15, HonestReply(1));
    });
    steps.Step();
    browser.fake.events.RunFor(10);
    steps.Step();
    browser.fake.events.RunFor(5);
    EXPECT_THAT(taken, ElementsAre(true, false));
    EXPECT_FALSE(steps.CanStep());
    EXPECT_THAT(Asked(), ElementsAre(1, 2));
}

TEST_F(SequentialScanTest, StopTakesEffectAfterTheServerThatIsAsked) {
    SequentialScan& steps = Begin({1, 2});
    steps.Step();
    stopped = true;
    EXPECT_FALSE(steps.CanStep());
    browser.fake.events.RunFor(Latency);
    EXPECT_FALSE(steps.Step());
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_THAT(Asked(), ElementsAre(1));
}

TEST_F(SequentialScanTest, StopEndsAWaitThatHasNoTimer) {
    SequentialScan& steps = Begin({1, 2});
    Silence(1);
    steps.Step();
    browser.Controls().tmrTimeout.SetEnabled(false);
    EXPECT_FALSE(steps.CanStep());
    stopped = true;
    EXPECT_TRUE(steps.CanStep());
    EXPECT_FALSE(steps.Step());
}

TEST_F(SequentialScanTest, PassesOverRowsThatWereRemovedAndThoseWithoutARecord) {
    SequentialScan& steps = Begin({1, 2, 3, 4});
    ListView& list = browser.Controls().lvwServers;
    steps.Step();
    list.Remove(2);
    list.Edit(2).main.tag = "none";
    browser.fake.events.RunFor(Latency);
    EXPECT_TRUE(steps.Step());
    EXPECT_THAT(Asked(), ElementsAre(1, 4));
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;UpdateServer;13"));
}

TEST_F(SequentialScanTest, EndsAtOnceIfThereIsNothingToAsk) {
    EXPECT_FALSE(Begin({}).Step());
    EXPECT_THAT(Asked(), IsEmpty());
}

} // namespace
} // namespace quarn
