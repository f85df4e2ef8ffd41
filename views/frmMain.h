#pragma once

// The main form: owns the parts that do the work and connects them, decides what happens when its window is
// loaded, activated, resized and closed, and routes toolbar buttons. Handlers are named after control and
// event; those of a part (tree, list, scan, master query) belong to that part.

#include "controls/UdpSocket.h"
#include "core/modDefinitions.h"
#include "desktop/Desktop.h"
#include "desktop/FormWindow.h"
#include "support/clsHTMLHelp.h"
#include "support/clsSysTray.h"
#include "views/CommandGate.h"
#include "views/CommandTarget.h"
#include "views/CountryLookup.h"
#include "views/DialogCommands.h"
#include "views/GameCommands.h"
#include "views/GamesTree.h"
#include "views/MainControls.h"
#include "views/MainFormContext.h"
#include "views/MasterQuery.h"
#include "views/ModalForms.h"
#include "views/ScanEngine.h"
#include "views/ServerDetails.h"
#include "views/ServerListFiles.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <string_view>

namespace quarn {

class frmMain {
  public:
    frmMain(ProgramState& program, Desktop& desktop, FormWindow& window, ModalForms& forms,
            UdpSocket& sckMaster, UdpSocketFactory& serverSockets, EngineTable engines = StandardEngines());
    ~frmMain();
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;

    MainControls controls;

    void Form_Load();
    void Form_Activate();
    void Form_Resize();

    // The window is to be closed: ends every wait, cancels everything that is open in front of the window,
    // and unloads when all of it is closed.
    void Unload();

    // Something was open in front of the window when it was to be closed; it may be closed now.
    void ContinueClosing();

    // The Windows session ends: unloads at once without a question, even if unloading has already begun.
    void EndSession();

    // The current selection.
    CommandTarget Target() const {
        return {TargetRows(controls.lvwServers, program_), controls.trvGames.SelectedKey()};
    }

    void mnuFileQuit_Click() { Unload(); }
    void mnuInfoHelp_Click();
    void tbMain_ButtonClick(std::string_view key);

    void ShowFavoritesMenu() { window_.PopUp(PopupMenu::AddToFavorites); }

    // Joins the server of a row, even if a scan has moved the selection since.
    void lvwServers_DblClick(std::uint32_t rowIdentity);

    // The program was started a second time: shows the window.
    void StartedAgain();

    void mnuSysOpen_Click();
    void mnuSysQuit_Click();
    void SysTray_LButtonDblClk() { mnuSysOpen_Click(); }
    void SysTray_RButtonUP() { window_.PopUp(PopupMenu::SysTray); }

    // Applies the always-on-top setting and the scan timer's interval.
    void RefreshInterface();

  private:
    void LoadServices();
    void AskForGameSetup();
    enum class Boxes { None, Shown };
    void Form_Unload(Boxes boxes);
    void StoreAtUnload(OnError onError);
    void DestroyOnce();
    void StoreWindowPosition();
    void RestoreWindowPosition();
    WindowState FirstState() const;
    void SelectLastServer();

    ProgramState& program_;
    Desktop& desktop_;
    FormWindow& window_;
    CommandGate gate_;
    MainFormContext context_;
    bool activated_ = false;
    bool minimized_ = false;
    bool stored_ = false;
    bool destroyed_ = false;

  public:
    clsSysTray SysTray;
    clsHTMLHelp HTMLHelp;
    ServerDetails details;
    CountryLookup countries;
    ServerListView servers;
    ServerListFiles listFiles;
    GamesTree tree;
    MasterQuery master;
    ScanEngine scan;
    DialogCommands dialogs;
    GameCommands game;
};

} // namespace quarn
