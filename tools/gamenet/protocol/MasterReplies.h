#pragma once

// What a master answers, truthful or not. Filter words in a request are ignored.

#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/world/Random.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

// The datagrams of one answer; none if the request is not one of the family's or the master is silent.
std::vector<std::string> MasterReply(const GameSettings& game, const std::vector<Endpoint>& servers,
                                     std::string_view request, Random random);

// The bytes of the request that Games.ini gives for the game's master.
std::string MasterRequest(const GameSettings& game);

} // namespace quarn::gamenet
