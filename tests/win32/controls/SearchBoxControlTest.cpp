#include "win32/controls/SearchBoxControl.h"

#include "tests/win32/harness/ControlHost.h"
#include "win32/Fonts.h"

#include <gtest/gtest.h>

#include <string>

namespace quarn {
namespace {

class SearchBoxControlTest : public testing::Test {
  protected:
    SearchBoxControlTest() {
        model.name = "Search servers";
        model.cue = "Search";
        model.visible = false;
        control.Create(host.Handle(), 7);
        control.SetLook(Dpi(96), font.Get());
        control.Changed = [this] { ++changes; };
    }
    std::string Shown() const {
        char text[200] = "";
        GetWindowTextA(control.Handle(), text, sizeof text);
        return text;
    }

    ControlHost host;
    FontHandle font = MessageFont(Dpi(96));
    TextBox model;
    SearchBoxControl control{model};
    int changes = 0;
};

TEST_F(SearchBoxControlTest, IsHiddenUntilTheModelShowsIt) {
    EXPECT_FALSE(IsWindowVisible(control.Handle()));
    EXPECT_FALSE(control.Flush());
    model.visible = true;
    EXPECT_TRUE(control.Flush());
    EXPECT_FALSE(control.Flush());
    EXPECT_TRUE(IsWindowVisible(control.Handle()));
    model.visible = false;
    EXPECT_TRUE(control.Flush());
    EXPECT_FALSE(IsWindowVisible(control.Handle()));
}

TEST_F(SearchBoxControlTest, HasItsLabelRightInFrontOfIt) {
    model.visible = true;
    control.Flush();
    const HWND label = GetWindow(control.Handle(), GW_HWNDPREV);
    char text[50] = "";
    GetWindowTextA(label, text, sizeof text);
    EXPECT_STREQ(text, "Search servers");
    EXPECT_TRUE(IsWindowVisible(label));
    model.visible = false;
    control.Flush();
    EXPECT_FALSE(IsWindowVisible(label));
}

TEST_F(SearchBoxControlTest, GivesTheModelWhatIsTyped) {
    SetWindowTextA(control.Handle(), "abc");
    control.TakeText();
    EXPECT_EQ(model.text, "abc");
    EXPECT_EQ(changes, 1);
    control.TakeText();
    EXPECT_EQ(changes, 1) << "the same text again is no change";
}

TEST_F(SearchBoxControlTest, ShowsTheModelsText) {
    model.text = "from the form";
    control.Flush();
    EXPECT_EQ(Shown(), "from the form");
    control.TakeText();
    EXPECT_EQ(changes, 0);
}

TEST_F(SearchBoxControlTest, TakesNoEndlessText) {
    model.visible = true;
    control.Flush();
    for (int i = 0; i < 150; ++i)
        SendMessageA(control.Handle(), WM_CHAR, 'x', 1);
    control.TakeText();
    EXPECT_EQ(model.text, std::string(100, 'x'));
}

TEST_F(SearchBoxControlTest, SelectsItsTextWhenItGetsTheFocusAndByCtrlA) {
    model = {.text = "abc", .name = "Search servers", .cue = "Search", .visible = true};
    control.Flush();
    control.Focus();
    DWORD from = 9;
    DWORD to = 9;
    const auto selection = [&] {
        SendMessageA(control.Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                     reinterpret_cast<LPARAM>(&to));
    };
    selection();
    EXPECT_EQ(from, 0U);
    EXPECT_EQ(to, 3U);
    SendMessageA(control.Handle(), EM_SETSEL, 1, 1);
    SendMessageA(control.Handle(), WM_CHAR, 1, 1);
    selection();
    EXPECT_EQ(from, 0U);
    EXPECT_EQ(to, 3U);
    EXPECT_EQ(Shown(), "abc");
}

} // namespace
} // namespace quarn
