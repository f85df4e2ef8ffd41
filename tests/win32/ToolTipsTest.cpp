#include "win32/ToolTips.h"

#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/Pumping.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

// Two controls side by side, over which the mouse rests in turn.
class ToolTipsTest : public ::testing::Test {
  protected:
    HWND AddButton(int x) {
        return CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_VISIBLE, x, 20, 100, 40, owner.Handle(),
                               nullptr, GetModuleHandleA(nullptr), nullptr);
    }

    void MoveMouseTo(int x, int y) {
        POINT point = {x, y};
        ClientToScreen(owner.Handle(), &point);
        SetCursorPos(point.x, point.y);
    }

    // The tip of this test's window, once it shows a text.
    HWND TipThatShows(const std::string& text) {
        HWND tip = nullptr;
        PumpUntil([&] {
            tip = nullptr;
            while ((tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr) {
                char shown[100] = "";
                GetWindowTextA(tip, shown, sizeof shown);
                if (GetWindow(tip, GW_OWNER) == owner.Handle() && IsWindowVisible(tip) && text == shown)
                    return true;
            }
            return false;
        });
        return tip;
    }

    static LONG WidthOf(HWND window) {
        RECT bounds{};
        GetWindowRect(window, &bounds);
        return bounds.right - bounds.left;
    }

    OwnerTestWindow owner;
    ToolTips toolTips;
};

TEST_F(ToolTipsTest, ShowsTheTextOfTheControlUnderTheMouse) {
    const HWND left = AddButton(20);
    const HWND right = AddButton(220);
    toolTips.AddControl(owner.Handle(), left, "old");
    toolTips.AddControl(owner.Handle(), right, "right");
    toolTips.ChangeText(owner.Handle(), left, "left");
    MoveMouseTo(70, 40);
    EXPECT_TRUE(TipThatShows("left"));
    MoveMouseTo(270, 40);
    EXPECT_TRUE(TipThatShows("right"));
}

TEST_F(ToolTipsTest, ShowsTheTextOfTheAreaUnderTheMouse) {
    const HWND button = AddButton(20);
    toolTips.AddArea(button, 1, "old");
    toolTips.AddArea(button, 2, "right");
    toolTips.MoveArea(button, 1, {0, 0, 50, 40});
    toolTips.MoveArea(button, 2, {50, 0, 100, 40});
    toolTips.ChangeAreaText(button, 1, "left");
    MoveMouseTo(45, 40);
    EXPECT_TRUE(TipThatShows("left"));
    MoveMouseTo(95, 40);
    EXPECT_TRUE(TipThatShows("right"));
}

TEST_F(ToolTipsTest, ShowsTextsInAWindowThatIsNotActive) {
    const WindowHandle active(CreateWindowExA(0, "STATIC", "Quarn active", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                              0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr));
    toolTips.AddControl(owner.Handle(), AddButton(20), "text");
    ASSERT_TRUE(PumpUntil([&] {
        SetForegroundWindow(active.Get());
        return GetActiveWindow() == active.Get();
    }));
    MoveMouseTo(70, 40);
    EXPECT_TRUE(TipThatShows("text"));
}

TEST_F(ToolTipsTest, ShowsAnAmpersand) {
    toolTips.AddControl(owner.Handle(), AddButton(20), "A&B");
    toolTips.AddControl(owner.Handle(), AddButton(220), "AB");
    MoveMouseTo(70, 40);
    const LONG with = WidthOf(TipThatShows("A&B"));
    MoveMouseTo(270, 40);
    EXPECT_GT(with, WidthOf(TipThatShows("AB")));
}

} // namespace
} // namespace quarn
