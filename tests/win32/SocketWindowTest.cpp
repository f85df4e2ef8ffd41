#include "win32/SocketWindow.h"

#include "tests/win32/harness/Pumping.h"
#include "win32/PerformanceCounter.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace quarn {
namespace {

class SocketWindowTest : public ::testing::Test {
  protected:
    UINT Register(int name) {
        return window.Register([this, name](std::int32_t age) {
            called.push_back(name);
            ages.push_back(age);
        });
    }

    void Post(UINT message) { PostMessageA(window.Handle(), message, 0, 0); }

    void RunPosted() {
        ASSERT_TRUE(PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; }));
    }

    SocketWindow window;
    std::vector<int> called;
    std::vector<std::int32_t> ages;
};

TEST_F(SocketWindowTest, CallsTheReceiverOfTheMessage) {
    const UINT first = Register(1);
    const UINT second = Register(2);
    for (const UINT message : {second, first, second})
        Post(message);
    RunPosted();
    EXPECT_EQ(called, (std::vector<int>{2, 1, 2}));
}

TEST_F(SocketWindowTest, DropsMessagesOfAReleasedNumber) {
    const UINT first = Register(1);
    Post(first);
    window.Release(first);
    const UINT second = Register(2);
    EXPECT_NE(first, second);
    Post(first);
    Post(second);
    RunPosted();
    EXPECT_EQ(called, std::vector<int>{2});
}

TEST_F(SocketWindowTest, AReceiverMayReleaseItsNumberAndRegisterAnother) {
    UINT own = 0;
    UINT next = 0;
    own = window.Register([&](std::int32_t) {
        window.Release(own);
        for (int i = 0; i < 100; ++i) // enough for the table to grow
            next = Register(3);
        called.push_back(1);
    });
    Post(own);
    Post(own);
    RunPosted();
    Post(next);
    RunPosted();
    EXPECT_EQ(called, (std::vector<int>{1, 3}));
}

// By the clock that ages are counted with.
void WaitMilliseconds(std::int64_t milliseconds) {
    for (const std::int64_t start = PerformanceMicroseconds();
         PerformanceMicroseconds() - start < milliseconds * 1000;)
        Sleep(1);
}

TEST_F(SocketWindowTest, TellsHowLongAgoAMessageWasNoted) {
    const UINT first = Register(1);
    const UINT second = Register(2);
    Post(first);
    window.NoteWaiting();
    EXPECT_TRUE(called.empty());
    WaitMilliseconds(30);
    Post(second);
    window.NoteWaiting(); // the first keeps its time
    WaitMilliseconds(20);
    Post(first);
    RunPosted();
    EXPECT_EQ(called, (std::vector<int>{1, 2, 1}));
    EXPECT_GE(ages[0], 50);
    EXPECT_GE(ages[1], 20);
    EXPECT_EQ(ages[2], 0);
}

TEST_F(SocketWindowTest, DeliversWhatWaitsOnceAndAtOnce) {
    const UINT first = Register(1);
    const UINT second = Register(2);
    Post(first);
    window.NoteWaiting();
    WaitMilliseconds(30);
    Post(second);
    window.DeliverWaiting();
    EXPECT_EQ(called, (std::vector<int>{1, 2}));
    EXPECT_GE(ages[0], 30);
    RunPosted();
    window.DeliverWaiting();
    EXPECT_EQ(called.size(), 2U);
}

TEST_F(SocketWindowTest, AReceiverMayRunEventsWhileWhatWaitsIsDelivered) {
    UINT second = 0;
    const UINT first = window.Register([&](std::int32_t) {
        called.push_back(1);
        RunPosted();
    });
    second = Register(2);
    Post(first);
    Post(second);
    window.DeliverWaiting();
    EXPECT_EQ(called, (std::vector<int>{1, 2}));
}

TEST_F(SocketWindowTest, NotingRunsNothingAndLosesNothing) {
    const UINT number = Register(1);
    int sent = 0;
    const MessageWindow other([&](UINT, WPARAM, LPARAM) { ++sent; });
    for (int i = 0; i < 300; ++i)
        Post(number);
    PostMessageA(other.Handle(), WM_APP, 0, 0);
    window.NoteWaiting();
    EXPECT_TRUE(called.empty());
    EXPECT_EQ(sent, 0);
    RunPosted();
    EXPECT_EQ(called.size(), 300U);
    EXPECT_EQ(sent, 1);
}

TEST_F(SocketWindowTest, GivesOutNoNumberThatIsInUse) {
    const UINT kept = Register(1);
    for (int i = 0; i < 20'000; ++i) { // more than there are numbers
        const UINT other = Register(2);
        ASSERT_NE(other, kept);
        window.Release(other);
    }
    Post(kept);
    RunPosted();
    EXPECT_EQ(called, std::vector<int>{1});
}

} // namespace
} // namespace quarn
