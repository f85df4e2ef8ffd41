// Menus and keys of the main window: which command runs which handler, and what the models change in the
// menus.

#include "base/Scope.h"
#include "win32/MainWindow.h"
#include "win32/resources/ids.h"

#include <initializer_list>
#include <utility>

namespace quarn {

namespace {

// A folder's name as a menu entry: without access keys and without anything that the system takes for a
// separator.
std::string MenuText(const std::string& name) {
    std::string text;
    // NOLINTNEXTLINE(readability-redundant-string-cstr): the copy ends at a NUL.
    for (const char character : std::string(name.c_str())) {
        text += character;
        if (character == '&')
            text += character;
    }
    return text.empty() ? " " : text;
}

HMENU SubmenuOf(HMENU menu, UINT id) {
    MENUITEMINFOA item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_SUBMENU;
    return GetMenuItemInfoA(menu, id, FALSE, &item) ? item.hSubMenu : nullptr;
}

void Enable(HMENU menu, UINT id, bool enabled) {
    EnableMenuItem(menu, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

bool IsBetween(int id, int group, int nextGroup) {
    return id > group && id < nextGroup;
}

} // namespace

void MainWindow::LoadMenus() {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    mainMenu_ = LoadMenuA(instance, MAKEINTRESOURCEA(IDR_MAIN_MENU));
    popupMenus_.Reset(LoadMenuA(instance, MAKEINTRESOURCEA(IDR_POPUP_MENUS)));
    favoritesMenu_ = SubmenuOf(mainMenu_, ID_mnuServFavoritesAdd);
    accelerators_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_ACCELERATORS));
    serverListAccelerators_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_SERVER_LIST_ACCELERATORS));
    treeAccelerators_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_TREE_ACCELERATORS));
    searchAccelerators_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_SEARCH_ACCELERATORS));
    AddCommands();
}

void MainWindow::AddCommands() {
    using Target = const CommandTarget&;
    AddServerCommands();
    commands_[ID_mnuFileQuit] = [this](Target) { form_.mnuFileQuit_Click(); };
    commands_[ID_mnuServRefreshAll] = [this](Target) { form_.scan.mnuServRefreshAll_Click(); };
    commands_[ID_mnuServAdd] = [this](Target) { form_.dialogs.mnuServAdd_Click(); };
    commands_[ID_mnuServerListGet] = [this](Target) { form_.master.mnuServerListGet_Click(); };
    commands_[ID_mnuServerListClear] = [this](Target) { form_.servers.mnuServerListClear_Click(); };
    commands_[ID_mnuRecheckCountries] = [this](Target) { form_.countries.mnuRecheckCountries_Click(); };
    commands_[ID_mnuServerListExport] = [this](Target) { form_.servers.mnuServerListExport_Click(); };
    commands_[ID_mnuExtrasGameSetup] = [this](Target) { form_.dialogs.mnuExtrasGameSetup_Click(); };
    commands_[ID_mnuExtrasOptions] = [this](Target) { form_.dialogs.mnuExtrasOptions_Click(); };
    commands_[ID_mnuInfoHelp] = [this](Target) { form_.mnuInfoHelp_Click(); };
    commands_[ID_mnuInfoAbout] = [this](Target) { form_.dialogs.mnuInfoAbout_Click(); };
    commands_[ID_mnuSysOpen] = [this](Target) { form_.mnuSysOpen_Click(); };
    commands_[ID_mnuSysQuit] = [this](Target) { form_.mnuSysQuit_Click(); };
    commands_[ID_mnuTreeRename] = [this](Target t) { form_.tree.mnuTreeRename_Click(t.node); };
    commands_[ID_mnuTreeAddServer] = [this](Target t) { form_.dialogs.mnuTreeAddServer_Click(t.node); };
    commands_[ID_keyStop] = [this](Target) { form_.scan.Stop(); };
    commands_[ID_keySearch] = [this](Target) { txtSearch_.Focus(); };
    commands_[ID_keySelectAll] = [this](Target) { lvwServers_.SelectAll(); };
}

// Commands that act on selected servers.
void MainWindow::AddServerCommands() {
    using Target = const CommandTarget&;
    commands_[ID_mnuServConnectPlay] = [this](Target t) { form_.game.mnuServConnectPlay_Click(t.rows); };
    commands_[ID_mnuServConnectSpec] = [this](Target t) { form_.game.mnuServConnectSpec_Click(t.rows); };
    commands_[ID_mnuServSetPass] = [this](Target t) { form_.dialogs.mnuServSetPass_Click(t.rows); };
    commands_[ID_mnuServRefresh] = [this](Target t) { form_.scan.mnuServRefresh_Click(t.rows); };
    commands_[ID_mnuServDelete] = [this](Target t) { form_.servers.mnuServDelete_Click(t.rows); };
    commands_[ID_mnuServMonitor] = [this](Target t) { form_.game.mnuServMonitor_Click(t.rows); };
    commands_[ID_mnuServCopyAddress] = [this](Target t) { form_.servers.mnuServCopyAddress_Click(t.rows); };
    for (int folder = 1; folder <= MaxFavoritesFolders; ++folder)
        commands_[ID_mnuServAddToFavorites + folder] = [this, folder](Target t) {
            form_.tree.mnuServAddToFavorites_Click(folder, t.rows);
        };
}

bool MainWindow::IsAvailable(int command) const {
    const MainControls& controls = form_.controls;
    if (!commands_.contains(command))
        return false;
    if (const int folder = command - ID_mnuServAddToFavorites; controls.mnuServAddToFavorites.Holds(folder)) {
        const MenuEntry& entry = controls.mnuServAddToFavorites[folder];
        return entry.visible && entry.enabled; // also from the toolbar, whatever the menu above it
    }
    if (IsBetween(command, ID_mnuServer, ID_mnuServerList))
        return controls.mnuServer.enabled;
    if (command == ID_mnuServerListExport && !controls.mnuServerListExport.enabled)
        return false;
    if (IsBetween(command, ID_mnuServerList, ID_mnuExtras))
        return controls.mnuServerList.enabled;
    return true;
}

