#include "win32/dialogs/GameSetupDialog.h"

#include "win32/Dpi.h"
#include "win32/SelectionColors.h"
#include "win32/resources/ids.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr const char* SetUpMark = "ready"; // of a game that has a path
constexpr const char* NoMark = "none";     // transparent, so that all names line up
constexpr int SmallPicture = 16;           // in pixels of 96 to an inch

constexpr int FieldsOfAGame[] = {ID_txtPath, ID_cmdBrowse, ID_txtConfig, ID_txtName, ID_chkVisible};

} // namespace

void GameSetupDialog::OnInit() {
    form_.Form_Load();
    FillGameList();
    AddToolTips();
    SetItemText(ID_lblDefinition, form_.lblDefinition);
    SetItemText(ID_lblDefVersion, form_.lblDefVersion);
    for (const int field : FieldsOfAGame)
        EnableItem(field, form_.HasSelection());
    ShowFields();
}

void GameSetupDialog::FillGameList() {
    const HWND list = Item(ID_lvwGameSel);
    images_ = Images(Dpi::OfWindow(Handle()).Scaled(SmallPicture), {SetUpMark});
    images_.AddTransparent(NoMark);
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images_.Handle()));
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH;
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    int index = 0;
    for (const frmGamSetup::GameItem& game : form_.lvwGameSel) {
        std::string text = game.text;
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = index++;
        item.iImage = MarkOf(game);
        item.pszText = text.data();
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    constexpr DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP;
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, extended, extended);
    // As wide as the list, without the scroll bar that many games cause.
    SendMessageA(list, LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE_USEHEADER);
    if (const int selected = SelectedGame(); selected >= 0)
        SelectGame(selected);
}

int GameSetupDialog::MarkOf(const frmGamSetup::GameItem& game) const {
    return images_.IndexOf(form_.IsSetUp(game.key) ? SetUpMark : NoMark);
}

// -1 where there are no games.
int GameSetupDialog::SelectedGame() const {
    const auto selected = std::find_if(form_.lvwGameSel.begin(), form_.lvwGameSel.end(),
                                       [&](const auto& game) { return game.key == form_.SelectedGame(); });
    return selected == form_.lvwGameSel.end() ? -1 : static_cast<int>(selected - form_.lvwGameSel.begin());
}

void GameSetupDialog::ShowMark() {
    LVITEMA item{};
    item.mask = LVIF_IMAGE;
    item.iItem = SelectedGame();
    if (item.iItem < 0)
        return;
    item.iImage = MarkOf(form_.lvwGameSel[static_cast<std::size_t>(item.iItem)]);
    SendMessageA(Item(ID_lvwGameSel), LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

LRESULT GameSetupDialog::OnCustomDraw(NMLVCUSTOMDRAW& stage) const {
    const HWND list = Item(ID_lvwGameSel);
    if (stage.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (stage.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && GetFocus() != list &&
        SendMessageA(list, LVM_GETITEMSTATE, stage.nmcd.dwItemSpec, LVIS_SELECTED) != 0)
        MarkUnfocusedSelection(stage);
    return CDRF_DODEFAULT;
}

void GameSetupDialog::SelectGame(int index) noexcept {
    LVITEMA item{};
    item.stateMask = item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageA(Item(ID_lvwGameSel), LVM_SETITEMSTATE, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&item));
    SendMessageA(Item(ID_lvwGameSel), LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
}

void GameSetupDialog::AddToolTips() {
    const auto add = [this](int id, const char* text) { toolTips_.AddControl(Handle(), Item(id), text); };
    add(ID_txtPath, "Path to local game executable");
    add(ID_txtConfig, "Specific config file to be used for the game");
    add(ID_txtName, "Player name to be used for the game");
    add(ID_chkVisible, "Show in game list, even if no executable was found");
}

void GameSetupDialog::ShowFields() {
    showingFields_ = true;
    SetItemText(ID_txtPath, form_.txtPath);
    SetItemText(ID_txtConfig, form_.txtConfig);
    SetItemText(ID_txtName, form_.txtName);
    SetChecked(ID_chkVisible, form_.chkVisible != 0);
    showingFields_ = false;
}

void GameSetupDialog::OnCommand(int id, int notification) {
    if (notification == EN_CHANGE && !showingFields_) {
        TakeField(id);
    } else if (id == ID_chkVisible && notification == BN_CLICKED) {
        form_.chkVisible = IsChecked(ID_chkVisible) ? 1 : 0;
        form_.chkVisible_Click();
    } else if (id == ID_cmdBrowse && notification == BN_CLICKED) {
        form_.cmdBrowse_Click();
        ShowFields();
        ShowMark();
    }
}

void GameSetupDialog::TakeField(int id) {
    if (id == ID_txtPath) {
        form_.txtPath = ItemText(id);
        form_.txtPath_Change();
        ShowMark();
    } else if (id == ID_txtConfig) {
        form_.txtConfig = ItemText(id);
        form_.txtConfig_Change();
    } else if (id == ID_txtName) {
        form_.txtName = ItemText(id);
        form_.txtName_Change();
    }
}

LRESULT GameSetupDialog::OnNotify(NMHDR& notification) {
    if (notification.idFrom != ID_lvwGameSel)
        return 0;
    if (notification.code == NM_CUSTOMDRAW)
        return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(notification));
    if (notification.code == LVN_ITEMCHANGED) {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
        if ((change.uNewState & LVIS_SELECTED) != 0 && (change.uOldState & LVIS_SELECTED) == 0)
            GameSelected(change.iItem);
    } else if (notification.code == NM_CLICK || notification.code == NM_RCLICK) {
        // A click next to the games removes the selection; the fields still belong to a game.
        if (const int selected = SelectedGame(); selected >= 0)
            SelectGame(selected);
    }
    return 0;
}

void GameSetupDialog::GameSelected(int index) {
    const std::string& key = form_.lvwGameSel[static_cast<std::size_t>(index)].key;
    if (key == form_.SelectedGame())
        return;
    form_.lvwGameSel_ItemClick(key);
    ShowFields();
}

} // namespace quarn
