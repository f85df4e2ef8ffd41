#pragma once

// The main window: shows the models of frmMain in real controls and passes user actions to the form's
// handlers. It decides nothing itself.
//
// Only FlushModels updates the controls. The message pump calls it before it waits. The system's own loops do
// not know the pump: a menu's loop calls it when it waits, a timer while a dialog or message box is open.
//
// Teardown, in this order: the pump's hooks are removed, so that nothing is flushed any more; the desktop
// forgets the window; the window is destroyed with its controls, each of which is disconnected from its
// wrapper by its last message; then the program is told to end. The object itself, with form and models, is
// destroyed after the message loop has returned, when no handler is on the stack.

#include "views/frmMain.h"
#include "win32/Dpi.h"
#include "win32/Fonts.h"
#include "win32/Handles.h"
#include "win32/Images.h"
#include "win32/TaskbarProgress.h"
#include "win32/TimerWin.h"
#include "win32/UdpSocketWin.h"
#include "win32/Window.h"
#include "win32/controls/ListViewControl.h"
#include "win32/controls/ProgressBarControl.h"
#include "win32/controls/SearchBoxControl.h"
#include "win32/controls/StatusBarControl.h"
#include "win32/controls/ToolbarControl.h"
#include "win32/controls/TreeViewControl.h"
#include "win32/desktop/WindowsDesktop.h"
#include "win32/dialogs/ModalFormsWin.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

class MainWindow final : public Window, public FormWindow {
  public:
    // Both outlive the window.
    MainWindow(ProgramState& program, WindowsDesktop& desktop);
    ~MainWindow() override;

    // Creates the window, loads the form and shows it. The form's activation follows as an event.
    void Show();

    frmMain& Form() noexcept { return form_; }

    // Updates the controls from the models; nearly free if nothing has changed.
    void FlushModels() noexcept;

    // Runs a command of the menus or the keyboard, if it is available: on the current selection, or on the
    // selection at the time when the user gave it.
    void RunCommand(int command) { RunCommand(command, form_.Target()); }
    void RunCommand(int command, const CommandTarget& target);

  private:
    // FormWindow (MainWindowForm.cpp)
    WindowReference Reference() const override { return reinterpret_cast<WindowReference>(Handle()); }
    IconReference Icon() const override { return reinterpret_cast<IconReference>(smallIcon_.Get()); }
    WindowState State() const override;
    void SetState(WindowState state) override;
    TwipsRect Bounds() const override;
    void SetBounds(const TwipsRect& bounds) override;
    TwipsSize InnerSize() const override;
    TwipsSize ScreenSize() const override;
    void SetCaption(const std::string& caption) override;
    void SetVisible(bool visible) override;
    void SetShownInTaskbar(bool shown) override;
    void ComeToFront() override;
    void SetTopMost(bool topMost) override;
    void PopUp(PopupMenu menu) override;
    void ShowChanges() override;
    bool IsMouseDown() const override;
    bool TakesInput() const override { return IsWindowEnabled(Handle()) != FALSE; }
    bool CancelDialogs() override;
    void Destroy() override;

    // Window
    Answer OnCreate() override;
    Answer OnClose() override;
    Answer OnQueryEndSession() override;
    Answer OnEndSession(bool ending) override;
    Answer OnSizeLimits(MINMAXINFO& limits) override;
    Answer OnSize(WPARAM kind) override;
    Answer OnDpiChanged(unsigned dotsPerInch, const RECT& suggested) override;
    Answer OnSettingChanged(WPARAM which) override;
    Answer OnThemeChanged() override;
    Answer OnSystemColorsChanged() override;
    Answer OnActivate(bool active, bool minimized) override;
    Answer OnSetFocus() override;
    Answer OnCommand(int id, CommandSource source) override;
    Answer OnNotify(NMHDR& notification) override;
    Answer OnContextMenu(HWND on, POINT screen) override;
    Answer OnMenuIdle() override;
    Answer OnEnable(bool enabled) override;
    Answer OnMoveBegins() override;
    Answer OnInitMenuPopup(HMENU menu) override;
    Answer OnMenuBarLeft() override;
    Answer OnTimer(UINT_PTR id) override;
    Answer OnOwnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Look (MainWindow.cpp)
    void HearLesserPrograms() const noexcept;
    void CreateControls();
    void ApplyLook(Dpi dpi);
    void ShowIcons();
    std::vector<std::string> TreePictures() const;
    void Arrange();
    void MoveListsToLayout();
    void ArrangeToolbar();
    void ShowSearchBox();

