#include "tools/gamenet/world/World.h"

#include "tools/gamenet/world/Random.h"
#include "tools/gamenet/world/Text.h"
#include "tools/gamenet/world/Vocabulary.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <tuple>

namespace quarn::gamenet {
namespace {

// Second bytes of the servers' addresses. 127.0 to 127.9 stay free for masters, listed servers and other
// programs that use the loopback.
constexpr std::uint32_t FirstBlockByte = 10;
constexpr std::uint32_t BlockBytes = 240;

// Draws for different purposes never share a sequence, so that one more variable or one more player does not
// change every address.
enum Purpose : std::uint64_t { AddressDraw, StatusDraw, ConductDraw, PlayerDraw, EpochDraw };

constexpr std::uint32_t Loopback = 127U << 24;

std::vector<CountryBlock> CountryBlocks(const std::vector<std::string>& countries) {
    if (countries.empty() || countries.size() > BlockBytes)
        throw BadSetting("the number of countries is not from 1 to " + std::to_string(BlockBytes));
    const std::uint32_t width = BlockBytes / static_cast<std::uint32_t>(countries.size());
    std::vector<CountryBlock> blocks;
    std::uint32_t first = FirstBlockByte;
    for (const std::string& country : countries) {
        blocks.push_back({Loopback | first << 16, (Loopback | (first + width) << 16) - 1, country});
        first += width;
    }
    return blocks;
}

class AddressBook {
  public:
    AddressBook(const std::vector<CountryBlock>& blocks, std::uint64_t seed)
        : blocks_(blocks), random_({seed, AddressDraw}) {}

    // An unused address and its country.
    std::pair<Endpoint, std::string> Place(std::uint16_t port) {
        for (;;) {
            const CountryBlock& block = random_.OneOf(blocks_);
            const auto size = static_cast<std::size_t>(block.last - block.first) + 1;
            const Endpoint endpoint{block.first + static_cast<std::uint32_t>(random_.Below(size)), port};
            const std::uint32_t lastByte = endpoint.address & 255;
            if (lastByte == 0 || lastByte == 255 || LooksLikeEndMark(endpoint))
                continue;
            if (taken_.insert(endpoint.address).second)
                return {endpoint, block.country};
        }
    }

  private:
    const std::vector<CountryBlock>& blocks_;
    Random random_;
    std::set<std::uint32_t> taken_;
};

std::size_t Share(std::size_t count, double percent) {
    return static_cast<std::size_t>(std::lround(static_cast<double>(count) * percent / 100));
}

// Shares are exact: 10 % of 20 servers are two, whatever the seed; the seed says which.
void AssignConduct(std::vector<GameServer>& servers, const GameSettings& game, Random& random) {
    std::vector<std::size_t> order(servers.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    random.Shuffle(order);
    std::size_t at = 0;
    const auto take = [&](double percent, auto&& mark) {
        const std::size_t end = std::min(order.size(), at + Share(order.size(), percent));
        for (std::size_t nth = 0; at < end; ++at, ++nth)
            mark(servers[order[at]], nth);
    };
    take(game.silent, [](GameServer& server, std::size_t) { server.conduct = Conduct::Silent; });
    take(game.closed, [](GameServer& server, std::size_t) { server.conduct = Conduct::Closed; });
    take(game.liars, [&](GameServer& server, std::size_t nth) {
        server.conduct = Conduct::Liar;
        server.lie = game.liarKinds[nth % game.liarKinds.size()];
    });
}

void AssignLocks(std::vector<GameServer>& servers, const GameSettings& game, Random& random) {
    if (game.family == Family::HalfLife)
        return; // its info reply has no field for the flag
    std::vector<std::size_t> order(servers.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    random.Shuffle(order);
    for (std::size_t nth = 0; nth < Share(order.size(), game.locked); ++nth)
        servers[order[nth]].status.locked = true;
}

// Public servers come in even sizes.
int DrawSlots(const Range& slots, Random& random) {
    const int drawn = random.Between(slots.low, slots.high);
    return drawn % 2 == 1 && drawn > slots.low ? drawn - 1 : drawn;
}

std::string UniqueName(Family family, Random& random, std::set<std::string>& taken) {
    const std::string name = ServerName(family, random);
    std::string candidate = name;
    for (int count = 2; !taken.insert(WithoutColours(candidate)).second; ++count)
        candidate = name + " (" + std::to_string(count) + ')';
    return candidate;
}

void Describe(GameServer& server, const GameSettings& game, std::uint64_t seed,
              std::set<std::string>& names) {
    Random random({seed, StatusDraw, server.id});
    ServerStatus& status = server.status;
    server.latency = random.Between(game.latency.low, game.latency.high);
    status.name = UniqueName(game.family, random, names);
    status.map = random.OneOf(game.maps);
    status.mod = random.OneOf(game.mods).name;
    status.info = game.serverInfo;
    status.protocol = game.protocol;
    status.maxPlayers = DrawSlots(game.slots, random);
    status.variables = ServerVariables(game, status, random);
    status.players = PlayersOf(server, game, seed, 0);
}

} // namespace

World CreateWorld(const NetworkSettings& network) {
    World world;
    world.countryBlocks = CountryBlocks(network.countries);
    AddressBook addresses(world.countryBlocks, network.seed);
    std::set<std::string> names;
    for (std::size_t index = 0; index < network.games.size(); ++index) {
        const GameSettings& game = network.games[index];
        std::vector<GameServer> servers(static_cast<std::size_t>(game.servers));
        Random random({network.seed, ConductDraw, index});
        AssignConduct(servers, game, random);
        AssignLocks(servers, game, random);
        for (GameServer& server : servers) {
            server.game = index;
            server.id = world.servers.size();
            std::tie(server.status.endpoint, server.country) = addresses.Place(game.port);
            Describe(server, game, network.seed, names);
            world.servers.push_back(std::move(server));
        }
    }
    return world;
}

std::vector<Player> PlayersOf(const GameServer& server, const GameSettings& game, std::uint64_t seed,
                              std::uint64_t epoch) {
    const int slots = server.status.maxPlayers;
    Random crowd({seed, EpochDraw, server.id, epoch});
    // Squared, so that most servers are empty or half empty, as real ones are.
    const double luck = crowd.Fraction() * crowd.Fraction();
    const double fill = game.fill.low + (game.fill.high - game.fill.low) * luck;
    const int count = std::min(slots, static_cast<int>(std::lround(slots * fill / 100)));
    std::vector<Player> players;
    for (int nth = 0; nth < count; ++nth) {
        // Each epoch one player leaves at the front and others join at the end.
        Random random({seed, PlayerDraw, server.id, epoch + static_cast<std::uint64_t>(nth)});
        Player player;
        player.name = PlayerName(game.family, random);
        // Pings are below 128, because some readers swap the two bytes of the Doom 3 field, and a low byte
        // of 128 or more then overflows a signed number. Scores fit into one byte, because some readers
        // read only one byte of the Half-Life field.
        player.ping = random.Chance(10) ? 0 : random.Between(12, 127);
        player.seconds = static_cast<float>(random.Between(10, 5400)) + 0.25F;
        player.score = crowd.Between(game.family == Family::HalfLife ? 0 : -5, 60);
        players.push_back(std::move(player));
    }
    return players;
}

std::string_view KindName(const GameServer& server) {
    switch (server.conduct) {
    case Conduct::Honest:
        return "honest";
    case Conduct::Silent:
        return "silent";
    case Conduct::Closed:
        return "closed";
    case Conduct::Liar:
        break;
    }
    return LiarKindName(server.lie);
}

} // namespace quarn::gamenet
