#include "views/SequentialScan.h"

#include "query/modGamQuery.h"
#include "support/Trap.h"

namespace quarn {

namespace {

// A server sends at most three replies; a flood of datagrams must not delay the scan.
constexpr int MostFurtherReplies = 16;

} // namespace

bool SequentialScan::IsAnswered() const noexcept {
    return form_.controls.sckServer.Find(query_.number).replies > 0;
}

// A scan inside this one may have queried the same server again and so closed the port.
bool SequentialScan::IsReplaced() const noexcept {
    return query_.number != 0 && form_.controls.sckServer.Find(query_.number).number == 0;
}

// If a scan inside this one has disabled the timer, only a reply or "stop" ends the wait.
bool SequentialScan::CanStep() const {
    return awaitsReply_ && (parts_.wait.ReplyState >= 1 || IsAnswered() || IsReplaced() ||
                            (!form_.controls.tmrTimeout.Enabled() && task_.stopped()));
}

bool SequentialScan::Step() {
    if (awaitsReply_) {
        FinishQuery();
        if (task_.stopped())
            return false;
    }
    return AskNext();
}

// False if there is no further row.
bool SequentialScan::AskNext() {
    while (passed_ < task_.listed.size()) {
        const std::uint32_t shown = task_.listed[passed_++];
        const bool isWanted = asked_ < task_.wanted.size() && task_.wanted[asked_] == shown;
        if (isWanted)
            ++asked_;
        const std::int32_t found = form_.controls.lvwServers.RowShowing(shown, row_ + 1);
        if (found != 0)
            row_ = found;
        if (found == 0 || !isWanted)
            continue;
        ShowPosition(static_cast<std::int32_t>(passed_));
        if (Ask())
            return true;
        if (task_.stopped())
            return false;
    }
    return false;
}

void SequentialScan::ShowPosition(std::int32_t number) {
    if (task_.selectsRows) {
        progress_.ShowNumber(number);
        form_.controls.lvwServers.SelectOnly(row_);
        form_.controls.lvwServers.EnsureVisible(row_);
    }
    progress_.Reach(number);
}

// False for a row that names no record.
bool SequentialScan::Ask() {
    return form_.Trapped("UpdateServer", OnError::Log, [&] {
        ProgramState& program = form_.program;
        QueryPorts& ports = form_.controls.sckServer;
        target_ = parts_.results.TargetOf(row_);
        program.CurrentServer = target_.index;
        ports.CloseOf(target_.server);

        parts_.wait.QuerySentTick = form_.desktop.clock.TickCount();
        const ServerRecord& server = program.Servers[target_.index];
        query_ = ports.Ask(
            target_, server.Address, server.Port, parts_.wait.QuerySentTick, [&](UdpSocket& socket) {
                SendServerQuery(*program.AppLog, parts_.results.EngineOf(target_.index), socket);
            });
        awaitsReply_ = true;
    });
}

bool SequentialScan::TakeReply(ServerReply& reply) {
    if (!awaitsReply_ || reply.query.number != query_.number)
        return false;
    ++parts_.wait.ReplyState;
    if (const std::int32_t index = parts_.results.IndexOf(target_); index != 0)
        form_.program.CurrentServer = index;
    parts_.results.Take(reply);
    return true;
}

void SequentialScan::FinishQuery() {
    awaitsReply_ = false;
    form_.Trapped("UpdateServer", OnError::Log, [&] {
        const bool isTimedOut =
            parts_.wait.ReplyState == ReplyWait::NoAnswer && !IsAnswered() && !IsReplaced();
        Finish(!isTimedOut);
        progress_.Count(!isTimedOut);
        parts_.details.RefreshPlayers();
        parts_.details.RefreshVariables();
        if (const std::int32_t rowNow = parts_.results.RowOf(target_, row_); rowNow != 0)
            parts_.servers.UpdateServerListItem(rowNow);
    });
}

void SequentialScan::Finish(bool answered) {
    form_.program.CurrentServer = target_.index;
    if (!answered)
        parts_.results.StoreNoAnswer(target_.index);
    parts_.wait = {};

    // A server may answer in several datagrams. Those that have arrived are read before the row is shown.
    QueryPorts& ports = form_.controls.sckServer;
    ports.Finish(query_.number);
    for (int count = 0; count < MostFurtherReplies; ++count) {
        const auto reply = ports.Take(query_.number, form_.desktop.clock.TickCount());
        if (!reply)
            break;
        parts_.results.Take(*reply);
    }
}

} // namespace quarn
