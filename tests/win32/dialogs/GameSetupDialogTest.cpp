#include "tests/win32/dialogs/FormsTest.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/desktop/FilesWin.h"

#include <algorithm>
#include <commctrl.h>
#include <shlobj.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

class GameSetupDialogTest : public FormsTest {
  protected:
    static std::string GameText(HWND dialog, int index) {
        char text[100] = "";
        LVITEMA item{};
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(Item(dialog, ID_lvwGameSel), LVM_GETITEMTEXTA, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }
    static void Select(HWND dialog, int index, bool selected = true) {
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = selected ? item.stateMask : 0;
        SendMessageA(Item(dialog, ID_lvwGameSel), LVM_SETITEMSTATE, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&item));
    }
    // The game's row has the image of a game that is set up. Every game has an image, or the names would not
    // line up.
    static bool IsMarked(HWND dialog, int index) {
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = index;
        SendMessageA(Item(dialog, ID_lvwGameSel), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_NE(item.iImage, I_IMAGENONE);
        return item.iImage == 0;
    }
    static int FirstGameThatIs(HWND dialog, LPARAM state) {
        return static_cast<int>(
            SendMessageA(Item(dialog, ID_lvwGameSel), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), state));
    }
    static int Selected(HWND dialog) { return FirstGameThatIs(dialog, LVNI_SELECTED); }
};

TEST_F(GameSetupDialogTest, ShowsTheGamesAndTheFirstOnesSetup) {
    program.GamePath[1] = "C:\\Games\\Arena\\";
    program.GameConfig[1] = "a&b.cfg";
    program.GamePlayerName[1] = "Pl\xe4yer \"1\"";
    program.GameVisible[1] = 1;
    Show(GameSetup(), {[&](HWND dialog) {
             EXPECT_EQ(DialogDriver::TextOf(dialog), "Game Setup");
             EXPECT_EQ(GameText(dialog, 0), "Arena");
             EXPECT_EQ(GameText(dialog, 1), "Crow && bar");
             EXPECT_EQ(Selected(dialog), 0);
             EXPECT_EQ(FirstGameThatIs(dialog, LVNI_FOCUSED), 0);
             EXPECT_EQ(Text(dialog, ID_txtPath), "C:\\Games\\Arena\\");
             EXPECT_EQ(Text(dialog, ID_txtConfig), "a&b.cfg");
             EXPECT_EQ(Text(dialog, ID_txtName), "Pl\xe4yer \"1\"");
             EXPECT_TRUE(IsChecked(dialog, ID_chkVisible));
             EXPECT_EQ(Text(dialog, ID_lblDefinition), "Test & more");
             EXPECT_EQ(Text(dialog, ID_lblDefVersion), "1.05.0012");
             DialogDriver::Press(dialog, IDCANCEL);
         }});
    EXPECT_EQ(treeRefreshed, 1);
}

