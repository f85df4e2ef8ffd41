#include "views/ServerDetails.h"

#include "core/modStringHelper.h"
#include "support/Trap.h"

#include <string_view>

namespace quarn {

void ServerDetails::RefreshPlayers() {
    form_.Trapped("RefreshPlayers", OnError::LogUncounted, [&] {
        ListView& list = form_.controls.lvwPlayers;
        list.Clear();
        const ServerRecord& server = form_.program.Servers[form_.program.CurrentServer];
        if (server.Players < 1 || server.PlayerList.HighestIndex() < server.Players)
            return;
        for (std::int32_t i = 1; i <= server.Players; ++i) {
            const PlayerRecord& player = server.PlayerList[i];
            const std::int32_t row = list.Add();
            list.Cell(row, 1).text = player.Name;
            list.Cell(row, 2).text = std::to_string(player.Score);
            list.Cell(row, 3).text = std::to_string(player.Ping);
        }
    });
}

void ServerDetails::RefreshVariables() {
    form_.Trapped("RefreshVariables", OnError::LogUncounted, [&] {
        ListView& list = form_.controls.lvwServVars;
        const std::string& variables = form_.program.Servers[form_.program.CurrentServer].Variables;
        const std::vector<std::string_view> parts = Split(variables, '\\');
        list.Clear();
        // Before the leading backslash there is nothing, or a password of an earlier run.
        for (std::size_t i = 1; i < parts.size(); i += 2) {
            const std::int32_t row = list.Add();
            list.Cell(row, 1).text = parts[i];
            if (i + 1 >= parts.size())
                throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
            list.Cell(row, 2).text = parts[i + 1];
        }
        list.Refresh();
    });
}

void ServerDetails::Clear() {
    form_.controls.lvwPlayers.Clear();
    form_.controls.lvwServVars.Clear();
}

} // namespace quarn
