#include "tests/win32/dialogs/FormsTest.h"

#include <commctrl.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace quarn {
namespace {

class OptionsDialogTest : public FormsTest {
  protected:
    static void ChooseTab(HWND dialog, int tab) {
        const HWND tabs = Item(dialog, ID_sstOptions);
        SendMessageA(tabs, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
        NMHDR change{tabs, ID_sstOptions, static_cast<UINT>(TCN_SELCHANGE)};
        SendMessageA(dialog, WM_NOTIFY, ID_sstOptions, reinterpret_cast<LPARAM>(&change));
    }
    static int ChosenNumber(HWND dialog) {
        return static_cast<int>(SendMessageA(Item(dialog, ID_cmbNumFavorites), CB_GETCURSEL, 0, 0));
    }
};

TEST_F(OptionsDialogTest, ShowsOnePageForEachTab) {
    Show(Options(), {[&](HWND dialog) {
             EXPECT_EQ(DialogDriver::TextOf(dialog), "Options");
             const int fields[] = {ID_chkMinToTray, ID_txtScanPingTimeout, ID_cmbNumFavorites};
             for (int tab = 0; tab < 3; ++tab) {
                 char caption[50] = "";
                 TCITEMA item{};
                 item.mask = TCIF_TEXT;
                 item.pszText = caption;
                 item.cchTextMax = sizeof caption;
                 SendMessageA(Item(dialog, ID_sstOptions), TCM_GETITEMA, static_cast<WPARAM>(tab),
                              reinterpret_cast<LPARAM>(&item));
                 const char* const captions[] = {"General", "Scanning", "Interface"};
                 EXPECT_STREQ(caption, captions[tab]);
                 ChooseTab(dialog, tab);
                 for (int page = 0; page < 3; ++page)
                     EXPECT_EQ(IsWindowVisible(Item(dialog, fields[page])) != FALSE, page == tab);
             }
             DialogDriver::Press(dialog, IDCANCEL);
         }});
    EXPECT_EQ(interfaceRefreshed, 1);
    EXPECT_EQ(treeRefreshed, 1);
}

TEST_F(OptionsDialogTest, KeysWithCtrlSwitchItsPages) {
    const auto hold = [](std::initializer_list<int> keys) {
        BYTE state[256]{};
        for (const int key : keys)
            state[key] = 0x80;
        SetKeyboardState(state);
    };
    struct Case {
        std::initializer_list<int> held;
        WPARAM key;
        int field; // that is visible then
    };
    Show(Options(), {[&](HWND dialog) {
             const auto press = [&](WPARAM key) {
                 MSG message{};
                 message.hwnd = GetFocus();
                 message.message = WM_KEYDOWN;
                 message.wParam = key;
                 message.lParam = 1;
                 EXPECT_TRUE(IsDialogMessageA(dialog, &message)); // as the dialog's own loop does
             };
             const Case cases[] = {{{VK_CONTROL}, VK_TAB, ID_txtScanPingTimeout},
                                   {{VK_CONTROL}, VK_TAB, ID_cmbNumFavorites},
                                   {{VK_CONTROL}, VK_TAB, ID_chkMinToTray},
                                   {{VK_CONTROL, VK_SHIFT}, VK_TAB, ID_cmbNumFavorites},
                                   {{VK_CONTROL}, VK_PRIOR, ID_txtScanPingTimeout},
                                   {{VK_CONTROL}, VK_NEXT, ID_cmbNumFavorites},
                                   {{VK_CONTROL}, VK_NEXT, ID_chkMinToTray}};
             for (const Case& c : cases) {
                 hold(c.held);
                 press(c.key);
                 EXPECT_TRUE(IsWindowVisible(Item(dialog, c.field))) << c.field;
                 EXPECT_EQ(GetFocus(), Item(dialog, ID_sstOptions));
             }
             hold({});
             press(VK_TAB); // alone it moves the focus
             EXPECT_EQ(GetFocus(), Item(dialog, ID_chkMinToTray));
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(OptionsDialogTest, LabelsItsFields) {
    Show(Options(), {[&](HWND dialog) {
             const struct {
                 int id;
                 const char* text;
             } labels[] = {{ID_fraGenWindow, "Window"},
                           {ID_chkMinToTray, "Minimize to system tray"},
                           {ID_chkKeepOnTop, "Keep window on top if not minimized"},
                           {ID_chkRemWinPos, "Remember last used window position"},
                           {ID_fraScanConnection, "Connection"},
                           {ID_lblScanPingTimeout, "Scan timeout:"},
                           {ID_lblScanPingUnit, "ms"},
                           {ID_fraStartOptions, "Action After Game Launch"},
                           {ID_optQuitAfterLaunch1, "Minimize Quarn to taskbar or system tray"},
                           {ID_optQuitAfterLaunch2, "Exit Quarn"},
                           {ID_optQuitAfterLaunch0, "No action"},
                           {ID_fraFavorites, "Favorites"},
                           {ID_lblFavNum, "Number of favorites folders:"},
                           {IDOK, "OK"},
                           {IDCANCEL, "Cancel"}};
             for (const auto& label : labels)
                 EXPECT_EQ(Text(dialog, label.id), label.text);
             RECT first, second, third;
             GetWindowRect(Item(dialog, ID_optQuitAfterLaunch1), &first);
             GetWindowRect(Item(dialog, ID_optQuitAfterLaunch2), &second);
             GetWindowRect(Item(dialog, ID_optQuitAfterLaunch0), &third);
             EXPECT_LT(first.top, second.top);
             EXPECT_LT(second.top, third.top);
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(OptionsDialogTest, TheTabKeyVisitsThePageInFront) {
    Show(Options(), {[&](HWND dialog) {
             EXPECT_EQ(TabOrder(dialog), (std::vector<int>{ID_sstOptions, ID_chkMinToTray, ID_chkKeepOnTop,
                                                           ID_chkRemWinPos, IDOK, IDCANCEL}));
             ChooseTab(dialog, 1);
             EXPECT_EQ(TabOrder(dialog),
                       (std::vector<int>{ID_sstOptions, ID_txtScanPingTimeout, IDOK, IDCANCEL}));
             ChooseTab(dialog, 2);
             EXPECT_EQ(TabOrder(dialog), (std::vector<int>{ID_sstOptions, ID_optQuitAfterLaunch0,
                                                           ID_cmbNumFavorites, IDOK, IDCANCEL}));
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(OptionsDialogTest, ShowsAndStoresEverySetting) {
    program.MinToTray = 0;
    program.KeepOnTop = 1;
    program.RemWinPos = 0;
    program.PingTimeout = -77;
    program.QuitAfterStart = 2;
    program.FavoritesNumber = 9;
    Show(Options(), {[&](HWND dialog) {
             EXPECT_FALSE(IsChecked(dialog, ID_chkMinToTray));
             EXPECT_TRUE(IsChecked(dialog, ID_chkKeepOnTop));
             EXPECT_FALSE(IsChecked(dialog, ID_chkRemWinPos));
             EXPECT_EQ(Text(dialog, ID_txtScanPingTimeout), "-77");
             EXPECT_TRUE(IsChecked(dialog, ID_optQuitAfterLaunch2));
             EXPECT_EQ(ChosenNumber(dialog), 8);
             EXPECT_EQ(Text(dialog, ID_cmbNumFavorites), "9");
             EXPECT_EQ(SendMessageA(Item(dialog, ID_cmbNumFavorites), CB_GETCOUNT, 0, 0), 9);
             Click(dialog, ID_chkMinToTray);
             Click(dialog, ID_chkKeepOnTop);
             Click(dialog, ID_chkRemWinPos);
             Type(dialog, ID_txtScanPingTimeout, "350");
             Click(dialog, ID_optQuitAfterLaunch0);
             SendMessageA(Item(dialog, ID_cmbNumFavorites), CB_SETCURSEL, 0, 0);
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.MinToTray, 1);
    EXPECT_EQ(program.KeepOnTop, 0);
    EXPECT_EQ(program.RemWinPos, 1);
    EXPECT_EQ(program.PingTimeout, 350);
    EXPECT_EQ(program.QuitAfterStart, 0);
    EXPECT_EQ(program.FavoritesNumber, 1);
}

TEST_F(OptionsDialogTest, ChoosesNothingForSettingsOutOfRange) {
    program.QuitAfterStart = 77;
    program.FavoritesNumber = -3;
    Show(Options(), {[&](HWND dialog) {
             for (int option = 0; option < 3; ++option)
                 EXPECT_FALSE(IsChecked(dialog, ID_optQuitAfterLaunch + option));
             EXPECT_EQ(ChosenNumber(dialog), CB_ERR);
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.QuitAfterStart, 77);
}

TEST_F(OptionsDialogTest, ShowsAWrongTimeOutAgain) {
    Show(Options(), {[&](HWND dialog) {
                         Type(dialog, ID_txtScanPingTimeout, "soon");
                         DialogDriver::Press(dialog, IDOK);
                     },
                     [&](HWND box) { DialogDriver::Press(box, IDOK); },
                     [&](HWND dialog) {
                         const HWND field = Item(dialog, ID_txtScanPingTimeout);
                         EXPECT_EQ(GetFocus(), field);
                         DWORD from = 1, to = 0;
                         SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                                      reinterpret_cast<LPARAM>(&to));
                         EXPECT_EQ(from, 0U);
                         EXPECT_EQ(to, 4U);
                         EXPECT_TRUE(IsWindowVisible(field));
                         DialogDriver::PressKey(field, VK_ESCAPE);
                     }});
    EXPECT_EQ(program.PingTimeout, 1000);
}

TEST_F(OptionsDialogTest, EnterInAFieldIsOk) {
    Show(Options(), {[&](HWND dialog) {
             ChooseTab(dialog, 1);
             Type(dialog, ID_txtScanPingTimeout, "5");
             DialogDriver::PressKey(Item(dialog, ID_txtScanPingTimeout), VK_RETURN);
         }});
    EXPECT_EQ(program.PingTimeout, 5);
}

} // namespace
} // namespace quarn
