#include "core/modDefinitions.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"

#include "base/NearestIndex.h"

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

std::uint32_t ProgramState::IdentityOf(std::int32_t index) {
    ServerRecord& server = Servers[index];
    if (server.Identity == 0)
        server.Identity = ++LastIdentity;
    return server.Identity;
}

std::int32_t ProgramState::FindServer(std::uint32_t identity, std::int32_t likely) const noexcept {
    return NearestIndex(Servers.HighestIndex(), likely,
                        [&](std::int32_t index) { return Servers[index].Identity == identity; });
}

std::string& FavoriteName(ProgramState& program, std::int32_t folder) {
    if (folder < 0 || folder > MaxFavoritesFolders)
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    return program.FavoriteNames[static_cast<std::size_t>(folder)];
}

} // namespace quarn
