// Passes user actions from the controls to the form's handlers.

#include "win32/MainWindow.h"

#include "base/Scope.h"
#include "win32/RunningInstance.h"
#include "win32/resources/ids.h"

#include <array>
#include <commctrl.h>
#include <utility>

namespace quarn {

namespace {

constexpr UINT RunPostedEventMessage = WM_APP;
constexpr UINT ForgetMenuTargetMessage = WM_APP + 1;

// The key was already down.
bool IsRepeat(const MSG& message) noexcept {
    constexpr LPARAM WasDown = LPARAM{1} << 30;
    return (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) &&
           (message.lParam & WasDown) != 0;
}

// A dialog in whose handler events run: its own loop, which would handle its keys, is waiting.
bool IsDialogKey(MSG& message) noexcept {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    return root != nullptr && GetClassLongPtrA(root, GCW_ATOM) == reinterpret_cast<ULONG_PTR>(WC_DIALOG) &&
           IsDialogMessageA(root, &message) != FALSE;
}

} // namespace

void MainWindow::ConnectEvents() {
    ServerListView& servers = form_.servers;
    lvwServers_.Clicked = [&] { servers.lvwServers_Click(); };
    lvwServers_.MouseReleased = [&] { servers.lvwServers_MouseUp(); };
    lvwServers_.KeyReleased = [&](std::int32_t code) { servers.lvwServers_KeyUp(code); };
    lvwServers_.ColumnClicked = [&](std::int32_t column) { servers.lvwServers_ColumnClick(column); };
    lvwServers_.Activated = [this] {
        const ListView& list = form_.controls.lvwServers;
        const std::int32_t row = list.SelectedRow();
        if (row != 0)
            PostEvent([this, identity = list.Row(row).identity] { form_.lvwServers_DblClick(identity); });
    };
    lvwServers_.RightPressed = [&] {
        servers.lvwServers_Click();
        PopUp(PopupMenu::Server);
    };
    lvwPlayers_.ColumnClicked = [&](std::int32_t column) { servers.lvwPlayers_ColumnClick(column); };

    trvGames_.NodeClicked = [this](const std::string& key) {
        PostEvent([this, key] { form_.tree.trvGames_NodeClick(key); });
    };
    trvGames_.SelectedByKeyboard = [this](const std::string& key) {
        form_.tree.trvGames_SelectedByKeyboard(key);
    };
    trvGames_.RightReleased = [this] { PopUp(PopupMenu::TreeView); };

    txtSearch_.Changed = [this] { PostEvent([this] { form_.servers.txtSearch_Change(); }); };
    tbMain_.ButtonClicked = [this](const std::string& key) { form_.tbMain_ButtonClick(key); };
}

Answer MainWindow::OnNotify(NMHDR& notification) {
    for (Control* control :
         std::array<Control*, 5>{&lvwServers_, &lvwPlayers_, &lvwServVars_, &trvGames_, &tbMain_})
        if (notification.hwndFrom == control->Handle())
            return control->OnNotify(notification);
    return NotHandled;
}

void MainWindow::PostEvent(std::function<void()> handler) {
    postedEvents_.push_back(std::move(handler));
    PostMessageA(Handle(), RunPostedEventMessage, 0, 0);
}

Answer MainWindow::OnOwnMessage(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message == taskbarCreatedMessage_) {
        form_.SysTray.TaskbarCreated();
        return Handled;
    }
    if (message == StartedAgainMessage())
        form_.StartedAgain();
    else if (message == RunPostedEventMessage)
        RunFirstPostedEvent();
    else if (message == ForgetMenuTargetMessage)
        menuBarTarget_.reset();
    else
        return NotHandled;
    return Handled;
}

void MainWindow::RunFirstPostedEvent() {
    if (postedEvents_.empty())
        return;
    const std::function<void()> next = std::move(postedEvents_.front());
    postedEvents_.pop_front();
    next();
}

// The command of the entry that was chosen is in the queue by now, and this message comes after it. Until
// then a scan may move the selection.
Answer MainWindow::OnMenuBarLeft() {
    menuBarTarget_ = form_.Target();
    PostMessageA(Handle(), ForgetMenuTargetMessage, 0, 0);
    return NotHandled;
}

