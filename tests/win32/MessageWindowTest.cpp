#include "win32/MessageWindow.h"

#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/UncaughtErrors.h"
#include "win32/desktop/EventPumpWin.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace quarn {
namespace {

// What waits in the queue would have messages parked.
void EmptyTheQueue() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

TEST(MessageWindowTest, HandsOnTheProgramsOwnMessagesAndTimers) {
    EmptyTheQueue();
    std::vector<UINT> messages;
    const MessageWindow window([&](UINT message, WPARAM, LPARAM) { messages.push_back(message); });
    const UINT sent[] = {WM_NULL, WM_APP, WM_PAINT, WM_TIMER, WM_USER, 0xBFFF};
    for (const UINT message : sent)
        SendMessageA(window.Handle(), message, 0, 0);
    EXPECT_EQ(messages, (std::vector<UINT>{WM_APP, WM_TIMER, 0xBFFF}));
}

BOOL CALLBACK IsAnother(HWND found, LPARAM ours) {
    return found != reinterpret_cast<HWND>(ours);
}

TEST(MessageWindowTest, IsNotAmongTheWindowsOfTheDesktop) {
    const MessageWindow window([](UINT, WPARAM, LPARAM) {});
    EXPECT_FALSE(IsWindowVisible(window.Handle()));
    EXPECT_TRUE(EnumWindows(&IsAnother, reinterpret_cast<LPARAM>(window.Handle())));
}

TEST(UncaughtErrorsTest, AnErrorIsReportedAndDoesNotLeaveTheWindow) {
    EmptyTheQueue();
    std::string reported;
    SetUncaughtErrorReporter([&](std::string_view, std::string_view) {
        try {
            throw; // cppcheck-suppress rethrowNoCurrentException ; the reporter is called for one
        } catch (const std::exception& error) {
            reported = error.what();
        }
    });
    const MessageWindow window([](UINT, WPARAM, LPARAM) { throw std::runtime_error("out of luck"); });
    EXPECT_EQ(SendMessageA(window.Handle(), WM_APP, 0, 0), 0);
    EXPECT_EQ(reported, "out of luck");

    SetUncaughtErrorReporter([](std::string_view, std::string_view) { throw std::runtime_error("twice"); });
    EXPECT_EQ(SendMessageA(window.Handle(), WM_APP, 0, 0), 0);

    SetUncaughtErrorReporter({});
    EXPECT_EQ(SendMessageA(window.Handle(), WM_APP, 0, 0), 0);
}

// Several windows post without end for a while, as sockets do that are flooded. A message box is open
// meanwhile.
class MessageWindowFloodTest : public ::testing::Test {
  protected:
    static constexpr std::size_t Windows = 3;
    static constexpr ULONGLONG FloodMilliseconds = 5000;

    MessageWindowFloodTest() {
        for (std::size_t i = 0; i < Windows; ++i)
            windows_.push_back(std::make_unique<MessageWindow>([this, i](UINT, WPARAM number, LPARAM) {
                EXPECT_EQ(number, handled[i]);
                ++handled[i];
                if (GetTickCount64() - start_ < FloodMilliseconds)
                    Post(i);
            }));
    }

    void Post(std::size_t window) { PostMessageA(windows_[window]->Handle(), WM_APP, posted_[window]++, 0); }

    ULONGLONG MillisecondsOf(const std::function<void()>& modalCall) {
        start_ = GetTickCount64();
        for (std::size_t i = 0; i < Windows; ++i) {
            Post(i);
            Post(i);
        }
        modalCall();
        return GetTickCount64() - start_;
    }

    std::array<WPARAM, Windows> handled{};

