#include "views/ScanEngine.h"

#include "base/Conversions.h"
#include "base/Scope.h"
#include "query/modGamQuery.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace quarn {

namespace {

// A server sends at most three replies; a flood of datagrams must not delay the scan.
constexpr int MostFurtherReplies = 16;

// The value of ReplyState if the timer ticked before any reply.
constexpr std::int32_t NoAnswer = 2;

constexpr std::int32_t FallbackTimeout = 1000;

} // namespace

ScanEngine::ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details)
    : form_(form), servers_(servers), details_(details), results_(form, servers, details) {
    QueryPorts& ports = form_.controls.sckServer;
    ports.DataArrival = [this](std::uint32_t query, std::int32_t tick) {
        sckServer_DataArrival(query, tick);
    };
    ports.Failed = [this](const std::string& description) { LogFailure(description); };
}

void ScanEngine::mnuServRefreshAll_Click() {
    Start(nullptr, "mnuServRefreshAll_Click");
}

void ScanEngine::mnuServRefresh_Click(GivenRows rows) {
    Start(std::make_shared<const TargetRows>(servers_.TargetsOf(std::move(rows))), "mnuServRefresh_Click");
}

// Sequential scans nest. A second scan ends a running one that queries several servers at once.
void ScanEngine::Start(std::shared_ptr<const TargetRows> selected, const char* routine) {
    const bool atOnce = form_.program.Simultaneous > 1 || parallel_ != nullptr;
    form_.gate.Run(atOnce ? CommandKind::ReplacesList : CommandKind::Ordinary,
                   [this, selected = std::move(selected), routine] { Scan(selected.get(), routine); });
}

void ScanEngine::Scan(const TargetRows* selected, const char* routine) {
    if (!form_.gate.ScanMayStart())
        return form_.program.AppLog->Log(MainFormName, routine, 0, "Too many scans run inside each other");
    const CommandGate::ScanActivity activity(form_.gate);
    const std::deque<std::uint32_t> wanted = ShownServers(selected);
    ScanProgress progress(form_);
    PrepareForScan(progress, static_cast<std::int32_t>(wanted.size()));
    form_.Trapped(routine, OnError::Log, [&] {
        if (form_.program.Simultaneous > 1)
            ScanAtOnce(wanted, progress);
        else
            ScanRows(wanted, selected == nullptr, progress);
    });
    if (!form_.gate.Closing())
        form_.Trapped(routine, OnError::Log, [&] { EndScan(progress); });
}

void ScanEngine::PrepareForScan(ScanProgress& progress, std::int32_t serversToAsk) {
    form_.Trapped("PrepareForScan", OnError::Log, [&] {
        failureLogged_ = false;
        results_.Begin();
        progress.Begin(serversToAsk);
        form_.controls.tmrTimeout.SetEnabled(form_.program.Simultaneous <= 1);
    });
}

// The identities of the servers that the rows show.
std::deque<std::uint32_t> ScanEngine::ShownServers(const TargetRows* selected) const {
    const ListView& list = form_.controls.lvwServers;
    std::deque<std::uint32_t> shown;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        if (selected == nullptr || selected->Includes(list.Row(row), form_.program))
            shown.push_back(list.Row(row).subject);
    return shown;
}

// Rows may be moved or removed meanwhile, so they are looked up by the server that they show.
void ScanEngine::ScanRows(const std::deque<std::uint32_t>& wanted, bool isWholeList, ScanProgress& progress) {
    ListView& list = form_.controls.lvwServers;
    auto nextWanted = wanted.begin();
    std::int32_t i = 0;
    std::int32_t row = 0;
    for (const std::uint32_t shown : ShownServers(nullptr)) {
        ++i;
        const bool isWanted = nextWanted != wanted.end() && *nextWanted == shown;
        if (isWanted)
            ++nextWanted;
        const std::int32_t found = list.RowShowing(shown, row + 1);
        if (found != 0)
            row = found;
        if (found == 0 || !isWanted)
            continue;
        if (isWholeList) {
            progress.ShowNumber(i);
            list.SelectOnly(row);
            list.EnsureVisible(row);
        }
        progress.Reach(i);
        UpdateServer(row, progress);
        if (form_.gate.Closing())
            return;
        if (form_.gate.ReplacementWaits())
            ScanAborted = true;
        if (ScanAborted)
            return;
    }
}

void ScanEngine::ScanAtOnce(const std::deque<std::uint32_t>& wanted, ScanProgress& progress) {
    ParallelScan scan(form_, results_, progress);
    const Restore running(parallel_, &scan);
    scan.Run(wanted, std::min(form_.program.Simultaneous, MostSimultaneous), [this] { return MustStop(); });
    if (form_.gate.ReplacementWaits())
        ScanAborted = true;
}

