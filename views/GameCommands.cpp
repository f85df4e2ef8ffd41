#include "views/GameCommands.h"

#include "launch/modGameStart.h"
#include "launch/modMonitor.h"
#include "support/Trap.h"

namespace quarn {

namespace {

// Values of QuitAfterStart; any other one asks for no action.
constexpr std::int32_t MinimizeAfterStart = 1;
constexpr std::int32_t ExitAfterStart = 2;

} // namespace

void GameCommands::Connect(const char* routine, bool asSpectator) {
    form_.Command(CommandKind::Ordinary, routine, OnError::LogAndShow, [this, routine, asSpectator] {
        if (!servers_.TakeSelectedServer())
            return;
        NoteVisit();
        if (StartGame(form_.program, form_.desktop, asSpectator))
            ActAfterLaunch();
        else
            dialogs_.ShowGameSetup();
    });
}

// Also a launch that fails counts as a visit.
void GameCommands::NoteVisit() {
    ProgramState& program = form_.program;
    program.Servers[program.CurrentServer].LastVisit = form_.desktop.clock.Now().time;
    servers_.UpdateServerListItem(form_.controls.lvwServers.SelectedRow());
}

void GameCommands::ActAfterLaunch() {
    if (form_.program.QuitAfterStart == MinimizeAfterStart)
        form_.window.SetState(WindowState::Minimized);
    else if (form_.program.QuitAfterStart == ExitAfterStart)
        unload_();
}

void GameCommands::mnuServMonitor_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServMonitor_Click", OnError::Log, [this] {
        if (servers_.TakeSelectedServer())
            MonitorWithVelmar(form_.program, form_.desktop);
    });
}

} // namespace quarn
