#include "win32/MainWindow.h"

#include "core/Version.h"
#include "views/LayoutRules.h"
#include "win32/Resources.h"
#include "win32/RunningInstance.h"
#include "win32/Screens.h"
#include "win32/resources/ids.h"

#include <algorithm>
#include <commctrl.h>
#include <initializer_list>
#include <utility>

namespace quarn {

namespace {

constexpr char ApplicationIcon[] = "application";

// In pixels of 96 to an inch.
constexpr int SmallPicture = 16;
constexpr int LargePicture = 32;

// While something that was cancelled is still open.
constexpr UINT_PTR ClosingTimer = 1;
constexpr UINT ClosingInterval = 50; // milliseconds
constexpr int MostClosingAttempts = 100;

// While a dialog or message box is open, a scan continues. Painting takes time from its replies.
constexpr UINT_PTR UpdateTimer = 2;
constexpr UINT UpdateInterval = 250; // milliseconds

// Ends an open menu and the moving of a window; true if there was one. It has ended when its own message loop
// continues. The system reports no menu mode while a pop-up menu is about to open, and after a control has
// taken the capture.
bool CancelMenuMode(bool popUpIsOpen) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetCurrentThreadId(), &state);
    constexpr DWORD Modes = GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE | GUI_INMOVESIZE;
    if (!popUpIsOpen && (state.flags & Modes) == 0)
        return false;
    EndMenu();
    if (state.hwndMoveSize != nullptr)
        SendMessageA(state.hwndMoveSize, WM_CANCELMODE, 0, 0);
    return true;
}

// Centred on the first screen.
RECT FirstBounds() {
    const Screen screen = ConnectedScreens().front();
    const RECT& area = screen.workArea;
    RECT bounds = screen.dpi.ToPixels({0, 0, DesignSize.width, DesignSize.height});
    bounds.right = std::min(bounds.right, area.right - area.left);
    bounds.bottom = std::min(bounds.bottom, area.bottom - area.top);
    OffsetRect(&bounds, (area.left + area.right - bounds.right) / 2,
               (area.top + area.bottom - bounds.bottom) / 2);
    return bounds;
}

} // namespace

MainWindow::MainWindow(ProgramState& program, WindowsDesktop& desktop)
    : Window(MainFormName),
      program_(program),
      desktop_(desktop),
      forms_(desktop.Owner()),
      form_(program, desktop.Interfaces(), *this, forms_, sckMaster_, serverSockets_),
      tmrTimeout_(form_.controls.tmrTimeout),
      tmrMaster_(form_.controls.tmrMaster),
      tmrIcon_(form_.SysTray.tmrIcon),
      tmrPorts_(form_.controls.tmrPorts),
      tmrDeadlines_(form_.controls.tmrDeadlines),
      tmrSorting_(form_.controls.tmrSorting),
      tmrTreeRest_(form_.controls.tmrTreeRest),
      trvGames_(form_.controls.trvGames),
      lvwServers_(form_.controls.lvwServers, NameColumn + 1),
      lvwPlayers_(form_.controls.lvwPlayers, 1),
      lvwServVars_(form_.controls.lvwServVars, 1),
      txtSearch_(form_.controls.txtSearch),
      tbMain_(form_.controls.tbMain),
      sbMain_(form_.controls.sbMain),
      pbScanning_(form_.controls.pbScanning) {}

MainWindow::~MainWindow() {
    desktop_.Events().updateWindows = nullptr;
    desktop_.Events().preTranslate = nullptr;
    desktop_.SetMainWindow(nullptr);
}

void MainWindow::Show() {
    LoadMenus();
    icon_ = LoadIconOfSize(ApplicationIcon, GetSystemMetrics(SM_CXICON));
    smallIcon_ = LoadIconOfSize(ApplicationIcon, GetSystemMetrics(SM_CXSMICON));
    Creation creation{MainWindowClass, ApplicationTitle};
    creation.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    creation.bounds = FirstBounds();
    creation.menu = mainMenu_;
    creation.icon = icon_.Get();
    creation.smallIcon = smallIcon_.Get();
    Create(creation);

    HearLesserPrograms();

    desktop_.SetMainWindow(Handle());
    desktop_.Events().updateWindows = [this] { ShowChanges(); };
    desktop_.Events().preTranslate = [this](MSG& message) { return PreTranslate(message); };

    form_.Form_Load();
    loaded_ = true;
    Arrange();
    ShowWindow(Handle(), SW_SHOWNORMAL);
    PostEvent([this] { form_.Form_Activate(); });
}

// The taskbar and a second start may have fewer rights than a program that runs as administrator; then
// Windows blocks their messages unless it is told otherwise.
void MainWindow::HearLesserPrograms() const noexcept {
    for (const UINT message : {taskbarCreatedMessage_, StartedAgainMessage()})
        ChangeWindowMessageFilterEx(Handle(), message, MSGFLT_ALLOW, nullptr);
}

