#include "tests/win32/dialogs/FormsTest.h"

#include <algorithm>
#include <cctype>
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
             const int fields[] = {ID_chkMinToTray, ID_txtScanPingTimeout, ID_cmbNumFavorites,
                                   ID_txtSimultaneous};
             for (int tab = 0; tab < 4; ++tab) {
                 char caption[50] = "";
                 TCITEMA item{};
                 item.mask = TCIF_TEXT;
                 item.pszText = caption;
                 item.cchTextMax = sizeof caption;
                 SendMessageA(Item(dialog, ID_sstOptions), TCM_GETITEMA, static_cast<WPARAM>(tab),
                              reinterpret_cast<LPARAM>(&item));
                 const char* const captions[] = {"General", "Scanning", "Interface", "Extras"};
                 EXPECT_STREQ(caption, captions[tab]);
                 ChooseTab(dialog, tab);
                 for (int page = 0; page < 4; ++page)
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
                                   {{VK_CONTROL}, VK_TAB, ID_txtSimultaneous},
                                   {{VK_CONTROL}, VK_TAB, ID_chkMinToTray},
                                   {{VK_CONTROL, VK_SHIFT}, VK_TAB, ID_txtSimultaneous},
                                   {{VK_CONTROL}, VK_PRIOR, ID_cmbNumFavorites},
                                   {{VK_CONTROL}, VK_PRIOR, ID_txtScanPingTimeout},
                                   {{VK_CONTROL}, VK_NEXT, ID_cmbNumFavorites},
                                   {{VK_CONTROL}, VK_NEXT, ID_txtSimultaneous},
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
                           {ID_fraExtrasScanning, "Scanning"},
                           {ID_lblSimultaneous, "Servers &asked at once:"},
                           {ID_lblOneByOne, "1: one after the other"},
                           {ID_chkAskMasterFirst, "Keep the list &until the master answers"},
                           {ID_chkListOnce, "List each server &once"},
                           {ID_fraExtrasList, "List"},
                           {ID_chkSaveListAtExit, "&Save the list on show at the end"},
                           {ID_chkNaturalSort, "Sort players by &number and never-visited servers first"},
                           {ID_chkKeepSorted, "&Keep the list sorted"},
                           {ID_fraExtrasWindow, "Window"},
                           {ID_chkShowAtStart, "Show the &window at every start"},
                           {ID_chkSearchBox, "Search &box"},
                           {ID_chkAskPassword, "Ask for &passwords"},
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
             ChooseTab(dialog, 3);
             EXPECT_EQ(
                 TabOrder(dialog),
                 (std::vector<int>{ID_sstOptions, ID_txtSimultaneous, ID_chkAskMasterFirst, ID_chkListOnce,
                                   ID_chkSaveListAtExit, ID_chkNaturalSort, ID_chkKeepSorted,
                                   ID_chkShowAtStart, ID_chkSearchBox, ID_chkAskPassword, IDOK, IDCANCEL}));
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

// The letter behind the "&" of each caption on the page.
TEST_F(OptionsDialogTest, ExtrasHaveAnAccessKeyEach) {
    Show(Options(), {[&](HWND dialog) {
             std::string keys;
             for (int id = ID_fraExtrasScanning; id <= ID_chkAskPassword; ++id) {
                 const std::string text = Text(dialog, id);
                 const std::size_t mark = text.find('&');
                 if (mark != std::string::npos)
                     keys += static_cast<char>(std::tolower(text.at(mark + 1)));
             }
             std::sort(keys.begin(), keys.end());
             EXPECT_EQ(keys, "abknopsuw");
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(OptionsDialogTest, ShowsAndStoresEveryExtra) {
    const struct {
        int box;
        std::int32_t ProgramState::*setting;
    } extras[] = {
        {ID_chkAskMasterFirst, &ProgramState::AskMasterFirst},
        {ID_chkListOnce, &ProgramState::ListOnce},
        {ID_chkSaveListAtExit, &ProgramState::SaveListAtExit},
        {ID_chkNaturalSort, &ProgramState::NaturalSort},
        {ID_chkKeepSorted, &ProgramState::KeepSorted},
        {ID_chkShowAtStart, &ProgramState::ShowAtStart},
        {ID_chkSearchBox, &ProgramState::SearchBox},
        {ID_chkAskPassword, &ProgramState::AskPassword},
    };
    for (const auto& extra : extras) {
        Show(Options(), {[&](HWND dialog) {
                 EXPECT_FALSE(IsChecked(dialog, extra.box)) << extra.box;
                 Click(dialog, extra.box);
                 DialogDriver::Press(dialog, IDOK);
             }});
        for (const auto& other : extras)
            EXPECT_EQ(program.*other.setting, other.box == extra.box ? 1 : 0) << extra.box << other.box;
        Show(Options(), {[&](HWND dialog) {
                 EXPECT_TRUE(IsChecked(dialog, extra.box)) << extra.box;
                 Click(dialog, extra.box);
                 DialogDriver::Press(dialog, IDOK);
             }});
        EXPECT_EQ(program.*extra.setting, 0);
    }
}

TEST_F(OptionsDialogTest, ArrowsChangeTheNumberAskedAtOnce) {
    program.Simultaneous = 63;
    Show(Options(), {[&](HWND dialog) {
             ChooseTab(dialog, 3);
             const HWND field = Item(dialog, ID_txtSimultaneous);
             const auto press = [&](WPARAM key) { SendMessageA(field, WM_KEYDOWN, key, 1); };
             EXPECT_EQ(Text(dialog, ID_txtSimultaneous), "63");
             press(VK_UP);
             EXPECT_EQ(Text(dialog, ID_txtSimultaneous), "64");
             press(VK_UP);
             EXPECT_EQ(Text(dialog, ID_txtSimultaneous), "64");
             Type(dialog, ID_txtSimultaneous, "2");
             press(VK_DOWN);
             press(VK_DOWN);
             EXPECT_EQ(Text(dialog, ID_txtSimultaneous), "1");
             press(VK_UP);
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.Simultaneous, 2);
}

TEST_F(OptionsDialogTest, ShowsAWrongNumberAskedAtOnceAgain) {
    Show(Options(), {[&](HWND dialog) {
                         Type(dialog, ID_txtSimultaneous, "many");
                         DialogDriver::Press(dialog, IDOK);
                     },
                     [&](HWND box) { DialogDriver::Press(box, IDOK); },
                     [&](HWND dialog) {
                         EXPECT_EQ(GetFocus(), Item(dialog, ID_txtSimultaneous));
                         EXPECT_TRUE(IsWindowVisible(Item(dialog, ID_txtSimultaneous)));
                         Type(dialog, ID_txtSimultaneous, "500");
                         DialogDriver::Press(dialog, IDOK);
                     }});
    EXPECT_EQ(program.Simultaneous, 64);
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
