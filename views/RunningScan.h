#pragma once

// A scan in steps. The loop that waits for the scan's replies and ticks takes the steps, or the events
// themselves do while that loop is below an open dialog on the stack: see views/CommandGate.h.

#include "core/modDefinitions.h"
#include "query/QueryPorts.h"

#include <cstdint>

namespace quarn {

// Milliseconds: PingTimeout if that is positive, otherwise a second.
inline std::int32_t TimeoutOf(const ProgramState& program) noexcept {
    constexpr std::int32_t Fallback = 1000;
    return program.PingTimeout > 0 ? program.PingTimeout : Fallback;
}

class RunningScan {
  public:
    virtual ~RunningScan() = default;

    // A reply or tick has come that the next step uses, or a reason to stop.
    virtual bool CanStep() const = 0;

    // Finishes the queries whose reply or time-out has come, and asks the next servers. The first step only
    // asks. False: there is nothing more to wait for.
    virtual bool Step() = 0;

    // The reply to one of the scan's queries: true, and a step follows. False for any other reply.
    virtual bool TakeReply(ServerReply& reply) = 0;
};

} // namespace quarn