Answer MainWindow::OnCreate() {
    CreateControls();
    ConnectEvents();
    ApplyLook(Dpi::OfWindow(Handle()));
    return Handled;
}

void MainWindow::CreateControls() {
    using Selection = ListViewControl::Selection;
    const Dpi dpi = Dpi::OfWindow(Handle());
    // In tab order.
    trvGames_.Create(Handle(), ID_trvGames, "Games");
    lvwServers_.Create(Handle(), ID_lvwServers, "Servers", Selection::SeveralRows, dpi);
    lvwPlayers_.Create(Handle(), ID_lvwPlayers, "Players", Selection::OneRow, dpi);
    lvwServVars_.Create(Handle(), ID_lvwServVars, "Variables", Selection::OneRow, dpi);
    txtSearch_.Create(Handle(), ID_txtSearch); // in front of the toolbar, as it is created earlier
    tbMain_.Create(Handle(), ID_tbMain, ID_tbMainButton);
    sbMain_.Create(Handle(), ID_sbMain);
    pbScanning_.Create(sbMain_.Handle(), ID_pbScanning);
    lastFocus_ = lvwServers_.Handle();
}

// Fonts and images for a DPI. Window and controls get the new ones before the old ones are destroyed.
void MainWindow::ApplyLook(Dpi dpi) {
    dpi_ = dpi;
    ShowIcons();
    FontHandle font = MessageFont(dpi);
    const int small = dpi.Scaled(SmallPicture);
    Images treePictures(small, TreePictures());
    Images listPictures(small, {"locked", "ascending", "descending"});
    listPictures.AddFlags();

    trvGames_.SetFont(font.Get());
    for (ListViewControl* list : {&lvwServers_, &lvwPlayers_, &lvwServVars_}) {
        list->SetFont(font.Get());
        list->ChangeDpi(dpi);
    }
    txtSearch_.SetLook(dpi, font.Get());
    tbMain_.SetLook(dpi, font.Get());
    sbMain_.SetLook(dpi, font.Get());
    pbScanning_.SetDpi(dpi);

    std::swap(treePictures_, treePictures);
    std::swap(listPictures_, listPictures);
    trvGames_.SetImages(treePictures_);
    lvwServers_.SetImages(listPictures_, ListViewControl::Pictures::OfRowsAndHeaders);
    lvwPlayers_.SetImages(listPictures_, ListViewControl::Pictures::OfHeaders);
    font_ = std::move(font);
}

// Also the pictures of single games, where there are any.
std::vector<std::string> MainWindow::TreePictures() const {
    std::vector<std::string> keys = {"fldrcls",   "fldrop",    "checked",   "unchecked",
                                     "family-q3", "family-d3", "family-hl", "favorite"};
    for (std::int32_t game = 1; game <= program_.GameNum; ++game)
        keys.push_back(program_.Games[game].GameShort);
    return keys;
}

// The class has icons for the system's DPI, which the tray shows as well.
void MainWindow::ShowIcons() {
    IconHandle large = LoadIconOfSize(ApplicationIcon, dpi_.Scaled(LargePicture));
    IconHandle small = LoadIconOfSize(ApplicationIcon, dpi_.Scaled(SmallPicture));
    SendMessageA(Handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.Get()));
    SendMessageA(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.Get()));
    captionIcon_ = std::move(large);
    smallCaptionIcon_ = std::move(small);
}

// The bars dock by themselves and report their geometry; the form lays out the rest from it.
void MainWindow::Arrange() {
    if (!IsIconic(Handle())) {
        ArrangeToolbar();
        sbMain_.Dock();
        form_.controls.tbMain.height = dpi_.ToTwips(tbMain_.Height());
    }
    form_.Form_Resize();
    FlushModels();
}

void MainWindow::ArrangeToolbar() {
    RECT inner{};
    GetClientRect(Handle(), &inner);
    tbMain_.Wrap(inner.right);
    SearchBoxPlace place;
    if (form_.controls.txtSearch.visible) {
        const SIZE buttons = tbMain_.ButtonsSize();
        place = PlaceSearchBox(InnerSize().width, {dpi_.ToTwips(buttons.cx), dpi_.ToTwips(buttons.cy)},
                               dpi_.ToTwips(txtSearch_.BestHeight()));
        txtSearch_.MoveTo(dpi_.ToPixels(place.box));
    }
    tbMain_.SetAddedHeight(dpi_.ToPixels(place.addedHeight));
    tbMain_.Dock();
}

// A box that vanishes with the focus leaves it to the list.
void MainWindow::ShowSearchBox() {
    if (!txtSearch_.Flush())
        return;
    if (!form_.controls.txtSearch.visible) {
        if (lastFocus_ == txtSearch_.Handle())
            lastFocus_ = lvwServers_.Handle();
        if (txtSearch_.HasFocus())
            SetFocus(lvwServers_.Handle());
    }
    Arrange();
}

