#include "views/ListedAddresses.h"

#include <utility>

namespace quarn {

void ListedAddresses::RemoveKnown(ProgramState& program, std::int32_t before) {
    const bool isUnchanged =
        counted_ == before && before > 0 && program.Servers[before].Identity == lastIdentity_;
    if (!isUnchanged) { // servers were deleted or added, or it is another list
        addresses_.clear();
        for (std::int32_t index = 1; index <= before; ++index)
            addresses_.insert(AddressText(program.Servers[index]));
    }
    std::int32_t kept = before;
    for (std::int32_t index = before + 1; index <= program.LastServerIndex(); ++index) {
        ServerRecord& server = program.Servers[index];
        if (server.Address.empty() || !addresses_.insert(AddressText(server)).second)
            continue;
        if (++kept != index)
            program.Servers[kept] = std::move(server);
    }
    program.Servers.Resize(kept);
    program.ServerCount = kept;
    counted_ = kept;
    lastIdentity_ = kept > 0 ? program.IdentityOf(kept) : 0;
}

} // namespace quarn
