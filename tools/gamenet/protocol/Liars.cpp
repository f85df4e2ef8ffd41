#include "tools/gamenet/protocol/Liars.h"

#include "tools/gamenet/protocol/ServerReplies.h"
#include "tools/gamenet/protocol/Wire.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quarn::gamenet {
namespace {

// Readers ignore replies of fewer than five bytes.
constexpr std::size_t ShortestReply = 5;

std::string Truncated(const std::string& honest, Random& random) {
    if (honest.size() <= ShortestReply)
        return honest;
    return honest.substr(0, ShortestReply + random.Below(honest.size() - ShortestReply));
}

std::string EmptyValued(Family family, ServerStatus status, std::string_view request) {
    for (auto& [key, value] : status.variables)
        value.clear();
    for (Player& player : status.players)
        player.name.clear();
    status.name.clear();
    status.map.clear();
    status.mod.clear();
    return ServerReply(family, status, request).value_or("");
}

// Removes everything that terminates a text: no line feed, quote or NUL is left after the header.
std::string Unterminated(Family family, const std::string& honest) {
    const char terminator = family == Family::Quake3 ? '\n' : '\0';
    const std::size_t header = std::min(honest.find(terminator) + 1, honest.size());
    std::string bytes = honest.substr(0, header);
    std::copy_if(honest.begin() + static_cast<std::ptrdiff_t>(header), honest.end(),
                 std::back_inserter(bytes), [](char c) { return c != '\n' && c != '"' && c != '\0'; });
    return bytes;
}

// The honest reply of a server with endless players and variables, cut at the largest datagram.
std::string Oversized(Family family, ServerStatus status, std::string_view request) {
    constexpr std::size_t Enough = LargestDatagram / 8;
    const Player endless{"an endless row of players", 1, 1, 1};
    for (std::size_t nth = 0; nth < Enough; ++nth)
        status.variables.emplace_back("endless" + std::to_string(nth), "and so on");
    status.players.resize(Enough, endless);
    std::string bytes = ServerReply(family, status, request).value_or("");
    bytes.resize(LargestDatagram, 'x');
    return bytes;
}

std::string RandomBytes(Random& random) {
    constexpr int Longest = 1400;
    std::string bytes(static_cast<std::size_t>(random.Between(ShortestReply, Longest)), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random.Below(256));
    return bytes;
}

std::string WrongFamily(Family family, ServerStatus status) {
    const auto next = static_cast<Family>((static_cast<int>(family) + 1) % 3);
    status.protocol = next == Family::Doom3 ? "1.41" : "48";
    return MainReply(next, status);
}

} // namespace

std::vector<TimedReply> Lie(LiarKind kind, Family family, const ServerStatus& status,
                            std::string_view request, const TimedReply& honest, int lateBy, Random random) {
    const auto inTime = [&](std::string bytes) {
        return std::vector<TimedReply>{{std::move(bytes), honest.delay}};
    };
    switch (kind) {
    case LiarKind::Truncated:
        return inTime(Truncated(honest.bytes, random));
    case LiarKind::EmptyValued:
        return inTime(EmptyValued(family, status, request));
    case LiarKind::Unterminated:
        return inTime(Unterminated(family, honest.bytes));
    case LiarKind::Oversized:
        return inTime(Oversized(family, status, request));
    case LiarKind::Random:
        return inTime(RandomBytes(random));
    case LiarKind::Late:
        return {{honest.bytes, honest.delay + std::chrono::milliseconds(lateBy)}};
    case LiarKind::Duplicated:
        return {honest, honest};
    case LiarKind::WrongFamily:
        return inTime(WrongFamily(family, status));
    }
    return {};
}

} // namespace quarn::gamenet
