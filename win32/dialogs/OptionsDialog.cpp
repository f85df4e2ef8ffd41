#include "win32/dialogs/OptionsDialog.h"

#include "core/modDefinitions.h"
#include "win32/resources/ids.h"

#include <commctrl.h>
#include <utility>

namespace quarn {

namespace {

constexpr int QuitActions = 3;
constexpr const char* TabCaptions[] = {"General", "Scanning", "Interface", "Extras"};

struct ExtraBox {
    int id;
    std::int32_t frmOptions::*value;
    const char* toolTip;
};

constexpr ExtraBox ExtraBoxes[] = {
    {ID_chkAskMasterFirst, &frmOptions::chkAskMasterFirst,
     "Renew replaces the list when the master server sends the first addresses"},
    {ID_chkListOnce, &frmOptions::chkListOnce, "An address that is in the list is not added again"},
    {ID_chkSaveListAtExit, &frmOptions::chkSaveListAtExit,
     "Without this, a list is saved only when you show another one"},
    {ID_chkNaturalSort, &frmOptions::chkNaturalSort,
     "Players: by players, then by maximum. Last Visit: never visited comes first"},
    {ID_chkKeepSorted, &frmOptions::chkKeepSorted,
     "Servers take their place when they are added or a scan has updated them"},
    {ID_chkShowAtStart, &frmOptions::chkShowAtStart, "Also if it was minimized when Quarn ended"},
    {ID_chkSearchBox, &frmOptions::chkSearchBox,
     "Finds a text in name, map, game, address and players of the servers (Ctrl+F)"},
    {ID_chkAskPassword, &frmOptions::chkAskPassword,
     "Joining a locked server asks for the password if none was entered"},
};

} // namespace

void OptionsDialog::OnInit() {
    form_.Form_Load();
    AddTabs();
    AddPages();
    FillNumFavorites();
    SendMessageA(extras_.Item(ID_updSimultaneous), UDM_SETRANGE32, 1, MostSimultaneous);
    AddToolTips();
    ShowFields();
    ShowTab(General);
}

void OptionsDialog::AddToolTips() {
    toolTips_.AddControl(scanning_.Handle(), scanning_.Item(ID_txtScanPingTimeout),
                         "Maximum waiting time for a server reply");
    toolTips_.AddControl(extras_.Handle(), extras_.Item(ID_txtSimultaneous),
                         "How many servers a scan asks at the same time, 1 to 64");
    for (const ExtraBox& box : ExtraBoxes)
        toolTips_.AddControl(extras_.Handle(), extras_.Item(box.id), box.toolTip);
}

void OptionsDialog::AddTabs() {
    int index = 0;
    for (std::string caption : TabCaptions) {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        SendMessageA(Item(ID_sstOptions), TCM_INSERTITEMA, static_cast<WPARAM>(index++),
                     reinterpret_cast<LPARAM>(&item));
    }
}

// Each page fills the tab control's client area and has the tab's caption as its name. In the tab order the
// pages follow the tab control.
void OptionsDialog::AddPages() {
    const HWND tabs = Item(ID_sstOptions);
    RECT room{};
    GetWindowRect(tabs, &room);
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&room), 2);
    SendMessageA(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&room));
    for (std::size_t tab = 0; tab < TabCount; ++tab) {
        OptionsPage& page = pages_[tab];
        page.CreateAsPage(Handle());
        SetWindowTextA(page.Handle(), TabCaptions[tab]);
        SetWindowPos(page.Handle(), tabs, room.left, room.top, room.right - room.left, room.bottom - room.top,
                     SWP_NOACTIVATE);
    }
}

