#pragma once

// What a master answers, truthful or not. A request is taken whatever filter words it carries.

#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/world/Random.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

// The datagrams of one answer; none where the request is none of the family's or the master is silent.
std::vector<std::string> MasterReply(const GameSettings& game, const std::vector<Endpoint>& servers,
                                     std::string_view request, Random random);

// The request that Games.ini names for the game's master, in bytes.
std::string MasterRequest(const GameSettings& game);

} // namespace quarn::gamenet