Answer MainWindow::OnMenuIdle() {
    form_.scan.NoteStandstill();
    FlushModels();
    // A menu's loop has looked into the queue and is about to wait for new messages. FlushModels also looks
    // for replies, after which nothing that has arrived counts as new.
    if (GetQueueStatus(QS_ALLINPUT) != 0)
        PostMessageA(Handle(), WM_NULL, 0, 0);
    return NotHandled;
}

Answer MainWindow::OnMoveBegins() {
    form_.scan.NoteStandstill();
    FlushModels();
    return NotHandled;
}

// For the keyboard only: lists and tree react to the mouse's own messages.
Answer MainWindow::OnContextMenu(HWND on, POINT screen) {
    if (screen.x != -1 || screen.y != -1)
        return NotHandled;
    askedByKeyboard_ = true;
    if (on == lvwServers_.Handle()) {
        menuKeyPosition_ = lvwServers_.MenuPosition();
        form_.servers.lvwServers_Click();
        PopUp(PopupMenu::Server);
    } else if (on == trvGames_.Handle()) {
        menuKeyPosition_ = trvGames_.MenuPosition();
        PopUp(PopupMenu::TreeView);
    }
    askedByKeyboard_ = false;
    return Handled;
}

Answer MainWindow::OnActivate(bool active, bool /*minimized*/) {
    if (active)
        sbMain_.ReadLockKeys();
    else if (const HWND focus = GetFocus(); focus != nullptr && IsChild(Handle(), focus))
        lastFocus_ = focus;
    return NotHandled;
}

Answer MainWindow::OnSetFocus() {
    SetFocus(lastFocus_);
    return Handled;
}

bool MainWindow::PreTranslate(MSG& message) noexcept {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd))
        return IsDialogKey(message);
    const bool keyMoves = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (!keyMoves)
        return false;
    if (StatusBarControl::IsLockKey(message.wParam))
        sbMain_.ReadLockKeys();
    if (MoveFocusByTab(message) || LeaveSearchBox(message) || IsRepeatedChoice(message))
        return true;
    const Restore repeats(keyRepeats_, IsRepeat(message));
    if (lvwServers_.HasFocus() && TranslateAcceleratorA(Handle(), serverListAccelerators_, &message))
        return true;
    if (trvGames_.HasFocus() && TranslateAcceleratorA(Handle(), treeAccelerators_, &message))
        return true;
    if (form_.controls.txtSearch.visible && TranslateAcceleratorA(Handle(), searchAccelerators_, &message))
        return true;
    return TranslateAcceleratorA(Handle(), accelerators_, &message) != 0;
}

// Esc empties the search box and goes to the list; Enter and Down only go there.
bool MainWindow::LeaveSearchBox(const MSG& message) noexcept {
    const WPARAM key = message.wParam;
    if (!txtSearch_.HasFocus() || message.message != WM_KEYDOWN ||
        (key != VK_ESCAPE && key != VK_RETURN && key != VK_DOWN))
        return false;
    if (key == VK_ESCAPE)
        SetWindowTextA(txtSearch_.Handle(), "");
    SetFocus(lvwServers_.Handle());
    return true;
}

// Enter joins the selected server; Enter and Space are clicks on a node of the tree. Once for each press.
bool MainWindow::IsRepeatedChoice(const MSG& message) const noexcept {
    if (!IsRepeat(message))
        return false;
    return (message.wParam == VK_RETURN && (lvwServers_.HasFocus() || trvGames_.HasFocus())) ||
           (message.wParam == VK_SPACE && trvGames_.HasFocus());
}

bool MainWindow::MoveFocusByTab(const MSG& message) noexcept {
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0)
        return false;
    const bool backwards = GetKeyState(VK_SHIFT) < 0;
    // Tab stops are the controls with WS_TABSTOP, in creation order.
    if (const HWND next = GetNextDlgTabItem(Handle(), GetFocus(), backwards); next != nullptr)
        SetFocus(next);
    // The system hides the focus marks until the keyboard is used, and dialogs show them by themselves only.
    SendMessageA(Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    return true;
}

} // namespace quarn
