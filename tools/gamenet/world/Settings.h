#pragma once

// The settings of a network: its games, and for each game its servers, its master and how they behave.

#include "tools/gamenet/world/Endpoint.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

enum class Family { Quake3, Doom3, HalfLife };

// Which datagrams of a Quake III master's list end with "\EOT" and three NULs.
enum class EndMark { None, Last, Every };

// How a Half-Life master writes its list. Separated: a backslash before each address, as the Quake III
// masters do, and the whole list at once. Packed: addresses without separators, one batch a request.
enum class HalfLifeList { Separated, Packed };

enum class MasterLie { None, Silent, Truncated, Random, WrongHeader, Oversized, Duplicated };

enum class LiarKind {
    Truncated,
    EmptyValued,
    Unterminated,
    Oversized,
    Random,
    Late,
    Duplicated,
    WrongFamily
};

// Both ends are part of the range.
struct Range {
    int low = 0;
    int high = 0;
};

// When players come and go: never, each time `every` status requests were answered, or each `every`
// seconds.
struct Churn {
    enum class Clock { Static, Requests, Seconds };
    Clock clock = Clock::Static;
    int every = 0;
};

struct Mod {
    std::string name; // as servers report it
    std::string description;
};

struct GameSettings {
    std::string shortName; // GameShort of Games.ini
    Family family = Family::Quake3;
    std::string description;
    std::string exeName;
    std::string version;  // value of the version variable
    std::string protocol; // "68"; Doom 3 family: "1.41"
    std::string request;  // to the master, as Games.ini writes it; empty: the family's usual one
    std::vector<Mod> mods;
    std::vector<std::string> maps;
    std::vector<std::string> gameTypes;

    int servers = 0;
    std::uint16_t port = 0;
    Range slots{8, 32};   // maximum players
    Range fill{0, 90};    // players, in percent of the slots
    Range latency{5, 60}; // milliseconds, drawn once a server
    int jitter = 0;       // milliseconds, drawn for each reply, added to the latency
    double loss = 0;      // percent of requests that get lost
    double silent = 0;    // percent of servers that are bound but never answer
    double closed = 0;    // percent of servers on whose port nothing listens
    double locked = 10;   // percent of servers with a password
    double liars = 0;     // percent of servers that lie
    std::vector<LiarKind> liarKinds;
    int lateBy = 1500; // milliseconds by which a late liar is late
    Churn churn;
    std::string serverInfo; // Half-Life: description text of the info reply
    int spread = 8;         // Half-Life: milliseconds, drawn for each of a server's three replies and added
    int detailsAfter = 0;   // Half-Life: milliseconds, added to the replies about players and rules

    std::optional<Endpoint> master; // none: the network's master address and the next free port
    int masterLatency = 5;          // milliseconds
    int masterPace = 1;             // milliseconds between the datagrams of one list
    int listEntries = 0;            // addresses in a datagram; 0: as many as 1400 bytes hold
    EndMark endMark = EndMark::Last;
    HalfLifeList halfLifeList = HalfLifeList::Separated;
    MasterLie masterLie = MasterLie::None;
};

// A server outside the network that a master lists as well.
struct ListedServer {
    std::string game; // GameShort
    Endpoint endpoint;
};

struct NetworkSettings {
    std::uint64_t seed = 1;
    std::vector<std::string> countries;
    std::uint32_t masterAddress = 127U << 24 | 1;
    int masterPort = 27950; // of the first game; 0: the system chooses each master's port
    std::vector<GameSettings> games;
    std::vector<ListedServer> listed;
};

std::string_view FamilyName(Family family);
std::string_view LiarKindName(LiarKind kind);

// Throw BadSetting for an unknown name.
Family ParseFamily(std::string_view text);
std::vector<LiarKind> ParseLiarKinds(std::string_view text);
MasterLie ParseMasterLie(std::string_view text);

// "1.41" is 0x00010029: the major number in the upper half. Throws BadSetting.
std::uint32_t Doom3Protocol(std::string_view text);

// Null if no game has this short name.
GameSettings* FindGame(NetworkSettings& network, std::string_view shortName);

// Throws BadSetting if the settings contradict each other.
void CheckSettings(const NetworkSettings& network);

} // namespace quarn::gamenet
