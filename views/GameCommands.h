#pragma once

// The commands for the selected server's game: join the server, or pass it to Velmar.

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

    void mnuServConnectPlay_Click(GivenRows rows = {}) {
        Connect("mnuServConnectPlay_Click", false, std::move(rows));
    }
    void mnuServConnectSpec_Click(GivenRows rows = {}) {
        Connect("mnuServConnectSpec_Click", true, std::move(rows));
    }
    void mnuServMonitor_Click(GivenRows rows = {});

  private:
    void Connect(const char* routine, bool asSpectator, GivenRows rows);
    void Join(const TargetRows& targets, std::int32_t index, bool asSpectator);
    bool NeedsPassword(const ServerRecord& server) const;
    bool MayStart(const ServerRecord& server, bool asSpectator);
    void NoteVisit(const TargetRows& targets, std::int32_t index);
    void ActAfterLaunch();

    MainFormContext form_;
    ServerListView& servers_;
    DialogCommands& dialogs_;
    std::function<void()> unload_;
};

} // namespace quarn
