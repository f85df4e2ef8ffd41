#include "tests/win32/desktop/EventPumpWinTest.h"

#include "win32/Handles.h"
#include "win32/TimerWin.h"

#include <thread>

namespace quarn {
namespace {

TEST_F(EventPumpWinTest, AWaitRunsExactlyOneEvent) {
    Post(3);
    for (int expected = 1; expected <= 3; ++expected) {
        pump.WaitForEvent();
        EXPECT_EQ(handled, expected);
    }
}

TEST_F(EventPumpWinTest, AWaitSleepsUntilThereIsAnEvent) {
    Timer timer;
    const TimerWin driver(timer);
    bool ticked = false;
    timer.Tick = [&] { ticked = true; };
    timer.SetInterval(1000);
    timer.SetEnabled(true);
    const std::int64_t processorBefore = ProcessorMicroseconds();
    int waits = 0;
    while (!ticked) {
        pump.WaitForEvent();
        ++waits;
    }
    EXPECT_LE(waits, 3);
    EXPECT_LT(ProcessorMicroseconds() - processorBefore, 100'000);
}

TEST_F(EventPumpWinTest, AMessageSentByAnotherThreadEndsAWait) {
    std::thread sender([this] { SendMessageA(window.Handle(), WM_APP, 0, 0); });
    while (handled == 0)
        pump.WaitForEvent();
    sender.join();
    EXPECT_EQ(handled, 1);
}

TEST_F(EventPumpWinTest, WindowsAreUpdatedAtALimitedRate) {
    int updates = 0;
    pump.updateWindows = [&] { ++updates; };
    onMessage = [this] { Post(1); };
    Post(1);
    const std::int64_t start = PerformanceMicroseconds();
    while (PerformanceMicroseconds() - start < 350'000)
        pump.WaitForEvent();
    EXPECT_GT(handled, 20);
    EXPECT_GE(updates, 3);
    EXPECT_LE(updates, 5);
}

TEST_F(EventPumpWinTest, TheProgramsLoopUpdatesAtTheSameRate) {
    int updates = 0;
    pump.updateWindows = [&] { ++updates; };
    const std::int64_t start = PerformanceMicroseconds();
    onMessage = [&] {
        if (PerformanceMicroseconds() - start < 350'000)
            Post(1);
        else
            PostQuitMessage(0);
    };
    Post(1);
    pump.Run();
    EXPECT_GT(handled, 20);
    EXPECT_GE(updates, 3);
    EXPECT_LE(updates, 5);
}

TEST_F(EventPumpWinTest, ExpensiveUpdatesRunLessOften) {
    int updates = 0;
    pump.updateWindows = [&] {
        ++updates;
        Spend(20'000);
    };
    onMessage = [this] { Post(1); };
    Post(1);
    const std::int64_t start = PerformanceMicroseconds();
    while (PerformanceMicroseconds() - start < 1'000'000)
        pump.WaitForEvent();
    EXPECT_GE(updates, 2);
    EXPECT_LE(updates, 3);
}

TEST_F(EventPumpWinTest, TheResultOfALongCommandIsShownAtOnce) {
    std::int64_t ended = 0;
    std::int64_t shown = 0;
    pump.updateWindows = [&] {
        if (ended != 0) {
            shown = PerformanceMicroseconds();
            PostQuitMessage(0);
        }
        Spend(40'000); // followed by a pause of 760 ms
    };
    onMessage = [&] {
        if (handled != 1)
            return;
        Post(1);
        pump.WaitForEvent();
        ended = PerformanceMicroseconds();
    };
    Post(1);
    pump.Run();
    EXPECT_LT(shown - ended, 300'000);
}

TEST_F(EventPumpWinTest, ChangesAfterTheLastYieldAreShown) {
    int updates = 0;
    bool ended = false;
    pump.updateWindows = [&] {
        ++updates;
        if (ended)
            PostQuitMessage(0);
    };
    onMessage = [&] {
        const int before = updates;
        EXPECT_TRUE(DoEventsUntil([&] { return updates > before; }));
        ended = true;
    };
    Post(1);
    pump.Run(); // there is no other message
    EXPECT_TRUE(ended);
}

class EventPumpWinActTest : public EventPumpWinTest {
  protected:
    // Whether the windows are updated before this message to a visible window is dispatched.
    bool BringsWindowsUpToDate(UINT message) {
        EventPumpWin waiting;
        waiting.updateWindows = [] { Spend(30'000); }; // followed by a pause that is longer than the test
        waiting.DoEvents();
        Post(1); // so that an update may be needed
        waiting.WaitForEvent();
        bool updated = false;
        waiting.updateWindows = [&] { updated = true; };
        PostMessageA(visible.Get(), message, 0, 0);
        waiting.WaitForEvent();
        return updated;
    }

    const WindowHandle visible{CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                                               nullptr, nullptr, nullptr)};
};

TEST_F(EventPumpWinActTest, WindowsAreUpToDateBeforeClicksAndKeys) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_RBUTTONUP, WM_KEYDOWN, WM_COMMAND, WM_CLOSE})
        EXPECT_TRUE(BringsWindowsUpToDate(message)) << message;
}

TEST_F(EventPumpWinActTest, OtherMessagesWaitForTheNextUpdate) {
    for (const UINT message : {WM_MOUSEMOVE, WM_NCMOUSEMOVE, WM_TIMER})
        EXPECT_FALSE(BringsWindowsUpToDate(message)) << message;
}

TEST_F(EventPumpWinActTest, TheResultOfAClickOrKeyIsShownAtOnce) {
    for (const UINT message : {WM_LBUTTONUP, WM_KEYUP, WM_COMMAND}) {
        EventPumpWin waiting;
        waiting.updateWindows = [] { Spend(40'000); }; // followed by a pause of 760 ms
        waiting.DoEvents();
        PostMessageA(visible.Get(), message, 0, 0);
        waiting.WaitForEvent();
        const std::int64_t handledAt = PerformanceMicroseconds();
        std::int64_t shownAt = 0;
        waiting.updateWindows = [&] {
            shownAt = PerformanceMicroseconds();
            Post(1); // ends the wait below
        };
        waiting.WaitForEvent();
        EXPECT_LT(shownAt - handledAt, 300'000) << message;
    }
}

TEST_F(EventPumpWinTest, ChangesOfTheLastEventAreShownDuringTheWait) {
    bool changed = false;
    std::string order;
    pump.updateWindows = [&] {
        order += changed ? 'c' : 'u';
        if (changed)
            Post(1); // ends the wait below
    };
    onMessage = [&] { changed = true; };
    Post(1);
    pump.WaitForEvent();
    pump.WaitForEvent();
    EXPECT_EQ(order.back(), 'c');
}

TEST_F(EventPumpWinTest, AMessageThatWasAlreadyHandledIsNotDispatched) {
    int seen = 0;
    pump.preTranslate = [&](MSG& message) { return message.message == WM_APP && ++seen == 1; };
    Post(2);
    pump.WaitForEvent();
    EXPECT_EQ(handled, 0);
    pump.WaitForEvent();
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(seen, 2);
}

TEST_F(EventPumpWinTest, AYieldRunsPendingEvents) {
    int updates = 0;
    pump.updateWindows = [&] { ++updates; };
    Post(3);
    pump.DoEvents();
    EXPECT_EQ(handled, 3);
    EXPECT_EQ(updates, 1);
}

TEST_F(EventPumpWinTest, AYieldWithoutEventsReturns) {
    pump.DoEvents();
    EXPECT_EQ(handled, 0);
}

TEST_F(EventPumpWinTest, AYieldSoonAfterEventsReturnsAtOnce) {
    pump.DoEvents();
    const std::int64_t ran = PerformanceMicroseconds();
    Post(1);
    ASSERT_TRUE(DoEventsUntil([&] { return handled == 1; }));
    EXPECT_GE(PerformanceMicroseconds() - ran, 9'900);

    Post(1);
    pump.WaitForEvent();
    const std::int64_t waited = PerformanceMicroseconds();
    Post(1);
    ASSERT_TRUE(DoEventsUntil([&] { return handled == 3; }));
    EXPECT_GE(PerformanceMicroseconds() - waited, 9'900);
}

TEST_F(EventPumpWinTest, AYieldIsCheapBetweenEvents) {
    pump.DoEvents();
    int updates = 0;
    pump.updateWindows = [&] { ++updates; };
    const std::int64_t start = PerformanceMicroseconds();
    int yields = 0;
    for (; PerformanceMicroseconds() - start < 100'000; ++yields)
        pump.DoEvents();
    EXPECT_GT(yields, 10'000);
    EXPECT_LE(updates, 11);
}

TEST_F(EventPumpWinTest, AYieldLeavesAFloodToTheNextOne) {
    onMessage = [this] { Post(1); };
    Post(1);
    const std::int64_t start = PerformanceMicroseconds();
    pump.DoEvents();
    EXPECT_LT(PerformanceMicroseconds() - start, 1'000'000);
    const int first = handled;
    EXPECT_GE(first, 1);
    EXPECT_TRUE(DoEventsUntil([&] { return handled > first; }));
}

TEST_F(EventPumpWinTest, RunsUntilTheProgramEnds) {
    onMessage = [this] {
        if (handled == 3)
            PostQuitMessage(7);
    };
    Post(3);
    EXPECT_EQ(pump.Run(), 7);
    EXPECT_EQ(handled, 3);
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
}

TEST_F(EventPumpWinTest, TheEndOfTheProgramEndsWaitsInsideHandlersToo) {
    bool innerEnded = false;
    onMessage = [&] {
        if (handled == 2)
            PostQuitMessage(3);
        if (handled != 1)
            return;
        while (!pump.QuitReceived())
            pump.WaitForEvent();
        pump.WaitForEvent(); // does not sleep
        Post(1);
        pump.DoEvents(); // runs nothing
        MSG message;
        EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
        innerEnded = true;
    };
    Post(2);
    EXPECT_EQ(pump.Run(), 3);
    EXPECT_TRUE(innerEnded);
    EXPECT_EQ(handled, 2);
}

TEST_F(EventPumpWinTest, AQuitMessageFoundByAYieldIsRemembered) {
    PostQuitMessage(5);
    pump.DoEvents();
    EXPECT_TRUE(pump.QuitReceived());
    EXPECT_EQ(pump.Run(), 5);
}

} // namespace
} // namespace quarn
