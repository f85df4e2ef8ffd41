#include "win32/controls/ProgressBarControl.h"
#include "win32/controls/StatusBarControl.h"
#include "win32/controls/ToolbarControl.h"

#include "tests/win32/harness/ControlHost.h"
#include "tests/win32/harness/PaintedPixels.h"
#include "win32/Fonts.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace quarn {
namespace {

class ToolbarControlTest : public testing::Test {
  protected:
    ToolbarControlTest() {
        model.buttons.Reset(4);
        model.buttons[1] = {
            .key = "refresh", .label = "Refresh", .toolTip = "Refresh selected server(s)", .enabled = true};
        model.buttons[3] = {
            .key = "stop", .label = "Stop", .toolTip = "Stop current operation", .enabled = false};
        model.buttons[4] = {
            .key = "join", .label = "Join", .toolTip = "Join server as player", .enabled = true};
        control.Create(host.Handle(), 1, FirstCommand);
        control.SetLook(Dpi(96), nullptr);
        control.Dock();
        host.Watch(control);
        control.ButtonClicked = [this](const std::string& key) { clicked += key + ";"; };
    }

    std::string ToolTipOf(int position) {
        char text[100] = "";
        NMTBGETINFOTIPA query{};
        query.hdr = {control.Handle(), 1, static_cast<UINT>(TBN_GETINFOTIPA)};
        query.pszText = text;
        query.cchTextMax = sizeof text;
        query.iItem = FirstCommand + position;
        SendMessageA(host.Handle(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&query));
        return text;
    }

    bool IsEnabled(int position) const {
        return SendMessageA(control.Handle(), TB_ISBUTTONENABLED,
                            static_cast<WPARAM>(FirstCommand + position), 0) != 0;
    }