void ScanEngine::UpdateServer(std::int32_t row, ScanProgress& progress) {
    form_.Trapped("UpdateServer", OnError::Log, [&] {
        const QueryTarget target = results_.TargetOf(row);
        const Outcome outcome = QueryServer(target);
        if (outcome == Outcome::Closing)
            return;
        progress.Count(outcome == Outcome::Answered);
        details_.RefreshPlayers();
        details_.RefreshVariables();
        if (const std::int32_t rowNow = results_.RowOf(target, row); rowNow != 0)
            servers_.UpdateServerListItem(rowNow);
    });
}

ScanEngine::Outcome ScanEngine::QueryServer(const QueryTarget& target) {
    ProgramState& program = form_.program;
    QueryPorts& ports = form_.controls.sckServer;
    program.CurrentServer = target.index;
    ports.CloseOf(target.server);

    QuerySentTick = form_.desktop.clock.TickCount();
    const ServerRecord& server = program.Servers[target.index];
    const ServerQuery query =
        ports.Ask(target, server.Address, server.Port, QuerySentTick, [&](UdpSocket& socket) {
            SendServerQuery(*program.AppLog, results_.EngineOf(target.index), socket);
        });
    const Outcome outcome = WaitForReply(query);
    if (outcome == Outcome::Closing)
        return outcome;
    program.CurrentServer = target.index;
    if (outcome == Outcome::NoAnswer)
        results_.StoreNoAnswer(target.index);
    ReplyState = 0;
    QuerySentTick = 0;

    // A server may answer in several datagrams. Those that have arrived are read before the row is shown.
    ports.Finish(query.number);
    for (int count = 0; count < MostFurtherReplies; ++count) {
        const auto reply = ports.Take(query.number, form_.desktop.clock.TickCount());
        if (!reply)
            break;
        TakeReply(*reply);
    }
    return outcome;
}

ScanEngine::Outcome ScanEngine::WaitForReply(const ServerQuery& query) {
    const Restore open(openQuery_, query.number); // a nested query hides the outer one
    const QueryPorts& ports = form_.controls.sckServer;
    // A nested scan may have queried the same server again and so closed the port.
    const auto isReplaced = [&] { return query.number != 0 && ports.Find(query.number).number == 0; };
    const auto isAnswered = [&] { return ports.Find(query.number).replies > 0; };
    // If a nested scan has disabled the timer, only a reply or "stop" ends the wait.
    const bool waited = form_.gate.WaitUntil([&] {
        return ReplyState >= 1 || isAnswered() || isReplaced() ||
               (MustStop() && !form_.controls.tmrTimeout.Enabled());
    });
    if (!waited)
        return Outcome::Closing;
    const bool isTimedOut = ReplyState == NoAnswer && !isAnswered() && !isReplaced();
    return isTimedOut ? Outcome::NoAnswer : Outcome::Answered;
}

void ScanEngine::sckServer_DataArrival(std::uint32_t query, std::int32_t tick) {
    form_.Trapped("sckServer_DataArrival", OnError::Log, [&] {
        std::optional<ServerReply> reply = form_.controls.sckServer.Take(query, tick);
        if (!reply)
            return;
        if (parallel_ != nullptr && !reply->query.finished)
            return parallel_->OnReply(std::move(*reply));
        if (query == openQuery_)
            ++ReplyState;
        TakeReply(*reply);
        if (!reply->query.finished)
            return;
        // A late reply. Rows wait while the list is being sorted or saved.
        form_.Command(CommandKind::Ordinary, "sckServer_DataArrival", OnError::Log,
                      [this, target = reply->query.target] { results_.Show(target); });
    });
}

void ScanEngine::TakeReply(const ServerReply& reply) {
    const ServerQuery& query = reply.query;
    const std::int32_t index = results_.IndexOf(query.target);
    if (index == 0)
        return; // deleted since it was queried
    if (query.number == openQuery_)
        form_.program.CurrentServer = index;
    if (!query.finished || query.replies == 1)
        form_.program.Servers[index].Ping = TicksBetween(query.sentTick, reply.tick);
    results_.StoreReply(index, reply.datagram);
}

// One log entry for each scan: without free sockets, every further server would add one.
void ScanEngine::LogFailure(const std::string& description) {
    if (!std::exchange(failureLogged_, true))
        form_.program.AppLog->Log(MainFormName, "SendServerQuery", 0, description);
}

void ScanEngine::NoteStandstill() {
    constexpr std::string_view Reason = "; waits until the open menu or dialog is closed";
    ProgressBar& bar = form_.controls.pbScanning;
    if (form_.gate.ScanRuns() && bar.active && !bar.toolTip.ends_with(Reason))
        bar.toolTip += Reason;
}

void ScanEngine::tmrTimeout_Timer() {
    ReplyState = NoAnswer;
}

void ScanEngine::ApplyTimeout() {
    const std::int32_t timeout = form_.program.PingTimeout > 0 ? form_.program.PingTimeout : FallbackTimeout;
    form_.controls.tmrTimeout.SetInterval(timeout);
    form_.controls.sckServer.lifetime = timeout;
}

void ScanEngine::EndScan(ScanProgress& progress) {
    form_.controls.tmrTimeout.SetEnabled(false);
    progress.End(ScanAborted);
    ScanAborted = false;
}

} // namespace quarn
