// Rules for every dialog.

#include "tests/win32/dialogs/FormsTest.h"

#include <cctype>
#include <commctrl.h>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quarn {
namespace {

class EveryDialogTest : public FormsTest {
  protected:
    using Inspect = std::function<void(HWND dialog)>;

    // Shows one dialog after the other to the inspector, and cancels each.
    void ForEveryDialog(const Inspect& inspect, bool topMost = false) {
        const DialogDriver::Step step = [&](HWND dialog) {
            inspect(dialog);
            SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        };
        Show(About(), {step}, topMost);
        Show(AddServer(), {step}, topMost);
        Show(GameSetup(), {step}, topMost);
        Show(Options(), {step}, topMost);
        Show(Password(), {step}, topMost);
    }

    static std::string ClassOf(HWND window) {
        char name[100] = "";
        GetClassNameA(window, name, sizeof name);
        return name;
    }
    static bool IsPage(HWND window) {
        return (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0;
    }
    static bool IsFrame(HWND window) {
        return ClassOf(window) == "Button" &&
               (GetWindowLongPtrA(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    }
    static bool IsTabs(HWND window) { return ClassOf(window) == WC_TABCONTROLA; }

    // The text of an icon control is the icon's name and is not shown.
    static bool ShowsItsText(HWND control) {
        const bool isIcon = (GetWindowLongPtrA(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
        return ClassOf(control) == "Button" || (ClassOf(control) == "Static" && !isIcon);
    }

    // The controls on the dialog or page itself.
    static std::vector<HWND> ControlsOn(HWND parent) {
        std::vector<HWND> controls;
        for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT))
            if (!IsPage(child))
                controls.push_back(child);
        return controls;
    }
    static std::vector<HWND> DialogAndPages(HWND dialog) {
        std::vector<HWND> all = {dialog};
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT))
            if (IsPage(child))
                all.push_back(child);
        return all;
    }
    static RECT PlaceOf(HWND control) {
        RECT place{};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    // Width of a caption on one line, without the mark of its access key.
    static SIZE TextSize(HWND control) {
        std::string text = DialogDriver::TextOf(control);
        std::erase(text, '&');
        const HDC dc = GetDC(control);
        const HGDIOBJ before =
            SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
        SelectObject(dc, before);
        ReleaseDC(control, dc);
        return size;
    }
};

TEST_F(EveryDialogTest, IsOwnedByTheMainWindowAndCentredOnIt) {
    for (const bool topMost : {false, true})
        ForEveryDialog(
            [&](HWND dialog) {
                EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner.Handle());
                EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
                RECT over, own;
                GetWindowRect(owner.Handle(), &over);
                GetWindowRect(dialog, &own);
                EXPECT_LE(std::abs((over.left + over.right) - (own.left + own.right)), 2);
                EXPECT_LE(std::abs((over.top + over.bottom) - (own.top + own.bottom)), 2);
            },
            topMost);
}

TEST_F(EveryDialogTest, HasTheIconsOfItsOwner) {
    const HICON big = LoadIconA(nullptr, MAKEINTRESOURCEA(32516));
    const HICON small = LoadIconA(nullptr, MAKEINTRESOURCEA(32515));
    SetClassLongPtrA(owner.Handle(), GCLP_HICON, reinterpret_cast<LONG_PTR>(big));
    SetClassLongPtrA(owner.Handle(), GCLP_HICONSM, reinterpret_cast<LONG_PTR>(small));
    ForEveryDialog([&](HWND dialog) {
        EXPECT_EQ(SendMessageA(dialog, WM_GETICON, ICON_BIG, 0), reinterpret_cast<LRESULT>(big));
        EXPECT_EQ(SendMessageA(dialog, WM_GETICON, ICON_SMALL, 0), reinterpret_cast<LRESULT>(small));
    });
}

TEST_F(EveryDialogTest, IsTopMostOnlyWhenAskedTo) {
    for (const bool topMost : {false, true})
        ForEveryDialog(
            [&](HWND dialog) {
                EXPECT_EQ((GetWindowLongPtrA(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, topMost);
            },
            topMost);
}

TEST_F(EveryDialogTest, HasADefaultButton) {
    ForEveryDialog([](HWND dialog) {
        EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(IDOK, DC_HASDEFID));
    });
}

TEST_F(EveryDialogTest, TruncatesNoCaption) {
    ForEveryDialog([&](HWND dialog) {
        for (const HWND surface : DialogAndPages(dialog))
            for (const HWND control : ControlsOn(surface)) {
                if (!ShowsItsText(control))
                    continue;
                const RECT place = PlaceOf(control);
                const SIZE text = TextSize(control);
                EXPECT_LE(text.cx, place.right - place.left) << DialogDriver::TextOf(control);
                const LONG height = text.cx > 0 ? text.cy : 0;
                EXPECT_LE(height, place.bottom - place.top + 1) << DialogDriver::TextOf(control);
            }
    });
}

// The arrows that change the number in a field lie at the field's edge.
bool IsBuddyOf(HWND arrows, HWND field) {
    return reinterpret_cast<HWND>(SendMessageA(arrows, UDM_GETBUDDY, 0, 0)) == field;
}

TEST_F(EveryDialogTest, HasEveryControlInsideAndNoneOverlapping) {
    ForEveryDialog([&](HWND dialog) {
        for (const HWND surface : DialogAndPages(dialog)) {
            RECT room{};
            GetClientRect(surface, &room);
            const std::vector<HWND> controls = ControlsOn(surface);
            for (std::size_t i = 0; i < controls.size(); ++i) {
                const RECT place = PlaceOf(controls[i]);
                const int id = GetDlgCtrlID(controls[i]);
                EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= room.right &&
                            place.bottom <= room.bottom)
                    << id;
                for (std::size_t j = i + 1; j < controls.size(); ++j) {
                    if (IsFrame(controls[i]) || IsFrame(controls[j]) || IsTabs(controls[i]) ||
                        IsTabs(controls[j]) || IsBuddyOf(controls[j], controls[i]))
                        continue;
                    RECT common;
                    const RECT other = PlaceOf(controls[j]);
                    EXPECT_FALSE(IntersectRect(&common, &place, &other))
                        << id << " and " << GetDlgCtrlID(controls[j]);
                }
            }
        }
    });
}

TEST_F(EveryDialogTest, UsesEachAccessKeyOnce) {
    ForEveryDialog([&](HWND dialog) {
        std::set<int> keys;
        for (const HWND surface : DialogAndPages(dialog))
            for (const HWND control : ControlsOn(surface)) {
                const std::string kind = ClassOf(control);
                const std::string caption = DialogDriver::TextOf(control);
                const std::size_t mark = caption.find('&');
                const bool hasKeys =
                    kind == "Button" ||
                    (kind == "Static" && (GetWindowLongPtrA(control, GWL_STYLE) & SS_NOPREFIX) == 0);
                if (hasKeys && mark != std::string::npos && mark + 1 < caption.size()) {
                    EXPECT_TRUE(keys.insert(std::toupper(caption[mark + 1])).second) << caption;
                }
            }
    });
}

TEST_F(EveryDialogTest, ExplainsItsFieldsInTooltips) {
    std::map<int, std::string> shown;
    ForEveryDialog([&](HWND dialog) {
        // Tooltip windows are top-level ones that the dialog, or a page of it, owns.
        std::vector<HWND> tips;
        for (HWND window = nullptr;
             (window = FindWindowExA(nullptr, window, TOOLTIPS_CLASSA, nullptr)) != nullptr;)
            if (GetAncestor(GetWindow(window, GW_OWNER), GA_ROOT) == dialog)
                tips.push_back(window);
        for (const HWND tip : tips)
            for (UINT index = 0; index < static_cast<UINT>(SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0));
                 ++index) {
                char text[200] = "";
                TOOLINFOA tool{};
                tool.cbSize = TTTOOLINFOA_V1_SIZE;
                tool.lpszText = text;
                SendMessageA(tip, TTM_ENUMTOOLSA, index, reinterpret_cast<LPARAM>(&tool));
                SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
                shown[GetDlgCtrlID(reinterpret_cast<HWND>(tool.uId))] = text;
            }
    });
    const std::map<int, std::string> expected = {
        {ID_txtPath, "Path to local game executable"},
        {ID_txtConfig, "Specific config file to be used for the game"},
        {ID_txtName, "Player name to be used for the game"},
        {ID_chkVisible, "Show in game list, even if no executable was found"},
        {ID_txtScanPingTimeout, "Maximum waiting time for a server reply"},
        {ID_txtSimultaneous, "How many servers a scan asks at the same time, 1 to 64"},
        {ID_chkAskMasterFirst, "Renew replaces the list when the master server sends the first addresses"},
        {ID_chkListOnce, "An address that is in the list is not added again"},
        {ID_chkSaveListAtExit, "Without this, a list is saved only when you show another one"},
        {ID_chkNaturalSort, "Players: by players, then by maximum. Last Visit: never visited comes first"},
        {ID_chkKeepSorted, "Servers take their place when they are added or a scan has updated them"},
        {ID_chkShowAtStart, "Also if it was minimized when Quarn ended"},
        {ID_chkSearchBox, "Finds a text in name, map, game, address and players of the servers (Ctrl+F)"},
        {ID_chkAskPassword, "Joining a locked server asks for the password if none was entered"}};
    EXPECT_EQ(shown, expected);
}

TEST_F(EveryDialogTest, CanBeShownAgainAndAgain) {
    for (int round = 0; round < 10; ++round)
        ForEveryDialog([](HWND) {});
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

} // namespace
} // namespace quarn
