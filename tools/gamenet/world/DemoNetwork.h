#pragma once

// The network that runs without any configuration: 60 servers in eight games of the three families.

#include "tools/gamenet/world/Settings.h"

namespace quarn::gamenet {

NetworkSettings DemoNetwork();

// A game of the family without servers and names, to be filled in by a configuration file.
GameSettings PlainGame(Family family, std::string shortName);

} // namespace quarn::gamenet
