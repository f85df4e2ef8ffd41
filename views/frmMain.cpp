#include "views/frmMain.h"

#include "core/Version.h"
#include "core/modCommonSubs.h"
#include "core/modMain.h"
#include "query/clsIPLocation.h"
#include "support/Trap.h"
#include "views/ColumnWidths.h"
#include "views/EmptyTexts.h"
#include "views/LayoutRules.h"
#include "views/ToolbarButtons.h"

#include <functional>
#include <string>
#include <utility>

namespace quarn {

namespace {

std::string TitleAndVersion() {
    return std::string(ApplicationTitle) + " " + VersionText;
}

} // namespace

frmMain::frmMain(ProgramState& program, Desktop& desktop, FormWindow& window, ModalForms& forms,
                 UdpSocket& sckMaster, UdpSocketFactory& serverSockets, EngineTable engines)
    : controls(sckMaster, serverSockets, desktop.clock),
      program_(program),
      desktop_(desktop),
      window_(window),
      gate_(desktop.events),
      context_{program, desktop, window, controls, gate_, engines},
      SysTray(desktop.notifications),
      HTMLHelp(*program.AppLog, desktop.help),
      details(context_),
      countries(context_),
      servers(context_, details, countries),
      listFiles(program, desktop.files, gate_),
      tree(context_, servers, listFiles),
      master(context_, servers),
      scan(context_, servers, details),
      dialogs(context_, forms, servers, tree, [this] { RefreshInterface(); }),
      game(context_, servers, dialogs, [this] { Unload(); }) {
    ApplyColumnWidths(program.ColumnWidths, controls);
    SetEmptyTexts(context_, tree);
    desktop.prompts.AroundEach = [this](const std::function<void()>& show) {
        const CommandGate::DialogActivity open(gate_);
        show();
    };
    gate_.Idle = [this] { program_.AppLog->TellWriteFault(); };
    sckMaster.DataArrival = [this](std::int32_t bytes) { master.sckMaster_DataArrival(bytes); };
    sckMaster.SendFailed = [this](const std::string& description) {
        program_.AppLog->Log(MainFormName, "mnuServerListGet_Click", 0, description);
    };
    controls.tmrTimeout.Tick = [this] { scan.tmrTimeout_Timer(); };
    SysTray.LButtonDblClk = [this] { SysTray_LButtonDblClk(); };
    SysTray.RButtonUp = [this] { SysTray_RButtonUP(); };
}

frmMain::~frmMain() {
    desktop_.prompts.AroundEach = nullptr;
}

void frmMain::Form_Load() {
    context_.Command(CommandKind::Ordinary, "Form_Load", OnError::LogAndShow, [this] {
        window_.SetCaption(TitleAndVersion());
        LoadServices();
        tree.AddFixedNodes();
        tree.RefreshTreeView();
        tree.RefreshFavMenu();

        TreeView& nodes = controls.trvGames;
        if (program_.LastGame < 1 || program_.LastGame > nodes.Count())
            program_.LastGame = 1;
        const std::string selected = nodes.At(program_.LastGame).key;
        nodes.Select(selected);
        nodes.Node(selected).expanded = true;
        RefreshInterface();
        tree.trvGames_NodeClick(selected);
        servers.lvwServers_Click();

        servers.RestoreSort();
        SelectLastServer();
        program_.AppLog->Log(MainFormName, "Form_Load", 0, "Form loaded");
    });
}

void frmMain::LoadServices() {
    SysTray.SetSourceWindow(window_);
    SysTray.ChangeIcon(window_.Icon());
    HTMLHelp.CHMFile = program_.AppPath + "..\\Kestrune.chm"; // shared by the maker's programs
    HTMLHelp.HelpWindow = "Main";
}

void frmMain::SelectLastServer() {
    if (program_.LastServer < 1 || program_.LastServer > controls.lvwServers.RowCount())
        return;
    controls.lvwServers.SelectOnly(program_.LastServer);
    controls.lvwServers.EnsureVisible(program_.LastServer);
    servers.lvwServers_Click();
}

void frmMain::Form_Activate() {
    if (activated_)
        return;
    activated_ = true;
    context_.Trapped("Form_Activate", OnError::LogAndShow, [&] {
        RestoreWindowPosition();
        PlaceInStatusPanel(controls.pbScanning, controls.sbMain, ProgressPanel);
        if (const std::int32_t row = controls.lvwServers.SelectedRow(); row != 0)
            controls.lvwServers.EnsureVisible(row); // in the window's final size
        if (controls.trvGames.Children("games").empty())
            AskForGameSetup();
    });
}

// A window that starts minimized or maximized also gets the stored position: it is restored to it, and it is
// stored at the end.
void frmMain::RestoreWindowPosition() {
    const WindowState state = FirstState();
    if (program_.RemWinPos == 1) {
        window_.SetBounds({program_.WinLeft, program_.WinTop, program_.WinWidth, program_.WinHeight});
    } else if (state == WindowState::Normal) {
        const TwipsSize screen = window_.ScreenSize();
        TwipsRect bounds = window_.Bounds();
        bounds.left = screen.width / 2 - bounds.width / 2;
        bounds.top = screen.height / 2 - bounds.height / 2;
        window_.SetBounds(bounds);
    }
    if (state != WindowState::Normal)
        window_.SetState(state);
}

// A settings file may hold any number.
WindowState frmMain::FirstState() const {
    if (program_.WinState == static_cast<std::int32_t>(WindowState::Maximized))
        return WindowState::Maximized;
    const bool isMinimized = program_.WinState == static_cast<std::int32_t>(WindowState::Minimized);
    return isMinimized && program_.ShowAtStart == 0 ? WindowState::Minimized : WindowState::Normal;
}

void frmMain::AskForGameSetup() {
    context_.Command(CommandKind::Ordinary, "Form_Activate", OnError::LogAndShow, [this] {
        program_.AppLog->ErrorMessage("Quarn has detected that no game has been set up yet.\r\n"
                                      "Therefore, the game setup menu will be opened now, please set up\r\n"
                                      "the games to your liking.");
        dialogs.ShowGameSetup();
    });
}

void frmMain::Form_Resize() {
    const bool wasMinimized = std::exchange(minimized_, window_.State() == WindowState::Minimized);
    if (program_.MinToTray != 0 && !minimized_) {
        window_.SetCaption(TitleAndVersion());
    } else if (program_.MinToTray != 0 && !wasMinimized) {
        SysTray.MinToSysTray();
        SysTray.ChangeToolTip(TitleAndVersion());
    }
    if (minimized_)
        return;
    controls.layout = LayOut(window_.InnerSize(), controls.tbMain.height);
    if (controls.txtSearch.visible)
        EndAbove(controls.layout, controls.sbMain.top);
    PlaceInStatusPanel(controls.pbScanning, controls.sbMain, ProgressPanel);
}

void frmMain::RefreshInterface() {
    window_.SetTopMost(program_.KeepOnTop == 1);
    scan.ApplyTimeout();
    controls.txtSearch.visible = program_.SearchBox != 0;
    if (!controls.txtSearch.visible)
        controls.txtSearch.text.clear();
    servers.txtSearch_Change();
}

void frmMain::Unload() {
    desktop_.prompts.SetClosing(true);
    gate_.Close([this] { Form_Unload(Boxes::Shown); }, [this] { return !window_.CancelDialogs(); });
    ContinueClosing();
}

// A running command ends only when the message box or dialog that it waits for is closed.
void frmMain::ContinueClosing() {
    if (!window_.CancelDialogs())
        gate_.ContinueClosing();
}

void frmMain::EndSession() {
    desktop_.prompts.SetClosing(true);
    gate_.CloseAtOnce([this] { Form_Unload(Boxes::None); });
    if (destroyed_)
        return;
    // Unloading has begun and waits for an answer that will not arrive in time.
    context_.Trapped("Form_Unload", OnError::Log, [this] { StoreAtUnload(OnError::Log); });
    DestroyOnce();
}

void frmMain::Form_Unload(Boxes boxes) {
    const OnError onError = boxes == Boxes::Shown ? OnError::LogAndShow : OnError::Log;
    desktop_.prompts.SetClosing(boxes == Boxes::None);
    context_.Trapped("Form_Unload", onError, [&] {
        // Datagrams that arrive from now on are not read.
        controls.sckServer.CloseAll();
        controls.sckMaster.Close();
        HTMLHelp.CloseFile();
        if (boxes == Boxes::Shown)
            program_.AppLog->HandleAppErrors();
        StoreAtUnload(onError);
    });
    DestroyOnce();
}

void frmMain::StoreAtUnload(OnError onError) {
    if (std::exchange(stored_, true))
        return;
    if (program_.SaveListAtExit != 0)
        context_.Trapped("Form_Unload", onError, [&] { tree.SaveShownList(); });
    program_.IPLocation->DestroyDatabase();
    tree.RecordSelection();
    StoreWindowPosition();
    program_.ColumnWidths = ColumnWidthsText(controls);
    SysTray.RemoveFromSysTray();
    SaveSettings(program_, desktop_);
    program_.AppLog->Log(MainFormName, "Form_Unload", 0, "Application terminated normally", false, false,
                         true);
}

void frmMain::DestroyOnce() {
    if (!std::exchange(destroyed_, true))
        window_.Destroy();
}

void frmMain::StoreWindowPosition() {
    const WindowState state = window_.State();
    program_.WinState = static_cast<std::int32_t>(state);
    if (state != WindowState::Normal)
        return;
    const TwipsRect bounds = window_.Bounds();
    program_.WinTop = bounds.top;
    program_.WinLeft = bounds.left;
    program_.WinHeight = bounds.height;
    program_.WinWidth = bounds.width;
}

void frmMain::StartedAgain() {
    context_.Trapped("StartedAgain", OnError::LogAndShow, [&] {
        if (gate_.Closing())
            return;
        if (SysTray.InTray())
            SysTray.BringWindowBack();
        window_.ComeToFront();
    });
}

void frmMain::mnuSysOpen_Click() {
    context_.Trapped("mnuSysOpen_Click", OnError::LogAndShow, [&] { SysTray.BringWindowBack(); });
}

void frmMain::mnuSysQuit_Click() {
    context_.Trapped("mnuSysQuit_Click", OnError::LogAndShow, [&] {
        SysTray.RemoveFromSysTray();
        Unload();
    });
}

void frmMain::mnuInfoHelp_Click() {
    context_.Trapped("mnuInfoHelp_Click", OnError::LogAndShow,
                     [&] { HTMLHelp.ShowTopic(window_.Reference(), "Progs\\Quarn\\Main.htm"); });
}

void frmMain::lvwServers_DblClick(std::uint32_t rowIdentity) {
    const std::int32_t row = controls.lvwServers.RowOf(rowIdentity, 1);
    if (row != 0)
        game.mnuServConnectPlay_Click(TargetRows(controls.lvwServers, program_, row));
}

void frmMain::tbMain_ButtonClick(std::string_view key) {
    RunToolbarButton(key, *this);
}

} // namespace quarn
