#include "tools/gamenet/protocol/ServerReplies.h"

#include "tools/gamenet/protocol/Wire.h"
#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <array>

namespace quarn::gamenet {
namespace {

constexpr std::string_view Quake3Mark = "\xFF\xFF\xFF\xFF";
constexpr std::string_view Doom3Mark = "\xFF\xFF";

// What follows the mark and the word; nothing if the request does not begin with them.
std::optional<std::string_view> AfterWord(std::string_view request, std::string_view mark,
                                          std::string_view word) {
    if (!request.starts_with(mark))
        return {};
    request.remove_prefix(mark.size());
    if (!StartsWithIgnoringCase(request, word))
        return {};
    return request.substr(word.size());
}

std::string InfoString(const Variables& variables) {
    std::string text;
    for (const auto& [key, value] : variables)
        text.append("\\").append(key).append("\\").append(value);
    return text;
}

std::string ChallengeOf(std::string_view rest) {
    constexpr std::size_t LongestChallenge = 128;
    const std::string challenge = Trimmed(rest.substr(0, rest.find('\0')));
    return challenge.substr(0, LongestChallenge);
}

std::string Quake3Status(const ServerStatus& status, const std::string& challenge) {
    std::string reply = std::string(Quake3Mark) + "statusResponse\n" + InfoString(status.variables);
    if (!challenge.empty())
        reply += "\\challenge\\" + challenge;
    reply += '\n';
    for (const Player& player : status.players)
        reply +=
            std::to_string(player.score) + ' ' + std::to_string(player.ping) + " \"" + player.name + "\"\n";
    return reply;
}

std::string Quake3Info(const ServerStatus& status, const std::string& challenge) {
    Variables variables;
    if (!challenge.empty())
        variables.emplace_back("challenge", challenge);
    variables.insert(variables.end(), {{"gamename", status.mod},
                                       {"protocol", status.protocol},
                                       {"hostname", status.name},
                                       {"mapname", status.map},
                                       {"clients", std::to_string(status.players.size())},
                                       {"sv_maxclients", std::to_string(status.maxPlayers)},
                                       {"g_needpass", status.locked ? "1" : "0"},
                                       {"game", status.mod}});
    return std::string(Quake3Mark) + "infoResponse\n" + InfoString(variables);
}

std::optional<std::string> Quake3Reply(const ServerStatus& status, std::string_view request) {
    if (const auto rest = AfterWord(request, Quake3Mark, "getstatus"))
        return Quake3Status(status, ChallengeOf(*rest));
    if (const auto rest = AfterWord(request, Quake3Mark, "getinfo"))
        return Quake3Info(status, ChallengeOf(*rest));
    return {};
}

std::string Doom3Info(const ServerStatus& status, std::string_view challenge) {
    constexpr std::size_t MaxClients = 32;
    constexpr std::uint32_t Rate = 16000;
    std::string reply(Doom3Mark);
    PutText(reply, "infoResponse");
    reply += challenge;
    PutLittle32(reply, Doom3Protocol(status.protocol));
    for (const auto& [key, value] : status.variables) {
        PutText(reply, key);
        PutText(reply, value);
    }
    PutText(reply, "");
    PutText(reply, "");
    for (std::size_t client = 0; client < std::min(status.players.size(), MaxClients); ++client) {
        PutByte(reply, static_cast<std::uint32_t>(client));
        PutLittle16(reply, static_cast<std::uint32_t>(status.players[client].ping));
        PutLittle32(reply, Rate);
        PutText(reply, status.players[client].name);
    }
    PutByte(reply, MaxClients);
    PutLittle32(reply, 7); // Windows, Mac and Linux have the game
    return reply;
}

std::optional<std::string> Doom3Reply(const ServerStatus& status, std::string_view request) {
    constexpr std::size_t ChallengeSize = 4;
    const auto rest = AfterWord(request, Doom3Mark, "getinfo");
    if (!rest)
        return {};
    std::string challenge(rest->starts_with('\0') ? rest->substr(1, ChallengeSize) : std::string_view());
    challenge.resize(ChallengeSize);
    return Doom3Info(status, challenge);
}

std::string HalfLifeInfo(const ServerStatus& status) {
    std::string reply(Quake3Mark);
    reply += 'C';
    PutText(reply, EndpointText(status.endpoint));
    PutText(reply, status.name);
    PutText(reply, status.map);
    PutText(reply, status.mod);
    if (!status.info.empty())
        PutText(reply, status.info);
    PutByte(reply, static_cast<std::uint32_t>(status.players.size()));
    PutByte(reply, static_cast<std::uint32_t>(status.maxPlayers));
    PutByte(reply, static_cast<std::uint32_t>(ParseWhole(status.protocol, 0, 255)));
    return reply;
}

std::string HalfLifePlayers(const ServerStatus& status) {
    std::string reply(Quake3Mark);
    reply += 'D';
    PutByte(reply, static_cast<std::uint32_t>(status.players.size()));
    std::uint32_t index = 0;
    for (const Player& player : status.players) {
        PutByte(reply, ++index);
        PutText(reply, player.name);
        PutLittle32(reply, static_cast<std::uint32_t>(player.score));
        PutFloat(reply, player.seconds);
    }
    return reply;
}

std::string HalfLifeRules(const ServerStatus& status) {
    std::string reply(Quake3Mark);
    reply += 'E';
    PutLittle16(reply, static_cast<std::uint32_t>(status.variables.size()));
    for (const auto& [name, value] : status.variables) {
        PutText(reply, name);
        PutText(reply, value);
    }
    return reply;
}

std::optional<std::string> HalfLifeReply(const ServerStatus& status, std::string_view request) {
    if (AfterWord(request, Quake3Mark, "info"))
        return HalfLifeInfo(status);
    if (AfterWord(request, Quake3Mark, "players"))
        return HalfLifePlayers(status);
    if (AfterWord(request, Quake3Mark, "rules"))
        return HalfLifeRules(status);
    if (AfterWord(request, Quake3Mark, "ping"))
        return std::string(Quake3Mark) + 'j';
    return {};
}

} // namespace

std::optional<std::string> ServerReply(Family family, const ServerStatus& status, std::string_view request) {
    using Replier = std::optional<std::string> (*)(const ServerStatus&, std::string_view);
    constexpr std::array<Replier, 3> Repliers = {Quake3Reply, Doom3Reply, HalfLifeReply};
    return Repliers[static_cast<std::size_t>(family)](status, request);
}

bool OpensQuery(Family family, std::string_view request) {
    return family != Family::HalfLife || AfterWord(request, Quake3Mark, "info").has_value();
}

std::string MainReply(Family family, const ServerStatus& status) {
    if (family == Family::Quake3)
        return Quake3Status(status, {});
    return family == Family::Doom3 ? Doom3Info(status, std::string(4, '\0')) : HalfLifeInfo(status);
}

} // namespace quarn::gamenet
