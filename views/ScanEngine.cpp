#include "views/ScanEngine.h"

#include "base/Conversions.h"
#include "base/Scope.h"
#include "core/modCommonSubs.h"
#include "query/modGamQuery.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"

#include <string>
#include <utility>
#include <vector>

namespace quarn {

namespace {

// A server sends three at most; a flood of datagrams must not hold up the scan.
constexpr int MostFurtherReplies = 16;

// What ReplyState holds when the timer came before any reply.
constexpr std::int32_t NoAnswer = 2;

constexpr std::int32_t FallbackTimeout = 1000;

// From one reading of the tick counter to another, across its wrap at 2^32.
std::int32_t Elapsed(std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from));
}

} // namespace

ScanEngine::ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details)
    : form_(form), servers_(servers), details_(details) {}

void ScanEngine::mnuServRefreshAll_Click() {
    form_.gate.Run(CommandKind::Ordinary, [this] { Scan(nullptr, "mnuServRefreshAll_Click"); });
}

void ScanEngine::mnuServRefresh_Click(GivenRows rows) {
    form_.gate.Run(CommandKind::Ordinary, [this, targets = servers_.TargetsOf(std::move(rows))] {
        Scan(&targets, "mnuServRefresh_Click");
    });
}

void ScanEngine::Scan(const TargetRows* selected, const char* routine) {
    if (!form_.gate.ScanMayStart())
        return form_.program.AppLog->Log(MainFormName, routine, 0, "Too many scans run inside each other");
    const CommandGate::ScanActivity activity(form_.gate);
    const auto trapped = [&](auto&& step) { form_.Trapped(routine, OnError::Log, step); };
    PrepareForScan();
    trapped([&] { ScanRows(selected); });
    if (!form_.gate.Closing())
        trapped([&] { EndScan(); });
}

void ScanEngine::PrepareForScan() {
    form_.Trapped("PrepareForScan", OnError::Log, [&] {
        form_.controls.pbScanning.SetMaximum(form_.program.ServerCount);
        form_.controls.tmrTimeout.SetEnabled(true);
        form_.controls.SetStatus(MessagePanel, "Retrieving server stats, please wait.");
    });
}

ScanEngine::ScannedRow ScanEngine::Remember(std::int32_t row) const {
    const ListRow& listed = form_.controls.lvwServers.Row(row);
    return {listed.identity, listed.main.tag};
}

std::int32_t ScanEngine::Find(const ScannedRow& scanned, std::int32_t likely) const {
    const ListView& list = form_.controls.lvwServers;
    const std::int32_t row = list.RowOf(scanned.identity, likely);
    return row != 0 ? row : list.RowTagged(scanned.tag, likely);
}

void ScanEngine::ScanRows(const TargetRows* selected) {
    ListView& list = form_.controls.lvwServers;
    std::vector<ScannedRow> rows;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        rows.push_back(Remember(row));
    for (std::int32_t row = 1; selected != nullptr && row <= list.RowCount(); ++row)
        rows[static_cast<std::size_t>(row) - 1].isWanted = selected->Includes(list.Row(row), form_.program);

    std::int32_t i = 0;
    std::int32_t row = 0;
    for (const ScannedRow& scanned : rows) {
        ++i;
        const std::int32_t found = Find(scanned, row + 1);
        if (found != 0)
            row = found;
        if (found == 0 || !scanned.isWanted)
            continue;
        if (selected == nullptr) {
            form_.controls.SetStatus(CountPanel,
                                     std::to_string(i) + "/" + std::to_string(form_.program.ServerCount));
            list.SelectOnly(row);
            list.EnsureVisible(row);
        }
        form_.controls.pbScanning.SetValue(i);
        UpdateServer(row);
        if (form_.gate.Closing())
            return;
        if (form_.gate.ScanMustEnd())
            ScanAborted = true;
        if (ScanAborted)
            return;
    }
}

void ScanEngine::UpdateServer(std::int32_t row) {
    form_.Trapped("UpdateServer", OnError::Log, [&] {
        const ScannedRow scanned = Remember(row);
        if (!QueryServer(ToLong(scanned.tag)))
            return;
        details_.RefreshPlayers();
        details_.RefreshVariables();
        const std::int32_t rowNow = Find(scanned, row);
        if (rowNow != 0)
            servers_.UpdateServerListItem(rowNow);
    });
}

