#include "win32/desktop/NotificationAreaWin.h"

#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/ReplacedImport.h"

#include <cmath>
#include <gtest/gtest.h>
#include <shellapi.h>
#include <stdexcept>
#include <vector>

namespace quarn {
namespace {

class NotificationAreaWinTest : public ::testing::Test {
  protected:
    NotificationAreaWinTest() {
        box = reinterpret_cast<HWND>(area.AddPictureBox(reinterpret_cast<WindowReference>(owner.Handle()),
                                                        [this](double X) { positions.push_back(X); }));
        record.owner = reinterpret_cast<WindowReference>(box);
        record.identifier = 1;
        record.flags = 7;
        record.callbackMessage = WM_MOUSEMOVE;
        record.icon = reinterpret_cast<IconReference>(LoadIconA(nullptr, IDI_APPLICATION));
    }

    OwnerTestWindow owner;
    NotificationAreaWin area;
    std::vector<double> positions;
    HWND box = nullptr;
    NotifyIconRecord record;
};

TEST_F(NotificationAreaWinTest, PutsAnIconThereAndTakesItAway) {
    EXPECT_FALSE(area.Notify(NotifyCommand::Modify, record)) << "there is none yet";
    EXPECT_TRUE(area.Notify(NotifyCommand::Add, record));
    record.tip[0] = 'Q';
    EXPECT_TRUE(area.Notify(NotifyCommand::Modify, record));
    EXPECT_TRUE(area.Notify(NotifyCommand::Delete, record));
    EXPECT_FALSE(area.Notify(NotifyCommand::Delete, record));
}

struct NotifyCall {
    DWORD command = 0;
    NOTIFYICONDATAA record{};
};
NotifyCall lastCall;

BOOL WINAPI NoteCall(DWORD command, NOTIFYICONDATAA* record) {
    lastCall = {command, *record};
    return FALSE;
}

TEST_F(NotificationAreaWinTest, DescribesTheIconInTheFirstVersionOfTheRecord) {
    const ReplacedImport notify(&Shell_NotifyIconA, &NoteCall);
    record.tip = {'Q', 'u', 'a', 'r', 'n'};
    for (const auto& [command, number] :
         {std::pair{NotifyCommand::Add, 0U}, {NotifyCommand::Modify, 1U}, {NotifyCommand::Delete, 2U}}) {
        EXPECT_FALSE(area.Notify(command, record));
        EXPECT_EQ(lastCall.command, number);
        EXPECT_EQ(lastCall.record.cbSize, offsetof(NOTIFYICONDATAA, szTip) + 64);
        EXPECT_EQ(lastCall.record.hWnd, box);
        EXPECT_EQ(lastCall.record.uID, 1U);
        EXPECT_EQ(lastCall.record.uFlags, 7U);
        EXPECT_EQ(lastCall.record.uCallbackMessage, 512U);
        EXPECT_EQ(lastCall.record.hIcon, LoadIconA(nullptr, IDI_APPLICATION));
        EXPECT_STREQ(lastCall.record.szTip, "Quarn");
    }
}

TEST_F(NotificationAreaWinTest, TakesATipOfItsWholeField) {
    record.tip.fill('x');
    record.tip.back() = '\0';
    EXPECT_TRUE(area.Notify(NotifyCommand::Add, record));
    EXPECT_TRUE(area.Notify(NotifyCommand::Delete, record));
}

TEST_F(NotificationAreaWinTest, ThePictureBoxIsAnInvisibleChild) {
    EXPECT_EQ(GetParent(box), owner.Handle());
    EXPECT_FALSE(IsWindowVisible(box));
}

TEST_F(NotificationAreaWinTest, PassesTheMessageOnAsAPosition) {
    for (const int message : {512, 513, 514, 515, 516, 517, 518, 0, 65535})
        SendMessageA(box, WM_MOUSEMOVE, 1, message);
    ASSERT_EQ(positions.size(), 9U);
    const double twips = area.TwipsPerPixelX();
    EXPECT_GT(twips, 0);
    EXPECT_EQ(std::lround(positions[3] / twips), 515);
    EXPECT_EQ(std::lround(positions[7] / twips), 0);
    EXPECT_EQ(std::lround(positions[8] / twips), 65535);
}

TEST_F(NotificationAreaWinTest, OtherMessagesAreNoMouseMoves) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_RBUTTONUP})
        SendMessageA(box, message, 0, 515);
    EXPECT_TRUE(positions.empty());
}

TEST_F(NotificationAreaWinTest, AFailingHandlerHarmsNobody) {
    const HWND failing = reinterpret_cast<HWND>(
        area.AddPictureBox(reinterpret_cast<WindowReference>(owner.Handle()),
                           [](double) { throw std::runtime_error("a handler that fails"); }));
    SendMessageA(failing, WM_MOUSEMOVE, 1, 515);
    DestroyWindow(failing);
    EXPECT_FALSE(IsWindow(failing));
}

} // namespace
} // namespace quarn
