#pragma once

// Masters that lie. However a reader of the family interprets a lying list, every address in it is inside
// 127.0.0.0/8: a browser under test never sends to any other host.

#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/world/Random.h"

#include <string>
#include <vector>

namespace quarn::gamenet {

// The datagrams of a master that lies in this way; MasterLie::None sends the list as it is.
std::vector<std::string> LyingList(MasterLie lie, MasterList list, Random random);

} // namespace quarn::gamenet