const EngineFamily* ScanEngine::CurrentEngine() const {
    return FindEngine(form_.engines, EngineOfShort(form_.program, form_.program.CurrentGame));
}

// False when the program closes meanwhile.
bool ScanEngine::QueryServer(std::int32_t index) {
    ProgramState& program = form_.program;
    UdpSocket& socket = form_.controls.sckServer;
    program.CurrentServer = index;

    // A fresh local port for every query.
    const auto isClosed = [&] { return socket.CurrentState() == UdpSocket::State::Closed; };
    if (!isClosed())
        socket.Close();
    if (!form_.gate.WaitUntil(isClosed))
        return false;

    socket.RemotePort = program.Servers[index].Port;
    socket.RemoteHost = program.Servers[index].Address;
    {
        const Restore openQuery(openQuery_, index); // a nested query hides the outer one
        QuerySentTick = form_.desktop.clock.TickCount();
        SendServerQuery(*program.AppLog, CurrentEngine(), socket);

        // Where a nested scan has switched the timer off, nothing but a reply or "stop" ends the wait.
        const bool waited = form_.gate.WaitUntil([&] {
            const bool stopped = ScanAborted || form_.gate.ScanMustEnd();
            return ReplyState >= 1 || (stopped && !form_.controls.tmrTimeout.Enabled());
        });
        if (!waited)
            return false;
        program.CurrentServer = index;
        if (ReplyState == NoAnswer) {
            program.Servers[index].Ping = program.PingTimeout;
            program.Servers[index].Players = 0;
        }
        ReplyState = 0;
        QuerySentTick = 0;
    }
    ParseRepliesAlreadyReceived(index);
    return true;
}

// A server may answer in several datagrams. Those that are here already belong to it; what comes later goes
// with the closed socket, so that it lands in no other server's record.
void ScanEngine::ParseRepliesAlreadyReceived(std::int32_t index) {
    UdpSocket& socket = form_.controls.sckServer;
    for (int count = 0; count < MostFurtherReplies; ++count) {
        const std::optional<std::string> datagram = socket.GetData();
        if (!datagram)
            break;
        if (datagram->size() >= ShortestDatagram)
            ParseReply(*datagram, index);
    }
    socket.Close();
}

void ScanEngine::sckServer_DataArrival(std::int32_t bytesTotal) {
    form_.Trapped("sckServer_DataArrival", OnError::Log, [&] {
        // Taken off the queue in any case, so that a short one does not stand before the reply.
        const std::optional<std::string> datagram = form_.controls.sckServer.GetData();
        const bool isAwaited = openQuery_ != 0 && datagram;
        if (bytesTotal < ShortestDatagram || !isAwaited)
            return;
        ProgramState& program = form_.program;
        program.CurrentServer = openQuery_;
        program.Servers[openQuery_].Ping = Elapsed(QuerySentTick, form_.desktop.clock.TickCount());
        ++ReplyState;
        ParseReply(*datagram, openQuery_);
    });
}

void ScanEngine::ParseReply(std::string_view datagram, std::int32_t index) {
    if (const EngineFamily* const engine = CurrentEngine())
        engine->parseStatus(form_.program, datagram, index);
}

void ScanEngine::tmrTimeout_Timer() {
    ReplyState = NoAnswer;
}

void ScanEngine::ApplyTimeout() {
    const std::int32_t timeout = form_.program.PingTimeout;
    form_.controls.tmrTimeout.SetInterval(timeout > 0 ? timeout : FallbackTimeout);
}

void ScanEngine::EndScan() {
    form_.controls.tmrTimeout.SetEnabled(false);
    form_.controls.pbScanning.SetValue(1);
    form_.controls.SetStatus(CountPanel, std::to_string(form_.program.ServerCount) + " servers");
    form_.controls.SetStatus(MessagePanel, ScanAborted ? "Scanning aborted by user." : "Ready.");
    ScanAborted = false;
}

} // namespace quarn
