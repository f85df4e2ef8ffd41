#pragma once

// Servers that lie: replies that make a careless reader fail.

#include "tools/gamenet/world/Random.h"
#include "tools/gamenet/world/World.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

// A datagram and the delay from the request until it is sent.
struct TimedReply {
    std::string bytes;
    std::chrono::milliseconds delay{0};
};

// honest: the reply to this request that an honest server would send after its delay. Late liars add
// lateBy milliseconds.
std::vector<TimedReply> Lie(LiarKind kind, Family family, const ServerStatus& status,
                            std::string_view request, const TimedReply& honest, int lateBy, Random random);

} // namespace quarn::gamenet
