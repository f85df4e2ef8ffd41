#include "core/modDefinitions.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"

#include <algorithm>

namespace quarn {

std::string AddressText(const ServerRecord& server) {
    return server.Address + ":" + std::to_string(server.Port);
}

ProgramState::ProgramState() = default;
ProgramState::~ProgramState() = default;

std::int32_t ProgramState::LastServerIndex() const noexcept {
    return std::min(ServerCount, Servers.HighestIndex());
}

ServerRecord& ProgramState::AppendServer() {
    if (ServerCount >= MaxServers)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    Servers.Resize(ServerCount + 1);
    return Servers[++ServerCount];
}

std::string& FavoriteName(ProgramState& program, std::int32_t folder) {
    if (folder < 0 || folder > MaxFavoritesFolders)
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    return program.FavoriteNames[static_cast<std::size_t>(folder)];
}

} // namespace quarn
