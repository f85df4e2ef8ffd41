#include "tools/gamenet/ServerReplies.h"

#include "tools/gamenet/Text.h"
#include "tools/gamenet/Wire.h"

#include <algorithm>
#include <array>

namespace quarn::gamenet {
namespace {

constexpr std::string_view quake3Mark = "\xFF\xFF\xFF\xFF";
constexpr std::string_view doom3Mark = "\xFF\xFF";

// What stands behind the mark and the word; nothing where they do not match.
std::optional<std::string_view> afterWord(std::string_view request, std::string_view mark,
                                          std::string_view word) {
    if (!request.starts_with(mark))
        return {};
    request.remove_prefix(mark.size());
    if (!startsWithIgnoringCase(request, word))
        return {};
    return request.substr(word.size());
}

std::string infoString(const Variables& variables) {
    std::string text;
    for (const auto& [key, value] : variables)
        text.append("\\").append(key).append("\\").append(value);
    return text;
}

std::string challengeOf(std::string_view rest) {
    constexpr std::size_t longestChallenge = 128;
    const std::string challenge = trimmed(rest.substr(0, rest.find('\0')));
    return challenge.substr(0, longestChallenge);
}

std::string quake3Status(const ServerStatus& status, const std::string& challenge) {
    std::string reply = std::string(quake3Mark) + "statusResponse\n" + infoString(status.variables);
    if (!challenge.empty())
        reply += "\\challenge\\" + challenge;
    reply += '\n';
    for (const Player& player : status.players)
        reply +=
            std::to_string(player.score) + ' ' + std::to_string(player.ping) + " \"" + player.name + "\"\n";
    return reply;
}

std::string quake3Info(const ServerStatus& status, const std::string& challenge) {
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
    return std::string(quake3Mark) + "infoResponse\n" + infoString(variables);
}

std::optional<std::string> quake3Reply(const ServerStatus& status, std::string_view request) {
    if (const auto rest = afterWord(request, quake3Mark, "getstatus"))
        return quake3Status(status, challengeOf(*rest));
    if (const auto rest = afterWord(request, quake3Mark, "getinfo"))
        return quake3Info(status, challengeOf(*rest));
    return {};
}

std::string doom3Info(const ServerStatus& status, std::string_view challenge) {
    constexpr std::size_t maxClients = 32;
    constexpr std::uint32_t rate = 16000;
    std::string reply(doom3Mark);
    putText(reply, "infoResponse");
    reply += challenge;
    putLittle32(reply, doom3Protocol(status.protocol));
    for (const auto& [key, value] : status.variables) {
        putText(reply, key);
        putText(reply, value);
    }
    putText(reply, "");
    putText(reply, "");
    for (std::size_t client = 0; client < std::min(status.players.size(), maxClients); ++client) {
        putByte(reply, static_cast<std::uint32_t>(client));
        putLittle16(reply, static_cast<std::uint32_t>(status.players[client].ping));
        putLittle32(reply, rate);
        putText(reply, status.players[client].name);
    }
    putByte(reply, maxClients);
    putLittle32(reply, 7); // Windows, Mac and Linux have the game
    return reply;
}

std::optional<std::string> doom3Reply(const ServerStatus& status, std::string_view request) {
    constexpr std::size_t challengeSize = 4;
    const auto rest = afterWord(request, doom3Mark, "getinfo");
    if (!rest)
        return {};
    std::string challenge(rest->starts_with('\0') ? rest->substr(1, challengeSize) : std::string_view());
    challenge.resize(challengeSize);
    return doom3Info(status, challenge);
}

std::string halfLifeInfo(const ServerStatus& status) {
    std::string reply(quake3Mark);
    reply += 'C';
    putText(reply, endpointText(status.endpoint));
    putText(reply, status.name);
    putText(reply, status.map);
    putText(reply, status.mod);
    if (!status.info.empty())
        putText(reply, status.info);
    putByte(reply, static_cast<std::uint32_t>(status.players.size()));
    putByte(reply, static_cast<std::uint32_t>(status.maxPlayers));
    putByte(reply, static_cast<std::uint32_t>(parseWhole(status.protocol, 0, 255)));
    return reply;
}

std::string halfLifePlayers(const ServerStatus& status) {
    std::string reply(quake3Mark);
    reply += 'D';
    putByte(reply, static_cast<std::uint32_t>(status.players.size()));
    std::uint32_t index = 0;
    for (const Player& player : status.players) {
        putByte(reply, ++index);
        putText(reply, player.name);
        putLittle32(reply, static_cast<std::uint32_t>(player.score));
        putFloat(reply, player.seconds);
    }
    return reply;
}

std::string halfLifeRules(const ServerStatus& status) {
    std::string reply(quake3Mark);
    reply += 'E';
    putLittle16(reply, static_cast<std::uint32_t>(status.variables.size()));
    for (const auto& [name, value] : status.variables) {
        putText(reply, name);
        putText(reply, value);
    }
    return reply;
}

std::optional<std::string> halfLifeReply(const ServerStatus& status, std::string_view request) {
    if (afterWord(request, quake3Mark, "info"))
        return halfLifeInfo(status);
    if (afterWord(request, quake3Mark, "players"))
        return halfLifePlayers(status);
    if (afterWord(request, quake3Mark, "rules"))
        return halfLifeRules(status);
    if (afterWord(request, quake3Mark, "ping"))
        return std::string(quake3Mark) + 'j';
    return {};
}

} // namespace

std::optional<std::string> serverReply(Family family, const ServerStatus& status, std::string_view request) {
    using Replier = std::optional<std::string> (*)(const ServerStatus&, std::string_view);
    constexpr std::array<Replier, 3> repliers = {quake3Reply, doom3Reply, halfLifeReply};
    return repliers[static_cast<std::size_t>(family)](status, request);
}

bool opensQuery(Family family, std::string_view request) {
    return family != Family::HalfLife || afterWord(request, quake3Mark, "info").has_value();
}

bool closesQuery(Family family, std::string_view request) {
    return family != Family::HalfLife || afterWord(request, quake3Mark, "players").has_value();
}

std::string mainReply(Family family, const ServerStatus& status) {
    if (family == Family::Quake3)
        return quake3Status(status, {});
    return family == Family::Doom3 ? doom3Info(status, std::string(4, '\0')) : halfLifeInfo(status);
}

} // namespace quarn::gamenet
