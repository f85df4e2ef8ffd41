// What a master answers, truthful or not. A request is taken whatever filter words it carries.
#pragma once

#include "tools/gamenet/MasterList.h"
#include "tools/gamenet/Random.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

// The datagrams of one answer; none where the request is none of the family's or the master is silent.
std::vector<std::string> masterReply(const GameSettings& game, const std::vector<Endpoint>& servers,
                                     std::string_view request, Random random);

// The request that Games.ini names for the game's master, in bytes.
std::string masterRequest(const GameSettings& game);

} // namespace quarn::gamenet
