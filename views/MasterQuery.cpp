#include "views/MasterQuery.h"

#include "base/Scope.h"
#include "core/modCommonSubs.h"
#include "query/modMasterQuery.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

namespace {

// A master that has not answered within this many scan time-outs is given up.
constexpr std::int32_t TimeoutsOfAMaster = 3;

} // namespace

MasterQuery::MasterQuery(const MainFormContext& form, ServerListView& servers)
    : form_(form), servers_(servers) {
    form_.controls.tmrMaster.Tick = [this] { tmrMaster_Timer(); };
}

void MasterQuery::mnuServerListGet_Click() {
    form_.Command(CommandKind::ReplacesList, "mnuServerListGet_Click", OnError::Log, [this] {
        const ProgramState& program = form_.program;
        if (GameIndexOfShort(program, program.CurrentGame) == 0) {
            program.AppLog->ErrorMessage("This list has no master server to ask!");
            return;
        }
        replacesList_ = program.AskMasterFirst != 0;
        const bool confirmed = replacesList_ ? servers_.AskToClear() : servers_.ConfirmClearServerList();
        if (!confirmed)
            return;
        form_.controls.SetStatus(MessagePanel, "Getting new serverlist from master...");
        Ask();
    });
}

void MasterQuery::Ask() {
    UdpSocket& socket = form_.controls.sckMaster;
    const auto isClosed = [&] { return socket.CurrentState() == UdpSocket::State::Closed; };
    const CommandGate::ListActivity activity(form_.gate);
    if (!isClosed())
        socket.Close();
    if (!form_.gate.WaitUntil(isClosed))
        return;
    serversOfRenewal_ = 0;
    limitLogged_ = false;
    const ProgramState& program = form_.program;
    askedGame_ = program.CurrentGame;
    const GameDefinition& game = program.Games[GameIndexOfShort(program, program.CurrentGame)];
    socket.RemoteHost = game.MasterAddress;
    socket.RemotePort = game.MasterPort;
    socket.SendData(game.MasterPacket);

    Timer& patience = form_.controls.tmrMaster;
    patience.SetEnabled(false); // restarts
    patience.SetInterval(TimeoutsOfAMaster * form_.controls.tmrTimeout.Interval());
    patience.SetEnabled(replacesList_);
}

void MasterQuery::sckMaster_DataArrival(std::int32_t bytesTotal) {
    constexpr const char* Routine = "sckMaster_DataArrival";
    form_.Trapped(Routine, OnError::LogUncounted, [&] {
        // Always taken off the queue, so that a short one does not block the next.
        std::optional<std::string> datagram = form_.controls.sckMaster.GetData();
        if (bytesTotal < ShortestDatagram || !datagram)
            return;
        const std::size_t size = datagram->size();
        if (waitingBytes_ + size > MostWaitingBytes || serversOfRenewal_ >= MostServers) {
            LogLimit();
            return;
        }
        waitingBytes_ += size;
        // If the gate defers this reply, the user may have switched lists by the time it runs.
        const auto list = [&program = form_.program] { return program.CurrentGame; };
        const CommandKind kind = replacesList_ ? CommandKind::ReplacesList : CommandKind::Ordinary;
        form_.Command(kind, Routine, OnError::LogUncounted,
                      [this, kind, asked = list(), list, size, reply = std::move(*datagram)]() mutable {
                          waitingBytes_ -= size;
                          // A command that replaces the list must not wait for rows that it will replace.
                          const bool isInVain =
                              kind == CommandKind::Ordinary && form_.gate.ReplacementWaits();
                          if (asked != list() || isInVain)
                              return;
                          if (serversOfRenewal_ >= MostServers)
                              return LogLimit();
                          TakeReply(std::move(reply));
                      });
    });
}

void MasterQuery::TakeReply(std::string datagram) {
    if (replacesList_) {
        if (!ReplaceList(datagram))
            return;
    } else {
        ParseReply(datagram);
    }
    servers_.ListServers(true);
}

void MasterQuery::ParseReply(std::string& datagram) {
    ProgramState& program = form_.program;
    const GameDefinition& game = program.Games[GameIndexOfShort(program, program.CurrentGame)];
    // If a datagram adds nothing, no row is listed again.
    const std::int32_t before = program.PreviousServerCount = program.ServerCount;

    const EngineFamily* const engine = FindEngine(form_.engines, game.Engine);
    if (engine == nullptr)
        return;
    // A reply without the delimiter has no header, and matches none, not even an empty one.
    const std::string header = ExtractString(*program.AppLog, datagram, engine->masterHeaderDelimiter);
    const bool matches = !header.empty() && header == game.MasterResponse;
    const int passes = matches ? engine->passesOnMatch : engine->passesOnMismatch;
    for (int pass = 0; pass < passes; ++pass)
        engine->parseMaster(program, datagram);
    program.PreviousServerCount = before;
    if (program.ListOnce != 0)
        listed_.RemoveKnown(program, before);
    serversOfRenewal_ += program.ServerCount - before;
}

// The list does not change unless the reply contains an address.
bool MasterQuery::ReplaceList(std::string& datagram) {
    ProgramState& program = form_.program;
    OneBased<ServerRecord> kept = std::exchange(program.Servers, {});
    const std::int32_t keptCount = std::exchange(program.ServerCount, 0);
    ParseReply(datagram);
    const bool hasAddress = program.LastServerIndex() > 0 && !program.Servers[1].Address.empty();
    if (!hasAddress) {
        program.Servers = std::move(kept);
        program.ServerCount = program.PreviousServerCount = keptCount;
        return false;
    }
    replacesList_ = false;
    form_.controls.tmrMaster.SetEnabled(false);
    form_.controls.sckServer.CloseAll();
    const std::int32_t count = program.ServerCount; // may be one past the last slot
    servers_.ResetServerViews();
    program.ServerCount = count;
    return true;
}

void MasterQuery::tmrMaster_Timer() {
    form_.controls.tmrMaster.SetEnabled(false);
    if (!std::exchange(replacesList_, false) || askedGame_ != form_.program.CurrentGame)
        return;
    form_.controls.sckMaster.Close(); // a later reply would be added to the old list
    form_.controls.SetStatus(MessagePanel, "The master server did not answer.");
}

void MasterQuery::LogLimit() {
    if (std::exchange(limitLogged_, true))
        return;
    form_.program.AppLog->LogUncounted(MainFormName, "sckMaster_DataArrival",
                                       static_cast<std::int32_t>(ErrorNumber::OutOfMemory),
                                       "Further replies of the master server are dropped");
}

} // namespace quarn
