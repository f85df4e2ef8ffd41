// The FormWindow interface: what the main form asks of its window.

#include "win32/MainWindow.h"
#include "win32/Screens.h"

#include <commctrl.h>
#include <initializer_list>
#include <vector>

namespace quarn {

namespace {

// The first call changes the screen, the second one restores the size. A third one is needed if the first
// move left most of the window on the old screen.
constexpr int MostMoves = 3;

// A window without its tooltips, while this object exists. Wine places a topmost window directly below its
// owned windows, so a hidden tooltip would put it among the ordinary ones.
class DetachedToolTips {
  public:
    explicit DetachedToolTips(HWND owner) : owner_(owner) {
        for (HWND tip = nullptr; (tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr;)
            if (GetWindow(tip, GW_OWNER) == owner)
                tips_.push_back(tip);
        GiveTo(nullptr);
    }
    ~DetachedToolTips() { GiveTo(owner_); }
    DetachedToolTips(const DetachedToolTips&) = delete;
    DetachedToolTips& operator=(const DetachedToolTips&) = delete;

  private:
    void GiveTo(HWND owner) const noexcept {
        for (const HWND tip : tips_)
            SetWindowLongPtrA(tip, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    }

    HWND owner_;
    std::vector<HWND> tips_;
};

} // namespace

WindowState MainWindow::State() const {
    if (IsIconic(Handle()))
        return WindowState::Minimized;
    return IsZoomed(Handle()) ? WindowState::Maximized : WindowState::Normal;
}

void MainWindow::SetState(WindowState state) {
    switch (state) {
    case WindowState::Minimized:
        ShowWindow(Handle(), SW_MINIMIZE);
        break;
    case WindowState::Maximized:
        ShowWindow(Handle(), SW_SHOWMAXIMIZED);
        break;
    case WindowState::Normal:
        ShowWindow(Handle(), SW_SHOWNORMAL);
        break;
    }
}

TwipsRect MainWindow::Bounds() const {
    RECT bounds{};
    GetWindowRect(Handle(), &bounds);
    return StoredPlace(bounds, dpi_, ConnectedScreens());
}

void MainWindow::SetBounds(const TwipsRect& bounds) {
    const RECT wanted = PlaceOnScreens(bounds, ConnectedScreens());
    // On a screen of another DPI the system scales the window after the move, but it already has the right
    // size.
    RECT reached{};
    for (int moves = 0; moves < MostMoves && !EqualRect(&reached, &wanted); ++moves) {
        SetWindowPos(Handle(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                     wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
        GetWindowRect(Handle(), &reached);
    }
}

TwipsSize MainWindow::InnerSize() const {
    RECT inner{};
    GetClientRect(Handle(), &inner);
    return {dpi_.ToTwips(inner.right), dpi_.ToTwips(inner.bottom)};
}

TwipsSize MainWindow::ScreenSize() const {
    return {dpi_.ToTwips(GetSystemMetrics(SM_CXSCREEN)), dpi_.ToTwips(GetSystemMetrics(SM_CYSCREEN))};
}

void MainWindow::SetCaption(const std::string& caption) {
    SetWindowTextA(Handle(), caption.c_str());
}

void MainWindow::SetVisible(bool visible) {
    ShowWindow(Handle(), visible ? SW_SHOW : SW_HIDE);
    if (visible)
        SetForegroundWindow(Handle());
}

// A hidden window has no taskbar button anyway; a visible one loses it as a tool window.
void MainWindow::SetShownInTaskbar(bool shown) {
    const LONG_PTR style = GetWindowLongPtrA(Handle(), GWL_EXSTYLE);
    const LONG_PTR wanted = shown ? style & ~LONG_PTR{WS_EX_TOOLWINDOW} : style | WS_EX_TOOLWINDOW;
    if (wanted == style || (!shown && !IsWindowVisible(Handle())))
        return;
    // The taskbar reads a style only when a window appears.
    const bool visible = IsWindowVisible(Handle()) != FALSE;
    if (visible)
        ShowWindow(Handle(), SW_HIDE);
    SetWindowLongPtrA(Handle(), GWL_EXSTYLE, wanted);
    if (visible)
        ShowWindow(Handle(), SW_SHOWNA);
}

void MainWindow::ComeToFront() {
    // A window that was maximised before it was minimised is maximised again.
    ShowWindow(Handle(), IsIconic(Handle()) ? SW_RESTORE : SW_SHOW);
    // A message box or dialog in front of it is raised with it.
    SetForegroundWindow(GetLastActivePopup(Handle()));
}

void MainWindow::SetTopMost(bool topMost) {
    const DetachedToolTips detached(Handle());
    SetWindowPos(Handle(), topMost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void MainWindow::ShowChanges() {
    FlushModels();
    RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
    for (HWND child = GetWindow(Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RedrawWindow(child, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        serverSockets_.NoteArrivals(); // painting takes tens of milliseconds on a slow display
    }
}

bool MainWindow::IsMouseDown() const {
    for (const int button : {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON})
        if (GetAsyncKeyState(button) < 0)
            return true;
    return false;
}

void MainWindow::Destroy() {
    // Only at the end of a session. Everything is stored. A system dialog would crash if its windows were
    // destroyed while its code is on the stack.
    if (desktop_.Prompts().SystemDialogIsOpen())
        ExitProcess(0);
    desktop_.Events().updateWindows = nullptr;
    desktop_.Events().preTranslate = nullptr;
    desktop_.SetMainWindow(nullptr);
    DestroyWindow(Handle());
    PostQuitMessage(0);
}

} // namespace quarn
