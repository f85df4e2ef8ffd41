#include "win32/Handles.h"
#include "win32/resources/ids.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quarn {
namespace {

// One line an entry: its level as blanks, its number, its caption; "-" for a separator.
void Describe(HMENU menu, const std::string& level, std::vector<std::string>& lines) {
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        char caption[100] = "";
        MENUITEMINFOA item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
        item.dwTypeData = caption;
        item.cch = sizeof caption;
        GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &item);
        const bool separator = (item.fType & MFT_SEPARATOR) != 0;
        lines.push_back(level + std::to_string(item.wID) + " " + (separator ? "-" : caption));
        if (item.hSubMenu != nullptr)
            Describe(item.hSubMenu, level + "  ", lines);
    }
}

std::vector<std::string> MenuOf(int resource) {
    const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource));
    std::vector<std::string> lines;
    Describe(menu, "", lines);
    DestroyMenu(menu);
    return lines;
}

std::string Entry(const char* level, int id, const char* caption) {
    return level + std::to_string(id) + " " + caption;
}

// What a double click does is bold.
TEST(MenuResourceTest, MarksTheDefaultEntries) {
    const auto defaultOf = [](int resource, int popUp) {
        const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource));
        MENUITEMINFOA item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_SUBMENU;
        GetMenuItemInfoA(menu, static_cast<UINT>(popUp), FALSE, &item);
        const UINT entry = GetMenuDefaultItem(item.hSubMenu, FALSE, 0);
        DestroyMenu(menu);
        return static_cast<int>(entry);
    };
    EXPECT_EQ(defaultOf(IDR_MAIN_MENU, ID_mnuServer), ID_mnuServConnectPlay);
    EXPECT_EQ(defaultOf(IDR_POPUP_MENUS, ID_mnuSysTray), ID_mnuSysOpen);
    EXPECT_EQ(defaultOf(IDR_POPUP_MENUS, ID_mnuTreeView), -1);
}

TEST(MenuResourceTest, ContainsTheMenuBar) {
    std::vector<std::string> expected = {
        Entry("", ID_mnuFile, "&File"),
        Entry("  ", ID_mnuFileQuit, "&Quit"),
        Entry("", ID_mnuServer, "&Server"),
        Entry("  ", ID_mnuServConnectPlay, "Connect as &player\tEnter"),
        Entry("  ", ID_mnuServConnectSpec, "Connect as &spectator"),
        Entry("  ", ID_mnuServSeperator1, "-"),
        Entry("  ", ID_mnuServSetPass, "Enter password..."),
        Entry("  ", ID_mnuServSeperator2, "-"),
        Entry("  ", ID_mnuServRefresh, "&Refresh server\tCtrl+F5"),
        Entry("  ", ID_mnuServRefreshAll, "Refresh &all\tF5"),
        Entry("  ", ID_mnuServSeperator3, "-"),
        Entry("  ", ID_mnuServAdd, "Add server..."),
        Entry("  ", ID_mnuServDelete, "Delete server\tDel"),
        Entry("  ", ID_mnuServSeperator4, "-"),
        Entry("  ", ID_mnuServFavoritesAdd, "&Add to Favorites"),
    };
    for (int folder = 1; folder <= 9; ++folder)
        expected.push_back(Entry("    ", ID_mnuServAddToFavorites + folder, "fav"));
    for (const std::string& entry : {
             Entry("  ", ID_mnuServMonitor, "&Monitor with Velmar"),
             Entry("  ", ID_mnuServSeperator5, "-"),
             Entry("  ", ID_mnuServCopyAddress, "Copy address\tCtrl+C"),
             Entry("", ID_mnuServerList, "&Server list"),
             Entry("  ", ID_mnuServerListGet, "Renew\tCtrl+R"),
             Entry("  ", ID_mnuServerListClear, "Clear"),
             Entry("  ", ID_mnuServerListSeperator1, "-"),
             Entry("  ", ID_mnuRecheckCountries, "Recheck Countries"),
             Entry("  ", ID_mnuServerListSeperator2, "-"),
             Entry("  ", ID_mnuServerListExport, "E&xport..."),
             Entry("", ID_mnuExtras, "E&xtras"),
             Entry("  ", ID_mnuExtrasGameSetup, "&Game Setup..."),
             Entry("  ", ID_mnuExtrasSeperator, "-"),
             Entry("  ", ID_mnuExtrasOptions, "&Options..."),
             Entry("", ID_mnuInfo, "&?"),
             Entry("  ", ID_mnuInfoHelp, "&Help...\tF1"),
             Entry("  ", ID_mnuInfoSeperator, "-"),
             Entry("  ", ID_mnuInfoAbout, "&About..."),
         })
        expected.push_back(entry);
    EXPECT_EQ(MenuOf(IDR_MAIN_MENU), expected);
}

TEST(MenuResourceTest, ContainsThePopUpMenusOfTrayAndTree) {
    EXPECT_EQ(MenuOf(IDR_POPUP_MENUS), (std::vector<std::string>{
                                           Entry("", ID_mnuSysTray, "SysTray"),
                                           Entry("  ", ID_mnuSysOpen, "Open"),
                                           Entry("  ", ID_mnuSysSeperator1, "-"),
                                           Entry("  ", ID_mnuSysQuit, "Quit"),
                                           Entry("", ID_mnuTreeView, "TreeView"),
                                           Entry("  ", ID_mnuTreeRename, "Rename...\tF2"),
                                           Entry("  ", ID_mnuTreeSeperator1, "-"),
                                           Entry("  ", ID_mnuTreeAddServer, "Add server..."),
                                       }));
}

} // namespace
} // namespace quarn