void MainWindow::MoveListsToLayout() {
    const MainLayout& layout = form_.controls.layout;
    if (layout == shownLayout_)
        return;
    shownLayout_ = layout;
    trvGames_.MoveTo(dpi_.ToPixels(layout.trvGames));
    lvwServers_.MoveTo(dpi_.ToPixels(layout.lvwServers));
    lvwPlayers_.MoveTo(dpi_.ToPixels(layout.lvwPlayers));
    lvwServVars_.MoveTo(dpi_.ToPixels(layout.lvwServVars));
}

void MainWindow::FlushModels() noexcept {
    if (Handle() == nullptr || !loaded_ || std::exchange(flushing_, true))
        return;
    Guarded("FlushModels", [this] {
        ShowSearchBox();
        MoveListsToLayout();
        trvGames_.Flush();
        for (ListViewControl* const list : {&lvwServers_, &lvwPlayers_, &lvwServVars_}) {
            list->Flush();
            serverSockets_.NoteArrivals();
        }
        tbMain_.Flush();
        sbMain_.Flush();
        pbScanning_.Flush();
        const ProgressBar& progress = form_.controls.pbScanning;
        taskbarProgress_.Show(Handle(), progress.active, progress.Value(), progress.Maximum());
        FlushMenus();
    });
    flushing_ = false;
}

// Every button of the toolbar and a few rows of each list can be seen, as far as the screen is large enough.
Answer MainWindow::OnSizeLimits(MINMAXINFO& limits) {
    if (!loaded_)
        return NotHandled;
    RECT outer{};
    RECT inner{};
    GetWindowRect(Handle(), &outer);
    GetClientRect(Handle(), &inner);
    if (IsIconic(Handle()) || inner.right == 0)
        return NotHandled;
    const LONG frameWidth = outer.right - outer.left - inner.right;
    const LONG frameHeight = outer.bottom - outer.top - inner.bottom;
    const RECT least = dpi_.ToPixels({0, 0, LeastSize.width, LeastSize.height});
    const LONG width = std::max<LONG>(least.right, tbMain_.LeastWidth());
    limits.ptMinTrackSize.x = std::min<LONG>(width + frameWidth, GetSystemMetrics(SM_CXMAXIMIZED));
    limits.ptMinTrackSize.y = std::min<LONG>(least.bottom + frameHeight, GetSystemMetrics(SM_CYMAXIMIZED));
    return Handled;
}

Answer MainWindow::OnSize(WPARAM /*kind*/) {
    if (loaded_)
        Arrange();
    return Handled;
}

Answer MainWindow::OnDpiChanged(unsigned dotsPerInch, const RECT& suggested) {
    ApplyLook(Dpi(dotsPerInch));
    shownLayout_ = {};
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    if (loaded_)
        Arrange();
    return Handled;
}

// Several settings change the font; it is not documented which one reports the text size.
Answer MainWindow::OnSettingChanged(WPARAM /*which*/) {
    const FontHandle font = MessageFont(dpi_);
    if (!IsSameFont(font.Get(), font_.Get()))
        ApplyLook(dpi_);
    return OnThemeChanged();
}

Answer MainWindow::OnThemeChanged() {
    if (loaded_)
        Arrange();
    return NotHandled;
}

Answer MainWindow::OnSystemColorsChanged() {
    for (const Control* control :
         std::initializer_list<const Control*>{&trvGames_, &lvwServers_, &lvwPlayers_, &lvwServVars_,
                                               &txtSearch_, &tbMain_, &sbMain_, &pbScanning_})
        SendMessageA(control->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    return NotHandled;
}

Answer MainWindow::OnClose() {
    form_.Unload();
    return Handled;
}

// Returns whether something was open, and if so calls ContinueClosing later: modal loops deliver timers, too.
bool MainWindow::CancelDialogs() {
    const bool menu = CancelMenuMode(popUpIsOpen_);
    const bool dialog = desktop_.Prompts().CancelOpenBox();
    if (menu || dialog)
        SetTimer(Handle(), ClosingTimer, ClosingInterval, nullptr);
    else
        KillTimer(Handle(), ClosingTimer);
    return menu || dialog;
}

// Not every dialog reports that it waits: message boxes and dialogs of the system do not.
Answer MainWindow::OnEnable(bool enabled) {
    if (enabled)
        KillTimer(Handle(), UpdateTimer);
    else
        SetTimer(Handle(), UpdateTimer, UpdateInterval, nullptr);
    return NotHandled;
}

// A dialog that does not close is destroyed with the window: nothing is lost.
Answer MainWindow::OnTimer(UINT_PTR id) {
    if (id == UpdateTimer) {
        FlushModels();
        return Handled;
    }
    if (id != ClosingTimer)
        return NotHandled;
    if (++closingAttempts_ < MostClosingAttempts)
        form_.ContinueClosing();
    else
        form_.EndSession();
    return Handled;
}

Answer MainWindow::OnQueryEndSession() {
    return TRUE;
}

Answer MainWindow::OnEndSession(bool ending) {
    if (ending)
        form_.EndSession();
    return Handled;
}

} // namespace quarn
