#include "views/MasterQuery.h"

#include "core/modCommonSubs.h"
#include "query/modMasterQuery.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

void MasterQuery::mnuServerListGet_Click() {
    form_.Command(CommandKind::ReplacesList, "mnuServerListGet_Click", OnError::Log, [this] {
        if (!servers_.ConfirmClearServerList())
            return;
        form_.controls.SetStatus(MessagePanel, "Getting new serverlist from master...");

        UdpSocket& socket = form_.controls.sckMaster;
        const auto isClosed = [&] { return socket.CurrentState() == UdpSocket::State::Closed; };
        const CommandGate::ListActivity activity(form_.gate);
        if (!isClosed())
            socket.Close();
        if (!form_.gate.WaitUntil(isClosed))
            return;
        const ProgramState& program = form_.program;
        const GameDefinition& game = program.Games[GameIndexOfShort(program, program.CurrentGame)];
        socket.RemoteHost = game.MasterAddress;
        socket.RemotePort = game.MasterPort;
        socket.SendData(game.MasterPacket);
    });
}

void MasterQuery::sckMaster_DataArrival(std::int32_t bytesTotal) {
    constexpr const char* Routine = "sckMaster_DataArrival";
    form_.Trapped(Routine, OnError::Log, [&] {
        // Taken off the queue in any case, so that a short one does not stand before the next.
        std::optional<std::string> datagram = form_.controls.sckMaster.GetData();
        if (bytesTotal < ShortestDatagram || !datagram)
            return;
        // Where it has to wait for a list being read or written, the list may be another one afterwards.
        const auto list = [&program = form_.program] { return program.CurrentGame; };
        form_.gate.Run(CommandKind::Ordinary,
                       [this, asked = list(), list, reply = std::move(*datagram)]() mutable {
                           if (asked != list())
                               return;
                           form_.Trapped(Routine, OnError::Log, [&] {
                               ParseReply(std::move(reply));
                               servers_.ListServers(true);
                           });
                       });
    });
}

void MasterQuery::ParseReply(std::string datagram) {
    ProgramState& program = form_.program;
    const GameDefinition& game = program.Games[GameIndexOfShort(program, program.CurrentGame)];
    // Where a datagram adds nothing, no row is listed again.
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
}

} // namespace quarn
