#include "tools/gamenet/Liars.h"

#include "tools/gamenet/ServerReplies.h"
#include "tools/gamenet/Wire.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quarn::gamenet {
namespace {

// Readers ignore what is shorter than five bytes.
constexpr std::size_t shortestReply = 5;

std::string truncated(const std::string& honest, Random& random) {
    if (honest.size() <= shortestReply)
        return honest;
    return honest.substr(0, shortestReply + random.below(honest.size() - shortestReply));
}

std::string emptyValued(Family family, ServerStatus status, std::string_view request) {
    for (auto& [key, value] : status.variables)
        value.clear();
    for (Player& player : status.players)
        player.name.clear();
    status.name.clear();
    status.map.clear();
    status.mod.clear();
    return serverReply(family, status, request).value_or("");
}

// Everything that ends a text is gone: behind the header no line feed, quote or NUL is left.
std::string unterminated(Family family, const std::string& honest) {
    const char terminator = family == Family::Quake3 ? '\n' : '\0';
    const std::size_t header = std::min(honest.find(terminator) + 1, honest.size());
    std::string bytes = honest.substr(0, header);
    std::copy_if(honest.begin() + static_cast<std::ptrdiff_t>(header), honest.end(),
                 std::back_inserter(bytes), [](char c) { return c != '\n' && c != '"' && c != '\0'; });
    return bytes;
}

// The honest reply of a server with endless players and variables, cut at the largest datagram.
std::string oversized(Family family, ServerStatus status, std::string_view request) {
    constexpr std::size_t enough = largestDatagram / 8;
    const Player endless{"an endless row of players", 1, 1, 1};
    for (std::size_t nth = 0; nth < enough; ++nth)
        status.variables.emplace_back("endless" + std::to_string(nth), "and so on");
    status.players.resize(enough, endless);
    std::string bytes = serverReply(family, status, request).value_or("");
    bytes.resize(largestDatagram, 'x');
    return bytes;
}

std::string randomBytes(Random& random) {
    constexpr int longest = 1400;
    std::string bytes(static_cast<std::size_t>(random.between(shortestReply, longest)), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random.below(256));
    return bytes;
}

std::string wrongFamily(Family family, ServerStatus status) {
    const auto next = static_cast<Family>((static_cast<int>(family) + 1) % 3);
    status.protocol = next == Family::Doom3 ? "1.41" : "48";
    return mainReply(next, status);
}

} // namespace

std::vector<TimedReply> lie(LiarKind kind, Family family, const ServerStatus& status,
                            std::string_view request, const TimedReply& honest, int lateBy, Random random) {
    const auto inTime = [&](std::string bytes) {
        return std::vector<TimedReply>{{std::move(bytes), honest.delay}};
    };
    switch (kind) {
    case LiarKind::Truncated:
        return inTime(truncated(honest.bytes, random));
    case LiarKind::EmptyValued:
        return inTime(emptyValued(family, status, request));
    case LiarKind::Unterminated:
        return inTime(unterminated(family, honest.bytes));
    case LiarKind::Oversized:
        return inTime(oversized(family, status, request));
    case LiarKind::Random:
        return inTime(randomBytes(random));
    case LiarKind::Late:
        return {{honest.bytes, honest.delay + std::chrono::milliseconds(lateBy)}};
    case LiarKind::Duplicated:
        return {honest, honest};
    case LiarKind::WrongFamily:
        return inTime(wrongFamily(family, status));
    }
    return {};
}

} // namespace quarn::gamenet