void MainWindow::RunCommand(int command, const CommandTarget& target) {
    if (IsAvailable(command))
        commands_.at(command)(target);
}

Answer MainWindow::OnCommand(int id, CommandSource source) {
    if (source == CommandSource::Accelerator && keyRepeats_)
        return Handled; // a key that is held down gives its command once
    const std::optional<CommandTarget> chosen = std::exchange(menuBarTarget_, std::nullopt);
    if (tbMain_.OnCommand(id))
        return Handled;
    if (id == ID_txtSearch) {
        txtSearch_.TakeText();
        return Handled;
    }
    if (source == CommandSource::Menu && chosen)
        RunCommand(id, *chosen);
    else
        RunCommand(id);
    return Handled;
}

// Entries that could do nothing are gray.
Answer MainWindow::OnInitMenuPopup(HMENU menu) {
    for (const UINT entry : {ID_mnuServConnectPlay, ID_mnuServConnectSpec, ID_mnuServSetPass,
                             ID_mnuServRefresh, ID_mnuServDelete, ID_mnuServMonitor, ID_mnuServCopyAddress})
        Enable(menu, entry, form_.controls.lvwServers.SelectedRow() != 0);
    Enable(menu, ID_mnuTreeRename, form_.tree.CanRename(form_.controls.trvGames.SelectedKey()));
    return NotHandled;
}

void MainWindow::FlushMenus() {
    const MainControls& controls = form_.controls;
    std::vector<MenuEntry> entries = {controls.mnuServer, controls.mnuServerList,
                                      controls.mnuServerListExport};
    for (std::int32_t folder = 1; folder <= controls.mnuServAddToFavorites.HighestIndex(); ++folder)
        entries.push_back(controls.mnuServAddToFavorites[folder]);
    if (entries == shownEntries_)
        return;
    shownEntries_ = std::move(entries);
    Enable(mainMenu_, ID_mnuServer, controls.mnuServer.enabled);
    Enable(mainMenu_, ID_mnuServerList, controls.mnuServerList.enabled);
    Enable(mainMenu_, ID_mnuServerListExport, controls.mnuServerListExport.enabled);
    ShowFavoritesEntries();
    DrawMenuBar(Handle());
}

void MainWindow::ShowFavoritesEntries() {
    while (DeleteMenu(favoritesMenu_, 0, MF_BYPOSITION)) {
    }
    const OneBased<MenuEntry>& entries = form_.controls.mnuServAddToFavorites;
    for (std::int32_t folder = 1; folder <= entries.HighestIndex(); ++folder) {
        const MenuEntry& entry = entries[folder];
        if (!entry.visible)
            continue;
        std::string text = MenuText(entry.caption);
        MENUITEMINFOA item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_STRING | MIIM_STATE;
        item.wID = static_cast<UINT>(ID_mnuServAddToFavorites + folder);
        item.fState = entry.enabled ? MFS_ENABLED : MFS_GRAYED;
        item.dwTypeData = text.data();
        InsertMenuItemA(favoritesMenu_, static_cast<UINT>(GetMenuItemCount(favoritesMenu_)), TRUE, &item);
    }
    Enable(mainMenu_, ID_mnuServFavoritesAdd, GetMenuItemCount(favoritesMenu_) > 0);
}

HMENU MainWindow::PopupOf(PopupMenu menu) const {
    switch (menu) {
    case PopupMenu::Server:
        return SubmenuOf(mainMenu_, ID_mnuServer);
    case PopupMenu::AddToFavorites:
        return favoritesMenu_;
    case PopupMenu::TreeView:
        return SubmenuOf(popupMenus_.Get(), ID_mnuTreeView);
    case PopupMenu::SysTray:
        return SubmenuOf(popupMenus_.Get(), ID_mnuSysTray);
    }
    return nullptr;
}

POINT MainWindow::PopupPosition(PopupMenu menu) const {
    if (menu == PopupMenu::AddToFavorites) {
        const RECT button = tbMain_.ButtonBounds(form_.controls.tbMain.PositionOf(FavoritesButton));
        return {button.left, button.bottom};
    }
    if (askedByKeyboard_)
        return menuKeyPosition_;
    POINT mouse{};
    GetCursorPos(&mouse);
    return mouse;
}

void MainWindow::PopUp(PopupMenu menu) {
    if (menu == PopupMenu::Server && !form_.controls.mnuServer.enabled)
        return;
    FlushModels();
    tbMain_.AllowToolTips(false);
    // Otherwise the menu of the tray icon would stay open when the user clicks elsewhere.
    if (menu == PopupMenu::SysTray)
        SetForegroundWindow(Handle());
    const POINT position = PopupPosition(menu);
    // The selection that the user sees now: a scan continues while the menu is open.
    CommandTarget target = form_.Target();
    // Only the left button chooses: the right one, which has just opened the menu, may slip before it is up.
    const int command = [&] {
        const Restore open(popUpIsOpen_, true);
        return TrackPopupMenuEx(PopupOf(menu), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RETURNCMD, position.x,
                                position.y, Handle(), nullptr);
    }();
    tbMain_.AllowToolTips(true);
    if (command != 0)
        PostEvent([this, command, target = std::move(target)] { RunCommand(command, target); });
    PostMessageA(Handle(), WM_NULL, 0, 0);
}

} // namespace quarn
