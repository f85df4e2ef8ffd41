#pragma once

// Masters that lie. However a reader of the family takes a lying list, every address in it stays inside
// 127.0.0.0/8: a browser under test never sends to a stranger.

#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/world/Random.h"

#include <string>
#include <vector>

namespace quarn::gamenet {

// The datagrams of the master that lies in this way; without a lie, those of the list.
std::vector<std::string> LyingList(MasterLie lie, MasterList list, Random random);

} // namespace quarn::gamenet
