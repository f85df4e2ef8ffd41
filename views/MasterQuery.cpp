#include "views/MasterQuery.h"

#include "core/modCommonSubs.h"
#include "query/modMasterQuery.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

namespace {

// Shorter datagrams carry nothing.
constexpr std::int32_t ShortestDatagram = 5;

} // namespace

void MasterQuery::mnuServerListGet_Click() {
    form_.gate.Run(CommandGate::Kind::ReplacesList, [this] {
        Trapped(*form_.program.AppLog, MainFormName, "mnuServerListGet_Click", OnError::Log, [&] {
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
    });
}

void MasterQuery::sckMaster_DataArrival(std::int32_t bytesTotal) {
    constexpr const char* Routine = "sckMaster_DataArrival";
    Trapped(*form_.program.AppLog, MainFormName, Routine, OnError::Log, [&] {
        // Taken off the queue in any case, so that a short one does not stand before the next.
        std::optional<std::string> datagram = form_.controls.sckMaster.GetData();
        if (bytesTotal < ShortestDatagram || !datagram)
            return;
        // Where it has to wait for a list being read or written, the list may be another one afterwards.
        const auto list = [&program = form_.program] { return program.CurrentGame; };
        form_.gate.Run(CommandGate::Kind::Ordinary,
                       [this, asked = list(), list, reply = std::move(*datagram)]() mutable {
                           if (asked != list())
                               return;
                           Trapped(*form_.program.AppLog, MainFormName, Routine, OnError::Log, [&] {
                               ParseReply(std::move(reply));
                               servers_.ListServers(true);
                           });
                       });
    });
}

void MasterQuery::ParseReply(std::string datagram) {
    ProgramState& program = form_.program;
    const GameDefinition& game = program.Games[GameIndexOfShort(program, program.CurrentGame)];
    // A datagram that adds nothing lists nothing again.
    program.PreviousServerCount = program.ServerCount;

    const auto headerMatches = [&](std::string_view delimiter) {
        return ExtractString(*program.AppLog, datagram, delimiter) == game.MasterResponse;
    };
    if (game.Engine == "q3") {
        if (headerMatches("\\"))
            ParseQ3EngineServers(program, datagram);
    } else if (game.Engine == "d3") {
        if (headerMatches(std::string_view("\0", 1)))
            ParseD3EngineServers(program, datagram);
    } else if (game.Engine == "hl") {
        const bool matches = headerMatches("\\");
        // The body is parsed twice when the header matches, and once when it does not.
        const std::int32_t before = program.ServerCount;
        if (matches)
            ParseHLCSServers(program, datagram);
        ParseHLCSServers(program, datagram);
        program.PreviousServerCount = before;
    }
}

} // namespace quarn
