#include "views/GameCommands.h"

#include "core/modCommonSubs.h"
#include "launch/JoinQuestion.h"
#include "launch/modGameStart.h"
#include "launch/modMonitor.h"
#include "support/Trap.h"

#include <string>

namespace quarn {

namespace {

// Values of QuitAfterStart; any other value means no action.
constexpr std::int32_t MinimizeAfterStart = 1;
constexpr std::int32_t ExitAfterStart = 2;

} // namespace

void GameCommands::Connect(const char* routine, bool asSpectator, GivenRows rows) {
    servers_.CommandOnServer(CommandKind::Ordinary, routine, OnError::LogAndShow, std::move(rows),
                             [this, asSpectator](const TargetRows& targets, std::int32_t index) {
                                 Join(targets, index, asSpectator);
                             });
}

// While a dialog or a question is open, replies arrive. So the game is started with a copy: what the user was
// shown is what is passed.
void GameCommands::Join(const TargetRows& targets, std::int32_t index, bool asSpectator) {
    const auto indexNow = [&] { return targets.ServerIndex(form_.controls.lvwServers, form_.program); };
    if (NeedsPassword(form_.program.Servers[index])) {
        if (!dialogs_.AskPassword(targets))
            return;
        index = indexNow();
    }
    if (index == 0)
        return;
    const ServerRecord server = form_.program.Servers[index];
    if (!MayStart(server, asSpectator))
        return;
    if (const std::int32_t visited = indexNow(); visited != 0)
        NoteVisit(targets, visited);
    if (StartGame(form_.program, form_.desktop, server, asSpectator))
        ActAfterLaunch();
    else
        dialogs_.ShowGameSetup(GameShortOf(form_.program, server));
}

bool GameCommands::NeedsPassword(const ServerRecord& server) const {
    return form_.program.AskPassword != 0 && server.Locked != 0 && server.Password.empty();
}

bool GameCommands::MayStart(const ServerRecord& server, bool asSpectator) {
    const std::string question = JoinQuestion(form_.program, form_.desktop.locale, server, asSpectator);
    return question.empty() ||
           form_.desktop.prompts.AskYesNo(question, "Join server", Prompts::DefaultButton::No);
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