void OptionsDialog::ShowTab(int tab) noexcept {
    SendMessageA(Item(ID_sstOptions), TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
    for (int index = 0; index < TabCount; ++index)
        ShowWindow(pages_[static_cast<std::size_t>(index)].Handle(), index == tab ? SW_SHOW : SW_HIDE);
}

void OptionsDialog::FillNumFavorites() {
    for (std::int32_t number = 1; number <= MaxFavoritesFolders; ++number)
        SendMessageA(interface_.Item(ID_cmbNumFavorites), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(std::to_string(number).c_str()));
}

void OptionsDialog::ShowFields() {
    general_.SetChecked(ID_chkMinToTray, form_.chkMinToTray != 0);
    general_.SetChecked(ID_chkKeepOnTop, form_.chkKeepOnTop != 0);
    general_.SetChecked(ID_chkRemWinPos, form_.chkRemWinPos != 0);
    scanning_.SetItemText(ID_txtScanPingTimeout, form_.txtScanPingTimeout);
    for (int option = 0; option < QuitActions; ++option)
        interface_.SetChecked(ID_optQuitAfterLaunch + option, option == form_.optQuitAfterLaunch);
    SendMessageA(interface_.Item(ID_cmbNumFavorites), CB_SETCURSEL,
                 static_cast<WPARAM>(form_.cmbNumFavorites), 0);
    extras_.SetItemText(ID_txtSimultaneous, form_.txtSimultaneous);
    for (const ExtraBox& box : ExtraBoxes)
        extras_.SetChecked(box.id, form_.*box.value != 0);
}

void OptionsDialog::TakeFields() {
    form_.chkMinToTray = general_.IsChecked(ID_chkMinToTray) ? 1 : 0;
    form_.chkKeepOnTop = general_.IsChecked(ID_chkKeepOnTop) ? 1 : 0;
    form_.chkRemWinPos = general_.IsChecked(ID_chkRemWinPos) ? 1 : 0;
    form_.txtScanPingTimeout = scanning_.ItemText(ID_txtScanPingTimeout);
    form_.optQuitAfterLaunch = frmOptions::NoChoice;
    for (int option = 0; option < QuitActions; ++option)
        if (interface_.IsChecked(ID_optQuitAfterLaunch + option))
            form_.optQuitAfterLaunch = option;
    form_.cmbNumFavorites =
        static_cast<std::int32_t>(SendMessageA(interface_.Item(ID_cmbNumFavorites), CB_GETCURSEL, 0, 0));
    form_.txtSimultaneous = extras_.ItemText(ID_txtSimultaneous);
    for (const ExtraBox& box : ExtraBoxes)
        form_.*box.value = extras_.IsChecked(box.id) ? 1 : 0;
}

void OptionsDialog::OnOK() {
    TakeFields();
    form_.cmdOK_Click();
    const frmOptions::Field wrong = std::exchange(form_.wrongField, frmOptions::Field::None);
    if (wrong == frmOptions::Field::ScanPingTimeout)
        ShowAgain(scanning_, Scanning, ID_txtScanPingTimeout);
    else if (wrong == frmOptions::Field::Simultaneous)
        ShowAgain(extras_, Extras, ID_txtSimultaneous);
}

void OptionsDialog::ShowAgain(OptionsPage& page, Tab tab, int field) {
    ShowTab(tab);
    page.FocusItem(field);
}

LRESULT OptionsDialog::OnNotify(NMHDR& notification) {
    if (notification.idFrom == ID_sstOptions && notification.code == TCN_SELCHANGE)
        ShowTab(ShownTab());
    return 0;
}

int OptionsDialog::ShownTab() const noexcept {
    return static_cast<int>(SendMessageA(Item(ID_sstOptions), TCM_GETCURSEL, 0, 0));
}

// Ctrl+Tab and Ctrl+Page Down show the next page, with Shift and Page Up the previous one. The focus moves to
// the tabs, because the focused control may be hidden now.
bool OptionsDialog::OnKeyDown(WPARAM key) {
    if (GetKeyState(VK_CONTROL) >= 0 || (key != VK_TAB && key != VK_NEXT && key != VK_PRIOR))
        return false;
    const bool backwards = key == VK_PRIOR || (key == VK_TAB && GetKeyState(VK_SHIFT) < 0);
    FocusItem(ID_sstOptions);
    ShowTab((ShownTab() + (backwards ? TabCount - 1 : 1)) % TabCount);
    return true;
}

} // namespace quarn
