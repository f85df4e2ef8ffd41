#pragma once

// The commands that do something with the selected server's game: join it, or hand the server to Velmar.

#include "views/DialogCommands.h"
#include "views/MainFormContext.h"
#include "views/ServerListView.h"

#include <functional>
#include <utility>

namespace quarn {

class GameCommands {
  public:
    // `unload` closes the main window.
    GameCommands(const MainFormContext& form, ServerListView& servers, DialogCommands& dialogs,
                 std::function<void()> unload)
        : form_(form), servers_(servers), dialogs_(dialogs), unload_(std::move(unload)) {}

    void mnuServConnectPlay_Click() { Connect("mnuServConnectPlay_Click", false); }
    void mnuServConnectSpec_Click() { Connect("mnuServConnectSpec_Click", true); }
    void mnuServMonitor_Click();

  private:
    void Connect(const char* routine, bool asSpectator);
    void NoteVisit();
    void ActAfterLaunch();

    MainFormContext form_;
    ServerListView& servers_;
    DialogCommands& dialogs_;
    std::function<void()> unload_;
};

} // namespace quarn
