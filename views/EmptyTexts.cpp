#include "views/EmptyTexts.h"

#include <string>
#include <string_view>

namespace quarn {

namespace {

std::string TextOfFolder(const MainFormContext& form, std::string_view folder) {
    if (folder == "favorites")
        return "Select a favorites folder in the tree.";
    if (folder == "filters")
        return "Select a game or a favorites folder in the tree.";
    return form.controls.trvGames.Children("games").empty()
               ? "No game is set up. Choose Game Setup in the menu Extras."
               : "Select a game in the tree.";
}

std::string TextOfEmptyList(const MainFormContext& form, bool isFavorites) {
    if (isFavorites)
        return "This folder is empty. Select a server of a game and press Favorites to add it.";
    if (form.controls.sckMaster.CurrentState() != UdpSocket::State::Closed)
        return "The master server has sent no servers yet. Press Renew to ask it again.";
    return "Press Renew to ask the master server for its servers.";
}

std::string TextOfServers(const MainFormContext& form, const GamesTree& tree) {
    const std::string& list = tree.ShownList();
    const std::int32_t count = form.program.ServerCount;
    if (list.empty() || form.gate.ListIsBusy())
        return {};
    if (!GamesTree::IsListNode(list))
        return TextOfFolder(form, list);
    if (count == 0)
        return TextOfEmptyList(form, GamesTree::CanRename(list));
    if (count == 1)
        return "1 server, which does not pass the filters.";
    return std::to_string(count) + " servers, none passes the filters.";
}

// `isKnown`: the record says that there are none.
std::string TextOfDetails(const MainFormContext& form, const std::string& what,
                          bool (*isKnown)(const ServerRecord& server)) {
    const ProgramState& program = form.program;
    // During a scan the details are those of the server being queried, whose reply may arrive at any time.
    if (form.controls.lvwServers.RowCount() == 0 || form.gate.ListIsBusy() || form.gate.ScanRuns())
        return {};
    if (!program.Servers.Holds(program.CurrentServer))
        return "Select a server to see its " + what + ".";
    if (!isKnown(program.Servers[program.CurrentServer]))
        return "Refresh the server to see its " + what + ".";
    return "This server has no " + what + ".";
}

} // namespace

void SetEmptyTexts(const MainFormContext& form, const GamesTree& tree) {
    form.controls.lvwServers.emptyText = [form, &tree] { return TextOfServers(form, tree); };
    form.controls.lvwPlayers.emptyText = [form] {
        // No list file contains the names of players.
        return TextOfDetails(form, "players", [](const ServerRecord& server) {
            return !server.Variables.empty() && server.Players < 1;
        });
    };
    form.controls.lvwServVars.emptyText = [form] {
        return TextOfDetails(form, "variables",
                             [](const ServerRecord& server) { return !server.Variables.empty(); });
    };
}

} // namespace quarn
