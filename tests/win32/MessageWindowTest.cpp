#include "win32/MessageWindow.h"

#include "tests/win32/harness/Pumping.h"
#include "win32/UncaughtErrors.h"

#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace quarn {
namespace {

TEST(MessageWindowTest, ForwardsTheProgramsOwnMessagesAndTimers) {
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

TEST(MessageWindowTest, MessageNumbersRepeatOnlyAfterThousands) {
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
