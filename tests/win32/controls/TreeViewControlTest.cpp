#include "win32/controls/TreeViewControl.h"

#include "tests/win32/harness/ControlHost.h"
#include "tests/win32/harness/PaintedPixels.h"
#include "win32/Images.h"
#include "win32/SelectionColors.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <cstring>
#include <utility>

namespace quarn {
namespace {

class TreeViewControlTest : public testing::Test {
  protected:
    TreeViewControlTest() {
        control.Create(host.Handle(), 1, "Games");
        control.MoveTo({0, 0, 300, 400});
        host.Watch(control);
        control.NodeClicked = [this](const std::string& key) { clicked.push_back(key); };
        control.SelectedByKeyboard = [this](const std::string& key) { byKeyboard.push_back(key); };

        Add("games", "");
        Add("q3", "games");
        Add("filters", "");
        Add("fltkey", "filters");
        model.Node("games").expanded = true;
        control.Flush();
    }

    void Add(const std::string& key, const std::string& parent) {
        model.Add({key, "text of " + key, parent, "", ""});
    }

    HTREEITEM Next(UINT relation, HTREEITEM from = nullptr) const {
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(control.Handle(), TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
    }

    std::string TextOf(HTREEITEM item) const {
        char text[100] = "";
        TVITEMA query{};
        query.mask = TVIF_HANDLE | TVIF_TEXT;
        query.hItem = item;
        query.pszText = text;
        query.cchTextMax = sizeof text;
        return SendMessageA(control.Handle(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query)) != 0 ? text
                                                                                                      : "";
    }

    bool IsExpanded(HTREEITEM item) const {
        return (SendMessageA(control.Handle(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item),
                             TVIS_EXPANDED) &
                TVIS_EXPANDED) != 0;
    }

    // Position of the item's text, for the mouse.
    LPARAM MiddleOf(HTREEITEM item) const {
        RECT bounds{};
        std::memcpy(&bounds, &item, sizeof item);
        SendMessageA(control.Handle(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&bounds));
        return MAKELPARAM((bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2);
    }

    // Posted, because the control waits for the release inside the press.
    void Click(UINT press, UINT release, LPARAM position) {
        PostMessageA(control.Handle(), press, MK_LBUTTON, position);
        PostMessageA(control.Handle(), release, 0, position);
        ControlHost::RunPendingEvents();
    }

    void Press(WPARAM key) { SendMessageA(control.Handle(), WM_KEYDOWN, key, 1); }

    TreeView model;
    TreeViewControl control{model};
    ControlHost host;
    std::vector<std::string> clicked;
    std::vector<std::string> byKeyboard;
};

using Keys = std::vector<std::string>;

TEST_F(TreeViewControlTest, ShowsTheImagesOfANodeAndTheirChanges) {
    const Images images(16, {"locked", "fldrcls", "fldrop"}); // a node without an image shows the first
    control.SetImages(images);
    model.Add({"pictured", "text", "", "fldrcls", "fldrop"});
    control.Flush();
    HTREEITEM item = Next(TVGN_ROOT);
    while (const HTREEITEM next = Next(TVGN_NEXT, item))
        item = next;
    const auto imagesOfNode = [&] {
        TVITEMA query{};
        query.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        query.hItem = item;
        SendMessageA(control.Handle(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
        return std::pair(query.iImage, query.iSelectedImage);
    };
    const int closed = images.IndexOf("fldrcls");
    const int open = images.IndexOf("fldrop");
    EXPECT_EQ(imagesOfNode(), std::pair(closed, open));
    model.Node("pictured").image = "fldrop";
    model.Node("pictured").selectedImage = "fldrcls";
    control.Flush();
    EXPECT_EQ(imagesOfNode(), std::pair(open, closed));
}

TEST_F(TreeViewControlTest, ShowsNodesBelowTheirParents) {
    const HTREEITEM games = Next(TVGN_ROOT);
    EXPECT_EQ(TextOf(games), "text of games");
    EXPECT_EQ(TextOf(Next(TVGN_CHILD, games)), "text of q3");
    const HTREEITEM filters = Next(TVGN_NEXT, games);
    EXPECT_EQ(TextOf(filters), "text of filters");
    EXPECT_EQ(TextOf(Next(TVGN_CHILD, filters)), "text of fltkey");
    EXPECT_TRUE(IsExpanded(games));
    EXPECT_FALSE(IsExpanded(filters));
}

TEST_F(TreeViewControlTest, ShowsBoldNodes) {
    const auto isBold = [&](HTREEITEM item) {
        return (SendMessageA(control.Handle(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_BOLD) &
                TVIS_BOLD) != 0;
    };
    const HTREEITEM games = Next(TVGN_ROOT);
    EXPECT_FALSE(isBold(games));
    for (const bool bold : {true, false}) {
        model.Node("games").bold = bold;
        control.Flush();
        EXPECT_EQ(isBold(games), bold);
    }
    model.Add({"oa", "OpenArena", "games", "", "", false, true});
    control.Flush();
    EXPECT_TRUE(isBold(Next(TVGN_NEXT, Next(TVGN_CHILD, games))));
}

TEST_F(TreeViewControlTest, ShowsAddedAndRemovedNodes) {
    Add("hl", "games");
    model.Remove("q3");
    control.Flush();
    const HTREEITEM games = Next(TVGN_ROOT);
    EXPECT_EQ(TextOf(Next(TVGN_CHILD, games)), "text of hl");
    EXPECT_EQ(Next(TVGN_NEXT, Next(TVGN_CHILD, games)), nullptr);
    EXPECT_TRUE(IsExpanded(games));
}

TEST_F(TreeViewControlTest, KeepsItsItemsWhenOnlyTextsChange) {
    const HTREEITEM games = Next(TVGN_ROOT);
    model.Node("games").text = "Spiele";
    control.Flush();
    EXPECT_EQ(Next(TVGN_ROOT), games);
    EXPECT_EQ(TextOf(games), "Spiele");
}

TEST_F(TreeViewControlTest, RunsNoHandlerForASelectionOfTheProgram) {
    model.Select("filters");
    control.Flush();
    EXPECT_EQ(TextOf(Next(TVGN_CARET)), "text of filters");
    EXPECT_EQ(clicked, Keys{});
    EXPECT_EQ(byKeyboard, Keys{});
}

TEST_F(TreeViewControlTest, KeepsTheSelectionThroughARebuildWithoutAHandler) {
    model.Select("q3");
    control.Flush();
    Add("hl", "games");
    control.Flush();
    EXPECT_EQ(TextOf(Next(TVGN_CARET)), "text of q3");
    EXPECT_EQ(model.SelectedKey(), "q3");
    EXPECT_EQ(clicked, Keys{});
    EXPECT_EQ(byKeyboard, Keys{});
}

TEST_F(TreeViewControlTest, ReportsASelectionByKeyboard) {
    model.Select("games");
    control.Flush();
    Press(VK_DOWN);
    EXPECT_EQ(byKeyboard, Keys{"q3"});
    EXPECT_EQ(model.SelectedKey(), "q3");
    EXPECT_EQ(clicked, Keys{});
}

TEST_F(TreeViewControlTest, SpaceAndEnterAreClicks) {
    model.Select("filters");
    control.Flush();
    Press(VK_SPACE);
    Press(VK_RETURN);
    EXPECT_EQ(clicked, (Keys{"filters", "filters"}));
}

TEST_F(TreeViewControlTest, ReportsAClickOnANodeEvenIfItIsSelected) {
    const LPARAM q3 = MiddleOf(Next(TVGN_CHILD, Next(TVGN_ROOT)));
    Click(WM_LBUTTONDOWN, WM_LBUTTONUP, q3);
    Click(WM_LBUTTONDOWN, WM_LBUTTONUP, q3);
    EXPECT_EQ(clicked, (Keys{"q3", "q3"}));
    EXPECT_EQ(model.SelectedKey(), "q3");
}

TEST_F(TreeViewControlTest, ReportsNoClickNextToTheNodesOrOnTheirButtons) {
    const LPARAM games = MiddleOf(Next(TVGN_ROOT));
    Click(WM_LBUTTONDOWN, WM_LBUTTONUP, MAKELPARAM(290, 390));
    Click(WM_LBUTTONDOWN, WM_LBUTTONUP, MAKELPARAM(8, HIWORD(games)));
    EXPECT_EQ(clicked, Keys{});
}

TEST_F(TreeViewControlTest, MarksTheSelectedNodeAlsoWithoutTheFocus) {
    model.Select("q3");
    control.Flush();
    const auto pixelsOf = [&](const char* key, COLORREF color) {
        ControlHost::RunPendingEvents();
        HTREEITEM item = Next(TVGN_ROOT);
        if (std::string(key) == "q3")
            item = Next(TVGN_CHILD, item);
        RECT bounds{};
        std::memcpy(&bounds, &item, sizeof item);
        SendMessageA(control.Handle(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&bounds));
        return PaintedPixels(control.Handle()).Count(bounds, color);
    };
    SetFocus(host.Handle());
    EXPECT_GT(pixelsOf("q3", ColorsOfUnfocusedSelection().ground), 100);
    EXPECT_EQ(pixelsOf("games", ColorsOfUnfocusedSelection().ground), 0);
    SetFocus(control.Handle());
    EXPECT_GT(pixelsOf("q3", GetSysColor(COLOR_HIGHLIGHT)), 100);
    SetFocus(host.Handle());
    EXPECT_GT(pixelsOf("q3", ColorsOfUnfocusedSelection().ground), 100);
}

// Without TVS_SHOWSELALWAYS the control draws no selection while another window has the focus.
TEST_F(TreeViewControlTest, HasLinesAndASelectionThatStays) {
    const LONG style = GetWindowLongA(control.Handle(), GWL_STYLE);
    for (const LONG wanted : {TVS_HASBUTTONS, TVS_HASLINES, TVS_LINESATROOT, TVS_SHOWSELALWAYS})
        EXPECT_NE(style & wanted, 0) << wanted;
}

TEST_F(TreeViewControlTest, SelectsTheNodeUnderTheRightButtonWithoutAClick) {
    std::string selectedThen;
    control.RightReleased = [&] { selectedThen = model.SelectedKey(); };
    Click(WM_RBUTTONDOWN, WM_RBUTTONUP, MiddleOf(Next(TVGN_CHILD, Next(TVGN_ROOT))));
    EXPECT_EQ(selectedThen, "q3");
    EXPECT_EQ(TextOf(Next(TVGN_CARET)), "text of q3");
    EXPECT_EQ(clicked, Keys{});
}

TEST_F(TreeViewControlTest, RemembersWhatTheUserExpandedAndCollapsed) {
    model.Select("filters");
    control.Flush();
    Press(VK_RIGHT);
    EXPECT_TRUE(model.Node("filters").expanded);
    Press(VK_LEFT);
    EXPECT_FALSE(model.Node("filters").expanded);
    EXPECT_FALSE(IsExpanded(Next(TVGN_CARET)));
}

TEST_F(TreeViewControlTest, ExpandsANodeThatGetsItsChildrenLater) {
    Add("favorites", "");
    model.Node("favorites").expanded = true;
    control.Flush();
    Add("fav1", "favorites");
    control.Flush();
    const HTREEITEM favorites = Next(TVGN_NEXT, Next(TVGN_NEXT, Next(TVGN_ROOT)));
    EXPECT_EQ(TextOf(favorites), "text of favorites");
    EXPECT_TRUE(IsExpanded(favorites));
}

} // namespace
} // namespace quarn
