// The network that stands without any configuration: 60 servers in eight games of the three families.
#pragma once

#include "tools/gamenet/Settings.h"

namespace quarn::gamenet {

NetworkSettings demoNetwork();

// A game of the family without servers and names, to be filled in by a configuration file.
GameSettings plainGame(Family family, std::string shortName);

} // namespace quarn::gamenet
