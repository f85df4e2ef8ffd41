#pragma once

// The words of the emulated servers and players.

#include "tools/gamenet/world/Random.h"
#include "tools/gamenet/world/World.h"

namespace quarn::gamenet {

// Some Quake III and Doom 3 names contain colour codes, Half-Life names never do. No name is empty without
// its colours, and none contains a double quote, a line feed or a backslash.
std::string ServerName(Family family, Random& random);
std::string PlayerName(Family family, Random& random);

// The variables that one server of the game sends, in the order in which real servers send them.
// `status` must be complete except for its variables.
Variables ServerVariables(const GameSettings& game, const ServerStatus& status, Random& random);

} // namespace quarn::gamenet
