#include "win32/desktop/EventPumpWin.h"

#include "tests/win32/harness/Pumping.h"
#include "win32/Handles.h"
#include "win32/MessageWindow.h"
#include "win32/PerformanceCounter.h"
#include "win32/TimerWin.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <thread>

namespace quarn {
namespace {

class EventPumpWinTest : public ::testing::Test {
  protected:
    // Messages from the creation of windows are not part of the test.
    EventPumpWinTest() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }

    void Post(int count) {
        for (int i = 0; i < count; ++i)
            PostMessageA(window.Handle(), WM_APP, 0, 0);
    }

    // Yields like a loop over many records.
    bool DoEventsUntil(const std::function<bool()>& condition) {
        const ULONGLONG start = GetTickCount64();
        while (!condition() && GetTickCount64() - start < PatienceMilliseconds)
            pump.DoEvents();
        return condition();
    }

    static std::int64_t ProcessorMicroseconds() {
        FILETIME created, exited, kernel, user;
        GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
        const auto microseconds = [](const FILETIME& t) {
            return (std::int64_t{t.dwHighDateTime} << 32 | t.dwLowDateTime) / 10;
        };
        return microseconds(kernel) + microseconds(user);
    }

    std::function<void()> onMessage = [] {};
    int handled = 0;
    MessageWindow window{[this](UINT message, WPARAM, LPARAM) {
        if (message != WM_APP)
            return;
        ++handled;
        onMessage();
    }};
    EventPumpWin pump;
};

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

void Spend(std::int64_t microseconds) {
    const std::int64_t start = PerformanceMicroseconds();
    while (PerformanceMicroseconds() - start < microseconds) {
    }
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

// The queue never runs out of posted messages, as when a socket is flooded. The argument tells how the pump
// is called.
class EventPumpWinFloodTest : public EventPumpWinTest, public ::testing::WithParamInterface<bool> {
  protected:
    EventPumpWinFloodTest() {
        pump.preTranslate = [this](MSG& message) {
            seen[message.message] = true;
            return false;
        };
        onMessage = [this] { Post(1); };
        Post(1);
    }

    // The time until the pump runs a message after `cause`, the median of several.
    std::int64_t MicrosecondsUntil(UINT message, const std::function<void()>& cause) {
        std::array<std::int64_t, 9> times{};
        for (std::int64_t& time : times) {
            seen[message] = false;
            cause();
            const std::int64_t start = PerformanceMicroseconds();
            PumpsUntil([&] {
                time = PerformanceMicroseconds() - start;
                return seen[message] || time > 1'000'000;
            });
        }
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

    bool PumpsUntil(const std::function<bool()>& condition) {
        const ULONGLONG start = GetTickCount64();
        while (!condition() && GetTickCount64() - start < PatienceMilliseconds) {
            if (GetParam())
                pump.DoEvents();
            else
                pump.WaitForEvent();
        }
        return condition();
    }

    static void Press(WORD key) {
        INPUT inputs[2]{};
        inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
        inputs[0].ki.wVk = inputs[1].ki.wVk = key;
        inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, inputs, sizeof(INPUT));
    }

    // A turn at least every 50 ms; the rest is for a machine that has other things to do.
    static constexpr std::int64_t Soon = 80'000;

    std::map<UINT, bool> seen;
    const WindowHandle visible{CreateWindowExA(WS_EX_TOPMOST, "STATIC", "Quarn flood", WS_POPUP | WS_VISIBLE,
                                               0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr)};
};

TEST_P(EventPumpWinFloodTest, ATimerTicks) {
    SetTimer(visible.Get(), 1, 10, nullptr);
    EXPECT_LT(MicrosecondsUntil(WM_TIMER, [] {}), Soon);
}

TEST_P(EventPumpWinFloodTest, AWindowIsPainted) {
    EXPECT_LT(MicrosecondsUntil(WM_PAINT, [this] { InvalidateRect(visible.Get(), nullptr, FALSE); }), Soon);
}

TEST_P(EventPumpWinFloodTest, AKeyActs) {
    SetForegroundWindow(visible.Get());
    SetFocus(visible.Get());
    EXPECT_LT(MicrosecondsUntil(WM_KEYUP, [] { Press(VK_F13); }), Soon);
}

// Sends messages to a window all the time, as a screen reader of another process may do.
class Sender {
  public:
    explicit Sender(HWND window)
        : window_(window), thread_(CreateThread(nullptr, 0, &Send, this, 0, nullptr)) {}
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;
    ~Sender() {
        InterlockedExchange(&ends_, 1);
        WaitForSingleObject(thread_.Get(), INFINITE);
    }

  private:
    static DWORD WINAPI Send(void* parameter) noexcept {
        Sender& sender = *static_cast<Sender*>(parameter);
        while (InterlockedCompareExchange(&sender.ends_, 0, 0) == 0)
            SendMessageTimeoutA(sender.window_, WM_NULL, 0, 0, SMTO_NORMAL, 100, nullptr);
        return 0;
    }

    HWND window_;
    volatile LONG ends_ = 0;
    KernelObject thread_;
};

TEST_P(EventPumpWinFloodTest, TypedCharactersStayBetweenTheirKeys) {
    SetForegroundWindow(visible.Get());
    SetFocus(visible.Get());
    std::string order;
    pump.preTranslate = [&](MSG& message) {
        if (message.message == WM_KEYDOWN)
            order += static_cast<char>(std::tolower(static_cast<int>(message.wParam)));
        else if (message.message == WM_CHAR)
            order += static_cast<char>(std::toupper(static_cast<int>(message.wParam)));
        else if (message.message == WM_KEYUP)
            order += '.';
        return false;
    };
    onMessage = [this] {
        Post(1);
        Spend(15'000); // so that a turn is due at nearly every message
    };
    const Sender sender(visible.Get());
    for (const char key : {'A', 'B', 'C', 'D'})
        Press(static_cast<WORD>(key));
    EXPECT_TRUE(PumpsUntil([&] { return order.size() == 12; }));
    EXPECT_EQ(order, "aA.bB.cC.dD.");
}

TEST_P(EventPumpWinFloodTest, EachClickActsOnce) {
    SetForegroundWindow(visible.Get());
    SetCapture(visible.Get()); // a label lets clicks through to what is below it
    std::string order;
    pump.preTranslate = [&](MSG& message) {
        if (message.message == WM_RBUTTONDOWN || message.message == WM_RBUTTONDBLCLK)
            order += 'v';
        else if (message.message == WM_RBUTTONUP)
            order += '^';
        return false;
    };
    onMessage = [this] {
        Post(1);
        Spend(15'000); // so that a turn is due at nearly every message
    };
    for (int i = 0; i < 3; ++i)
        for (const DWORD flags : {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP}) {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = flags;
            SendInput(1, &input, sizeof input);
        }
    EXPECT_TRUE(PumpsUntil([&] { return order.size() >= 6; }));
    EXPECT_EQ(order, "v^v^v^");
}

INSTANTIATE_TEST_SUITE_P(Calls, EventPumpWinFloodTest, ::testing::Bool(),
                         [](const auto& named) { return named.param ? "Yields" : "Waits"; });

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
