// What the pump does while one window posts without end.

#include "tests/win32/desktop/EventPumpWinTest.h"

#include "win32/Handles.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <string>

namespace quarn {
namespace {

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

    // So that a turn is due at nearly every message.
    void TakeLongForEachMessage() {
        onMessage = [this] {
            Post(1);
            Spend(15'000);
        };
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
    TakeLongForEachMessage();
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
    TakeLongForEachMessage();
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

} // namespace
} // namespace quarn