    static constexpr int FirstCommand = 500;
    Toolbar model;
    ToolbarControl control{model};
    ControlHost host;
    std::string clicked;
};

TEST_F(ToolbarControlTest, LiesWhereItIsPutAndDrawsNoDivider) {
    control.MoveTo({20, 30, 420, 90});
    ControlHost::RunPendingEvents();
    RECT bounds{};
    GetWindowRect(control.Handle(), &bounds);
    MapWindowPoints(nullptr, host.Handle(), reinterpret_cast<POINT*>(&bounds), 2);
    const RECT expected = {20, 30, 420, 90};
    EXPECT_TRUE(EqualRect(&bounds, &expected))
        << bounds.left << ',' << bounds.top << ',' << bounds.right << ',' << bounds.bottom;
    RECT inner{};
    GetClientRect(control.Handle(), &inner);
    EXPECT_EQ(inner.bottom, 60) << "a divider takes the first lines";
}

TEST_F(ToolbarControlTest, HasAButtonOrASeparatorAtEachPosition) {
    ASSERT_EQ(SendMessageA(control.Handle(), TB_BUTTONCOUNT, 0, 0), 4);
    for (int position = 1; position <= 4; ++position) {
        TBBUTTON button{};
        SendMessageA(control.Handle(), TB_GETBUTTON, static_cast<WPARAM>(position - 1),
                     reinterpret_cast<LPARAM>(&button));
        EXPECT_EQ(button.fsStyle == BTNS_SEP, position == 2) << position;
        EXPECT_EQ(button.idCommand, FirstCommand + position);
    }
}

TEST_F(ToolbarControlTest, ShowsTheToolTipsOfTheModel) {
    EXPECT_EQ(ToolTipOf(1), "Refresh selected server(s)");
    EXPECT_EQ(ToolTipOf(3), "Stop current operation");
    EXPECT_EQ(ToolTipOf(2), "");
    EXPECT_EQ(ToolTipOf(99), "");
}

TEST_F(ToolbarControlTest, ShowsNoToolTipsOverAnOpenMenu) {
    control.AllowToolTips(false);
    EXPECT_EQ(ToolTipOf(1), "");
    control.AllowToolTips(true);
    EXPECT_EQ(ToolTipOf(1), "Refresh selected server(s)");
}

TEST_F(ToolbarControlTest, EnablesButtonsAtTheFlush) {
    EXPECT_TRUE(IsEnabled(3));
    control.Flush();
    EXPECT_FALSE(IsEnabled(3));
    EXPECT_TRUE(IsEnabled(4));
    model.buttons[3].enabled = true;
    model.buttons[4].enabled = false;
    control.Flush();
    EXPECT_TRUE(IsEnabled(3));
    EXPECT_FALSE(IsEnabled(4));
}

TEST_F(ToolbarControlTest, ReportsTheKeyOfTheButton) {
    EXPECT_TRUE(control.OnCommand(FirstCommand + 4));
    EXPECT_FALSE(control.OnCommand(FirstCommand + 2));
    EXPECT_FALSE(control.OnCommand(FirstCommand + 5));
    EXPECT_FALSE(control.OnCommand(FirstCommand));
    EXPECT_EQ(clicked, "join;");
}

TEST_F(ToolbarControlTest, GrowsWithTheDpi) {
    const int height = control.Height();
    control.SetLook(Dpi(192), nullptr);
    EXPECT_EQ(control.Height(), 2 * height);
}

TEST_F(ToolbarControlTest, HasItsContentInTheMiddle) {
    control.Flush();
    for (const UINT dpi : {96U, 120U, 144U, 192U}) {
        const FontHandle font = MessageFont(Dpi(dpi));
        control.SetLook(Dpi(dpi), font.Get());
        control.Dock();
        ControlHost::RunPendingEvents();
        const PaintedPixels shown(host.Handle());
        int first = -1;
        int last = -1;
        for (int y = 0; y < control.Height() - 2; ++y)
            for (int x = 4; x < Dpi(dpi).Scaled(60); ++x)
                if (shown.At(x, y) != shown.At(2, y)) {
                    first = first < 0 ? y : first;
                    last = y;
                }
        const int below = control.Height() - 2 - last - 1;
        EXPECT_NEAR(first, below, Dpi(dpi).Scaled(4)) << dpi;
        control.SetLook(Dpi(dpi), nullptr);
    }
}

TEST_F(ToolbarControlTest, TellsTheWidthOfItsButtons) {
    RECT last{};
    SendMessageA(control.Handle(), TB_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&last));
    EXPECT_EQ(control.LeastWidth(), last.right);
    EXPECT_GT(control.LeastWidth(), 3 * 72);
}

TEST_F(ToolbarControlTest, PutsButtonsThatDoNotFitIntoFurtherRows) {
    constexpr int Positions[] = {1, 3, 4}; // of the buttons
    const RECT first = control.ButtonBounds(1);
    const RECT third = control.ButtonBounds(3);
    const int pitch = first.bottom - first.top;
    const int wide = first.right - first.left;
    const int all = control.LeastWidth();
    const int height = control.Height();
    const struct {
        int width;
        std::vector<int> rows; // of the buttons
    } cases[] = {
        {all, {0, 0, 0}},          {all - 1, {0, 0, 1}},  {2 * wide, {0, 1, 1}}, // no room for the separator
        {2 * wide - 1, {0, 1, 2}}, {wide / 2, {0, 1, 2}}, {0, {0, 1, 2}},        {all + 500, {0, 0, 0}},
    };
    for (const auto& c : cases) {
        control.Wrap(c.width);
        control.Dock();
        for (std::size_t i = 0; i < c.rows.size(); ++i) {
            const RECT bounds = control.ButtonBounds(Positions[i]);
            EXPECT_EQ(bounds.top - first.top, c.rows[i] * pitch) << c.width << ": " << Positions[i];
            const bool startsRow = i == 0 || c.rows[i] != c.rows[i - 1];
            EXPECT_EQ(bounds.left == first.left, startsRow) << c.width << ": " << Positions[i];
        }
        EXPECT_EQ(control.Height(), height + c.rows.back() * pitch) << c.width;
        EXPECT_EQ(control.ButtonsSize().cy, control.Height()) << c.width;
        EXPECT_EQ(control.LeastWidth(), all) << c.width;
    }
    EXPECT_EQ(control.ButtonBounds(3).left, third.left) << "the separator is back";
}