    // Events (MainWindowEvents.cpp)
    void ConnectEvents();
    bool PreTranslate(MSG& message) noexcept;
    bool MoveFocusByTab(const MSG& message) noexcept;
    bool LeaveSearchBox(const MSG& message) noexcept;
    bool IsRepeatedChoice(const MSG& message) const noexcept;

    // Runs a handler after the control has finished its own work on the event.
    void PostEvent(std::function<void()> handler);
    void RunFirstPostedEvent();

    // Menus (MainWindowMenus.cpp)
    void LoadMenus();
    void AddCommands();
    void AddServerCommands();
    bool IsAvailable(int command) const;
    HMENU PopupOf(PopupMenu menu) const;
    POINT PopupPosition(PopupMenu menu) const;
    void FlushMenus();
    void ShowFavoritesEntries();

    struct MenuKind {
        using Type = HMENU;
        static Type Empty() noexcept { return nullptr; }
        static void Free(Type handle) noexcept { DestroyMenu(handle); }
    };

    ProgramState& program_;
    WindowsDesktop& desktop_;
    UdpSocketWin sckMaster_;
    UdpSocketsWin serverSockets_;
    ModalFormsWin forms_;
    frmMain form_;
    TimerWin tmrTimeout_;
    TimerWin tmrMaster_;
    TimerWin tmrIcon_;
    TimerWin tmrPorts_;
    TimerWin tmrDeadlines_;
    TimerWin tmrSorting_;
    TimerWin tmrTreeRest_;

    // Icons and fonts outlive the controls below that use them.
    Dpi dpi_ = Dpi::OfSystem();
    FontHandle font_;
    Images treePictures_;
    Images listPictures_;
    IconHandle icon_;
    IconHandle smallIcon_;
    IconHandle captionIcon_;
    IconHandle smallCaptionIcon_;

    TreeViewControl trvGames_;
    ListViewControl lvwServers_;
    ListViewControl lvwPlayers_;
    ListViewControl lvwServVars_;
    SearchBoxControl txtSearch_;
    ToolbarControl tbMain_;
    StatusBarControl sbMain_;
    ProgressBarControl pbScanning_;
    TaskbarProgress taskbarProgress_;
    MainLayout shownLayout_;

    UniqueHandle<MenuKind> popupMenus_;
    HMENU mainMenu_ = nullptr; // the window's
    HMENU favoritesMenu_ = nullptr;
    HACCEL accelerators_ = nullptr;
    HACCEL serverListAccelerators_ = nullptr;
    HACCEL treeAccelerators_ = nullptr;
    HACCEL searchAccelerators_ = nullptr;
    std::map<int, std::function<void(const CommandTarget& target)>> commands_;
    std::optional<CommandTarget> menuBarTarget_; // of the entry that was just chosen
    bool keyRepeats_ = false;                    // the current key is being held down
    std::vector<MenuEntry> shownEntries_;
    POINT menuKeyPosition_{}; // position of a menu that the keyboard opened
    bool askedByKeyboard_ = false;
    bool popUpIsOpen_ = false;

    std::deque<std::function<void()>> postedEvents_;
    // Sent by the system when it has created the taskbar again.
    const UINT taskbarCreatedMessage_ = RegisterWindowMessageA("TaskbarCreated");

    HWND lastFocus_ = nullptr;
    int closingAttempts_ = 0;
    bool loaded_ = false;
    bool flushing_ = false;
    bool shownInTaskbar_ = true;
};

} // namespace quarn
