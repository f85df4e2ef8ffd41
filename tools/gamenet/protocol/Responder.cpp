#include "tools/gamenet/protocol/Responder.h"

#include "tools/gamenet/protocol/MasterReplies.h"
#include "tools/gamenet/protocol/ServerReplies.h"

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;

enum Purpose : std::uint64_t { LossDraw = 100, JitterDraw, LieDraw, MasterDraw, SpreadDraw };

std::vector<std::vector<Endpoint>> MasterLists(const NetworkSettings& network, const World& world) {
    std::vector<std::vector<Endpoint>> lists(network.games.size());
    for (const GameServer& server : world.servers)
        lists[server.game].push_back(server.status.endpoint);
    for (std::size_t index = 0; index < lists.size(); ++index)
        for (const ListedServer& server : network.listed)
            if (server.game == network.games[index].shortName)
                lists[index].push_back(server.endpoint);
    return lists;
}

} // namespace

Responder::Responder(const NetworkSettings& network, const World& world)
    : network_(network),
      world_(world),
      lists_(MasterLists(network, world)),
      servers_(world.servers.size()),
      masters_(network.games.size()) {}

std::uint64_t Responder::Epoch(std::size_t server, milliseconds sinceStart) const {
    const Churn& churn = network_.games[world_.servers[server].game].churn;
    if (churn.clock == Churn::Clock::Static)
        return 0;
    const auto every = static_cast<std::uint64_t>(churn.every);
    if (churn.clock == Churn::Clock::Requests)
        return (servers_[server].queries - 1) / every;
    return static_cast<std::uint64_t>(sinceStart.count()) / 1000 / every;
}

std::vector<TimedReply> Responder::AskServer(std::size_t index, std::string_view request,
                                             milliseconds sinceStart) {
    const GameServer& server = world_.servers.at(index);
    const GameSettings& game = network_.games[server.game];
    const std::uint64_t count = ++servers_[index].requests;
    ++counters_.serverRequests;
    if (server.conduct == Conduct::Silent) {
        ++counters_.silent;
        return {};
    }
    if (Random({network_.seed, LossDraw, server.id, count}).Chance(game.loss)) {
        ++counters_.lost;
        return {};
    }
    if (OpensQuery(game.family, request) || servers_[index].queries == 0)
        ++servers_[index].queries;
    ServerStatus status = server.status;
    if (const std::uint64_t now = Epoch(index, sinceStart); now != 0)
        status.players = PlayersOf(server, game, network_.seed, now);
    const std::optional<std::string> bytes = ServerReply(game.family, status, request);
    if (!bytes) {
        ++counters_.unknown;
        return {};
    }
    Random jitter({network_.seed, JitterDraw, server.id, count});
    TimedReply honest{*bytes, milliseconds(server.latency + jitter.Between(0, game.jitter))};
    if (game.family == Family::HalfLife) {
        Random spread({network_.seed, SpreadDraw, server.id, count});
        honest.delay += milliseconds(spread.Between(0, game.spread));
        if (!OpensQuery(game.family, request))
            honest.delay += milliseconds(game.detailsAfter);
    }
    std::vector<TimedReply> replies{honest};
    if (server.conduct == Conduct::Liar)
        replies = Lie(server.lie, game.family, status, request, honest, game.lateBy,
                      Random({network_.seed, LieDraw, server.id, count}));
    counters_.serverReplies += replies.size();
    return replies;
}

std::vector<TimedReply> Responder::AskMaster(std::size_t index, std::string_view request) {
    const GameSettings& game = network_.games.at(index);
    ++counters_.masterRequests;
    const std::uint64_t count = ++masters_[index];
    std::vector<TimedReply> replies;
    milliseconds delay{game.masterLatency};
    for (std::string& bytes :
         MasterReply(game, lists_[index], request, Random({network_.seed, MasterDraw, index, count}))) {
        replies.push_back({std::move(bytes), delay});
        delay += milliseconds(game.masterPace);
    }
    counters_.masterReplies += replies.size();
    return replies;
}

} // namespace quarn::gamenet