TEST_F(GameSetupDialogTest, MarksTheGamesThatAreSetUpAndBeginsWithTheOneAskedFor) {
    program.GamePath[1] = "C:\\Games\\Arena\\";
    frmGamSetup form(
        program, desktop.Interfaces(), [] {}, [this] { forms.Unload(); }, "cb");
    Show(form, {[&](HWND dialog) {
             EXPECT_EQ(Selected(dialog), 1);
             EXPECT_TRUE(IsMarked(dialog, 0));
             EXPECT_FALSE(IsMarked(dialog, 1));
             Type(dialog, ID_txtPath, "D:\\Crow");
             EXPECT_TRUE(IsMarked(dialog, 1));
             Type(dialog, ID_txtPath, "");
             EXPECT_FALSE(IsMarked(dialog, 1));
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(GameSetupDialogTest, LabelsItsFields) {
    Show(GameSetup(), {[&](HWND dialog) {
             const struct {
                 int id;
                 const char* text;
             } labels[] = {{ID_fraLocation, "Location"},
                           {ID_lblPath, "Path:"},
                           {ID_fraSettings, "Settings"},
                           {ID_lblConfig, "Config file:"},
                           {ID_lblName, "Name:"},
                           {ID_chkVisible, "&Visible in filter list"},
                           {ID_lblDefinDescr, "Game definitions:"},
                           {ID_lblDefinVerDescr, "Definition version:"},
                           {IDOK, "OK"},
                           {IDCANCEL, "Cancel"}};
             for (const auto& label : labels)
                 EXPECT_EQ(Text(dialog, label.id), label.text);
             EXPECT_EQ(TabOrder(dialog),
                       (std::vector<int>{ID_lvwGameSel, ID_txtPath, ID_cmdBrowse, ID_txtConfig, ID_txtName,
                                         ID_chkVisible, IDOK, IDCANCEL}));
             DialogDriver::Press(dialog, IDCANCEL);
         }});
}

TEST_F(GameSetupDialogTest, KeepsTheInputForEachGame) {
    const std::string longPath = "C:\\" + std::string(10'000, 'p');
    Show(GameSetup(), {[&](HWND dialog) {
             Type(dialog, ID_txtPath, longPath);
             Type(dialog, ID_txtConfig, "first.cfg");
             Select(dialog, 1);
             EXPECT_EQ(Text(dialog, ID_txtPath), "");
             EXPECT_FALSE(IsChecked(dialog, ID_chkVisible));
             Type(dialog, ID_txtName, "\xff second");
             Click(dialog, ID_chkVisible);
             Select(dialog, 0);
             EXPECT_EQ(Text(dialog, ID_txtPath), longPath);
             EXPECT_FALSE(IsChecked(dialog, ID_chkVisible));
             EXPECT_EQ(program.GamePath[1], "") << "nothing is in force yet";
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.GamePath[1], longPath);
    EXPECT_EQ(program.GameConfig[1], "first.cfg");
    EXPECT_EQ(program.GamePlayerName[2], "\xff second");
    EXPECT_EQ(program.GameVisible[1], 0);
    EXPECT_EQ(program.GameVisible[2], 1);
    EXPECT_EQ(treeRefreshed, 1);
}

TEST_F(GameSetupDialogTest, HidesAGameThatIsUnchecked) {
    program.GameVisible[1] = 1;
    Show(GameSetup(), {[&](HWND dialog) {
             Click(dialog, ID_chkVisible);
             EXPECT_FALSE(IsChecked(dialog, ID_chkVisible));
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.GameVisible[1], 0);
}

TEST_F(GameSetupDialogTest, AlwaysHasAGameSelected) {
    Show(GameSetup(), {[&](HWND dialog) {
             Select(dialog, 1);
             Select(dialog, 1, false); // as a click next to the games does first
             NMITEMACTIVATE click{};
             click.hdr = {Item(dialog, ID_lvwGameSel), ID_lvwGameSel, static_cast<UINT>(NM_CLICK)};
             click.iItem = -1;
             SendMessageA(dialog, WM_NOTIFY, ID_lvwGameSel, reinterpret_cast<LPARAM>(&click));
             EXPECT_EQ(Selected(dialog), 1);
             Type(dialog, ID_txtPath, "D:\\");
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.GamePath[2], "D:\\");
}

TEST_F(GameSetupDialogTest, EscapeAndTheCloseButtonChangeNothing) {
    program.GamePath[1] = "C:\\";
    Show(GameSetup(), {[&](HWND dialog) {
             Type(dialog, ID_txtPath, "D:\\");
             DialogDriver::PressKey(Item(dialog, ID_txtPath), VK_ESCAPE);
         }});
    Show(GameSetup(), {[&](HWND dialog) {
             Type(dialog, ID_txtPath, "D:\\");
             PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
         }});
    EXPECT_EQ(program.GamePath[1], "C:\\");
    EXPECT_EQ(treeRefreshed, 2);
}

TEST_F(GameSetupDialogTest, WithoutGamesItsFieldsAreDisabled) {
    DefineGames({});
    Show(GameSetup(), {[&](HWND dialog) {
             for (const int field : {ID_txtPath, ID_cmdBrowse, ID_txtConfig, ID_txtName, ID_chkVisible})
                 EXPECT_FALSE(IsWindowEnabled(Item(dialog, field))) << field;
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

// The folder that is chosen in the folder browser, which the test answers in its place.
std::string chosenFolder;

ITEMIDLIST* WINAPI ChooseFolder(BROWSEINFOA*) {
    return static_cast<ITEMIDLIST*>(CoTaskMemAlloc(sizeof(ITEMIDLIST)));
}

BOOL WINAPI PathOfFolder(const ITEMIDLIST*, char* path) {
    std::copy_n(chosenFolder.c_str(), chosenFolder.size() + 1, path);
    return TRUE;
}

TEST_F(GameSetupDialogTest, ShowsTheFolderInWhichTheGameWasFound) {
    const ReplacedImport browse(&SHBrowseForFolderA, &ChooseFolder);
    const ReplacedImport toPath(&SHGetPathFromIDListA, &PathOfFolder);
    chosenFolder = folder.Path();
    FilesWin().Write(folder / "ar.exe", "");
    program.GameVisible[1] = 0;
    Show(GameSetup(), {[&](HWND dialog) {
             EXPECT_EQ(Text(dialog, ID_txtPath), "");
             EXPECT_FALSE(IsMarked(dialog, 0));
             Click(dialog, ID_cmdBrowse);
             EXPECT_EQ(Text(dialog, ID_txtPath), folder.Path() + "\\");
             EXPECT_TRUE(IsChecked(dialog, ID_chkVisible));
             EXPECT_TRUE(IsMarked(dialog, 0));
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.GamePath[1], folder.Path() + "\\");
    EXPECT_EQ(program.GameVisible[1], 1);
}

TEST_F(GameSetupDialogTest, ACancelledBrowserClearsThePathButNotItsField) {
    program.GamePath[1] = "C:\\Games";
    Show(GameSetup(), {[&](HWND dialog) { DialogDriver::Press(dialog, ID_cmdBrowse); },
                       [&](HWND browser) { DialogDriver::Press(browser, IDCANCEL); },
                       [&](HWND box) {
                           EXPECT_EQ(DialogDriver::TextOf(box), "Quarn - Error");
                           DialogDriver::Press(box, IDOK);
                       },
                       [&](HWND dialog) {
                           EXPECT_EQ(Text(dialog, ID_txtPath), "C:\\Games");
                           DialogDriver::Press(dialog, IDOK);
                       }});
    EXPECT_EQ(program.GamePath[1], "");
}

} // namespace
} // namespace quarn