  private:
    ULONGLONG start_ = 0;
    std::array<WPARAM, Windows> posted_{};
    std::vector<std::unique_ptr<MessageWindow>> windows_;
};

TEST_F(MessageWindowFloodTest, AMessageBoxCanBeAnswered) {
    OwnerTestWindow owner;
    const auto floods = [this](HWND) {
        return std::all_of(handled.begin(), handled.end(), [](WPARAM each) { return each > 20; });
    };
    const auto answer = [](HWND box) { DialogDriver::PressKey(GetDlgItem(box, IDOK), VK_RETURN); };
    DialogDriver driver(owner.Handle(), {{floods, answer}});
    const ULONGLONG time = MillisecondsOf([&] { MessageBoxA(owner.Handle(), "?", "Quarn flood", MB_OK); });
    EXPECT_LT(time, FloodMilliseconds / 2);
    EXPECT_EQ(driver.StepsLeft(), 0U);
}

TEST_F(MessageWindowFloodTest, ParkedMessagesComeInTheirOrderWhenTheOwnLoopGoesOn) {
    OwnerTestWindow owner;
    DialogDriver driver(owner.Handle(), {[](HWND box) { EndDialog(box, IDOK); }});
    MillisecondsOf([&] { MessageBoxA(owner.Handle(), "?", "Quarn flood", MB_OK); });
    EventPumpWin pump;
    const std::array<WPARAM, Windows> before = handled;
    for (int i = 0; i < 1000; ++i)
        pump.WaitForEvent();
    for (std::size_t i = 0; i < Windows; ++i)
        EXPECT_GT(handled[i], before[i]);
}

DWORD waiting = 0;

DWORD WINAPI WaitingOf(UINT kinds) {
    return MAKELONG(0, kinds & waiting);
}

// A loop of the system delivers a message while others wait. The window looks for those from time to time.
bool ParksAMessage(const MessageWindow& window, const int& handled, DWORD others = QS_INPUT) {
    waiting = others;
    const ReplacedImport othersWait(&GetQueueStatus, &WaitingOf);
    return PumpUntil([&] {
        const int before = handled;
        SendMessageA(window.Handle(), WM_APP, 0, 0);
        return handled == before;
    });
}

TEST(MessageWindowTest, ParksAMessageWhileOthersWait) {
    EmptyTheQueue();
    for (const DWORD others : {QS_KEY, QS_MOUSEMOVE, QS_MOUSEBUTTON, QS_PAINT, QS_TIMER}) {
        int handled = 0;
        const MessageWindow window([&](UINT, WPARAM, LPARAM) { ++handled; });
        EXPECT_TRUE(ParksAMessage(window, handled, others)) << others;
    }
}

TEST(MessageWindowTest, ParksNothingAfterTheParkedMessagesAreGone) {
    const ReplacedImport nothingWaits(
        &GetQueueStatus, +[](UINT) -> DWORD { return 0; });
    int handled = 0;
    const MessageWindow window([&](UINT, WPARAM, LPARAM) { ++handled; });
    const auto isHandledAtOnce = [&] {
        const int before = handled;
        SendMessageA(window.Handle(), WM_APP, 0, 0);
        return handled == before + 1;
    };
    ASSERT_TRUE(ParksAMessage(window, handled));
    EXPECT_FALSE(isHandledAtOnce());
    const int before = handled;
    EXPECT_TRUE(PumpUntil([&] { return handled == before + 2; }));
    EXPECT_TRUE(isHandledAtOnce());
    {
        int handledByOther = 0;
        const MessageWindow other([&](UINT, WPARAM, LPARAM) { ++handledByOther; });
        ASSERT_TRUE(ParksAMessage(other, handledByOther));
    }
    EXPECT_TRUE(isHandledAtOnce());
}

TEST(MessageWindowTest, NumbersOfMessagesComeAgainOnlyAfterThousands) {
    MessageWindow window([](UINT, WPARAM, LPARAM) {});
    std::set<UINT> numbers;
    for (int i = 0; i < 0x4000; ++i) {
        const UINT number = window.NextMessage();
        EXPECT_GE(number, static_cast<UINT>(WM_APP));
        EXPECT_LE(number, 0xBFFFU);
        EXPECT_TRUE(numbers.insert(number).second) << number;
    }
    EXPECT_TRUE(numbers.contains(window.NextMessage()));
}

} // namespace
} // namespace quarn
