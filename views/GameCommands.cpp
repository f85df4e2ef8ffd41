#include "views/GameCommands.h"

#include "launch/modGameStart.h"
#include "launch/modMonitor.h"
#include "support/Trap.h"

#include <string>

namespace quarn {

namespace {

// Values of QuitAfterStart; any other one asks for no action.
constexpr std::int32_t MinimizeAfterStart = 1;
constexpr std::int32_t ExitAfterStart = 2;

} // namespace

void GameCommands::Connect(const char* routine, bool asSpectator, GivenRows rows) {
    servers_.CommandOnServer(
        CommandKind::Ordinary, routine, OnError::LogAndShow, std::move(rows),
        [this, asSpectator](const TargetRows& targets, std::int32_t index) {
            NoteVisit(targets, index);
            const std::string game = form_.program.CurrentGame;
            if (StartGame(form_.program, form_.desktop, form_.program.Servers[index], asSpectator))
                ActAfterLaunch();
            else
                dialogs_.ShowGameSetup(game);
        });
}

// A launch that fails counts as a visit, too.
void GameCommands::NoteVisit(const TargetRows& targets, std::int32_t index) {
    form_.program.Servers[index].LastVisit = form_.desktop.clock.Now().time;
    const std::int32_t row = targets.RowNumber(form_.controls.lvwServers, form_.program);
    if (row != 0)
        servers_.UpdateServerListItem(row, index);
}

void GameCommands::ActAfterLaunch() {
    if (form_.program.QuitAfterStart == MinimizeAfterStart)
        form_.window.SetState(WindowState::Minimized);
    else if (form_.program.QuitAfterStart == ExitAfterStart)
        unload_();
}

void GameCommands::mnuServMonitor_Click(GivenRows rows) {
    servers_.CommandOnServer(CommandKind::Ordinary, "mnuServMonitor_Click", OnError::Log, std::move(rows),
                             [this](const TargetRows&, std::int32_t index) {
                                 MonitorWithVelmar(form_.program, form_.desktop,
                                                   AddressText(form_.program.Servers[index]));
                             });
}

} // namespace quarn