TEST_F(ToolbarControlTest, KeepsDisabledButtonsDisabledWhenRowsChange) {
    control.Flush();
    control.Wrap(0);
    EXPECT_FALSE(IsEnabled(3));
    EXPECT_TRUE(IsEnabled(1));
    control.Wrap(control.LeastWidth());
    EXPECT_FALSE(IsEnabled(3));
}

TEST_F(ToolbarControlTest, WrapsAgainWhenTheDpiChanges) {
    control.Wrap(control.LeastWidth());
    const int height = control.Height();
    const int width = control.LeastWidth();
    control.SetLook(Dpi(192), nullptr);
    control.Wrap(width);
    EXPECT_GT(control.Height(), 2 * height);
    control.SetLook(Dpi(96), nullptr);
    control.Wrap(width);
    EXPECT_EQ(control.Height(), height);
}

class StatusBarControlTest : public testing::Test {
  protected:
    StatusBarControlTest() {
        model.panels.Reset(4);
        model.panels[1].text = "Ready.";
        model.panels[4].kind = StatusPanel::Kind::CapsLock;
        control.Create(host.Handle(), 1);
        control.SetLook(Dpi(96), nullptr);
        control.Dock();
        control.Flush();
    }

    std::string TextOf(int panel) const {
        char text[100] = "";
        SendMessageA(control.Handle(), SB_GETTEXTA, static_cast<WPARAM>(panel - 1),
                     reinterpret_cast<LPARAM>(text));
        return text;
    }

    StatusBar model;
    StatusBarControl control{model};
    ControlHost host;
};

TEST_F(StatusBarControlTest, ShowsTextsAtTheFlush) {
    EXPECT_EQ(TextOf(1), "Ready.");
    model.panels[3].text = "57 servers";
    EXPECT_EQ(TextOf(3), "");
    control.Flush();
    EXPECT_EQ(TextOf(3), "57 servers");
}

TEST_F(StatusBarControlTest, ReportsItsGeometryInTwips) {
    RECT inner{};
    GetClientRect(host.Handle(), &inner);
    EXPECT_EQ(model.top + model.height, inner.bottom * 15);
    EXPECT_GE(model.height, 28 * 15);
    for (int panel = 2; panel <= 4; ++panel)
        EXPECT_GE(model.panels[panel].left, model.panels[panel - 1].left + model.panels[panel - 1].width)
            << panel;
    EXPECT_LE(model.panels[4].left + model.panels[4].width, inner.right * 15);
}

TEST_F(StatusBarControlTest, DocksAgainWhenAsked) {
    SetWindowPos(control.Handle(), nullptr, 0, 0, 100, 30, SWP_NOZORDER);
    model.redraw = true;
    control.Flush();
    RECT inner{};
    GetClientRect(host.Handle(), &inner);
    EXPECT_EQ(model.top + model.height, inner.bottom * 15);
    EXPECT_FALSE(model.redraw);
}

class ProgressBarControlTest : public StatusBarControlTest {};

TEST_F(ProgressBarControlTest, LiesOnTheStatusBarWhereTheModelPutsIt) {
    ProgressBar progress;
    ProgressBarControl bar(progress);
    bar.Create(control.Handle(), 2);
    progress.bounds = {150, model.top + 45, 1500, model.height - 75};
    progress.SetMaximum(250);
    progress.SetValue(17);
    bar.Flush();

    RECT bounds{};
    GetWindowRect(bar.Handle(), &bounds);
    MapWindowPoints(nullptr, host.Handle(), reinterpret_cast<POINT*>(&bounds), 2);
    EXPECT_EQ(bounds.left, 10);
    EXPECT_EQ(bounds.right, 110);
    EXPECT_EQ(bounds.top * 15, model.top + 45);
    EXPECT_EQ(SendMessageA(bar.Handle(), PBM_GETRANGE, FALSE, 0), 250);
    EXPECT_EQ(SendMessageA(bar.Handle(), PBM_GETPOS, 0, 0), 17);
}

} // namespace
} // namespace quarn
