#include "tests/tools/gamenet/BrowserReading.h"

#include "tools/gamenet/world/Text.h"

#include <algorithm>

namespace quarn::gamenet {
namespace {

std::string TakeField(std::string& text, char separator) {
    const std::size_t at = text.find(separator, 1);
    if (text.empty() || at == std::string::npos)
        throw ReadingFailed("a field without an end: " + TruthEscaped(text.substr(0, 60)));
    std::string field = text.substr(0, at);
    text.erase(0, at + 1);
    return field;
}

int TakeNumber(std::string& text, char separator) {
    const std::string field = TakeField(text, separator);
    try {
        return static_cast<int>(ParseWhole(field, -32768, 32767));
    } catch (const BadSetting&) {
        throw ReadingFailed("no number: " + TruthEscaped(field));
    }
}

int Code(const std::string& text, std::size_t at) {
    return static_cast<unsigned char>(text.at(at));
}

// Whether the browser has a column for the key; its value has then been read.
bool ReadQuake3Key(const std::string& key, std::string& info, Reading& reading) {
    if (key == "sv_maxclients")
        reading.maxPlayers = TakeNumber(info, '\\');
    else if (key == "sv_hostname")
        reading.name = WithoutColours(TakeField(info, '\\'));
    else if (key == "mapname")
        reading.map = TakeField(info, '\\');
    else if (key == "gamename")
        reading.mod = TakeField(info, '\\');
    else if (key == "g_needpass" || key == "pswrd")
        reading.locked = TakeNumber(info, '\\');
    else
        return false;
    return true;
}

bool ReadDoom3Key(const std::string& key, std::string& text, Reading& reading) {
    if (key == "si_usepass")
        reading.locked = TakeNumber(text, '\0');
    else if (key == "si_maxplayers")
        reading.maxPlayers = TakeNumber(text, '\0');
    else if (key == "si_name")
        reading.name = WithoutColours(TakeField(text, '\0'));
    else if (key == "si_map")
        reading.map = TakeField(text, '\0');
    else if (key == "gamename")
        reading.mod = TakeField(text, '\0');
    else
        return false;
    return true;
}

const std::string TwoNuls(2, '\0');
const std::string NulBlank("\0 ", 2);

// False if no players follow the pairs.
bool ReadDoom3Pairs(std::string& text, Reading& reading) {
    while (!text.starts_with(TwoNuls)) {
        const bool loneNul = text.size() > 1 && text[0] == '\0';
        if (loneNul)
            return true;
        const std::string key = LowerCase(TakeField(text, '\0'));
        if (!ReadDoom3Key(key, text, reading)) {
            reading.variables += '\\' + key;
            if (text.starts_with('\0')) {
                text.erase(0, 1);
                reading.variables += '\\';
            }
        }
        if (text.starts_with(NulBlank))
            return false;
    }
    return true;
}

void ReadDoom3Players(std::string text, Reading& reading) {
    text.erase(0, 2);
    while (text.size() >= 6) {
        ReadPlayer player;
        if (Code(text, 1) >= 128)
            throw ReadingFailed("a ping that overflows");
        player.ping = Code(text, 1) * 256 + Code(text, 2);
        text.erase(0, 7);
        player.name = WithoutColours(TakeField(text, '\0'));
        reading.players.push_back(player);
    }
}

void ReadHalfLifeInfo(std::string text, Reading& reading) {
    TakeField(text, '\0');
    reading.name = TakeField(text, '\0');
    reading.map = TakeField(text, '\0');
    reading.mod = TakeField(text, '\0');
    reading.maxPlayers = Code(text, 1);
}

void ReadHalfLifePlayers(std::string text, Reading& reading) {
    text.erase(0, 7);
    while (text.size() >= 5) {
        ReadPlayer player;
        player.name = TakeField(text, '\0');
        player.score = Code(text, 0);
        text.erase(0, 9);
        reading.players.push_back(player);
    }
}

void EraseAll(std::string& text, const std::string& word) {
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at))
        text.erase(at, word.size());
}

Reading ReadQuake3Status(std::string reply) {
    Reading reading;
    TakeField(reply, '\n');
    std::string info = TakeField(reply, '\n').substr(1) + '\\';
    while (!info.empty()) {
        const std::string key = LowerCase(TakeField(info, '\\'));
        if (!ReadQuake3Key(key, info, reading))
            reading.variables += '\\' + key;
    }
    while (!reply.empty()) {
        ReadPlayer player;
        player.score = TakeNumber(reply, ' ');
        player.ping = TakeNumber(reply, ' ');
        player.name = WithoutColours(TakeField(reply, '\n'));
        reading.players.push_back(player);
    }
    return reading;
}

Reading ReadDoom3Status(const std::string& reply) {
    Reading reading;
    const std::size_t start = reply.find(std::string("\0\1\0", 3));
    if (start == std::string::npos)
        throw ReadingFailed("no start of the pairs");
    std::string text = reply.substr(start + 3);
    const bool players = ReadDoom3Pairs(text, reading);
    if (reading.variables.ends_with('\\')) {
        reading.variables.pop_back();
        text.insert(0, 1, '\0');
    }
    if (players)
        ReadDoom3Players(text, reading);
    return reading;
}

void ReadHalfLife(std::string reply, Reading& reading) {
    const char type = reply.at(4);
    if (type == 'C') {
        ReadHalfLifeInfo(std::move(reply), reading);
    } else if (type == 'D') {
        ReadHalfLifePlayers(std::move(reply), reading);
    } else if (type == 'E') {
        std::replace(reply.begin(), reply.end(), '\0', '\\');
        reading.variables = reply;
    }
}

} // namespace

Reading ReadReplies(Family family, const std::vector<std::string>& replies) {
    if (family == Family::Quake3)
        return ReadQuake3Status(replies.at(0));
    if (family == Family::Doom3)
        return ReadDoom3Status(replies.at(0));
    Reading reading;
    for (const std::string& reply : replies)
        ReadHalfLife(reply, reading);
    return reading;
}

std::vector<Endpoint> ReadMasterList(Family family, const std::string& header, const std::string& reply) {
    const char delimiter = family == Family::Doom3 ? '\0' : '\\';
    std::string body = reply;
    if (TakeField(body, delimiter) != header)
        return {};
    if (family == Family::Quake3) {
        EraseAll(body, "EOT");
        EraseAll(body, "EOF");
    }
    std::vector<Endpoint> servers;
    for (std::size_t at = 0; at + 6 <= body.size(); at += family == Family::Doom3 ? 6 : 7) {
        Endpoint server;
        for (std::size_t nth = 0; nth < 4; ++nth)
            server.address = server.address << 8 | static_cast<std::uint32_t>(Code(body, at + nth));
        const int high = Code(body, at + (family == Family::Doom3 ? 5 : 4));
        const int low = Code(body, at + (family == Family::Doom3 ? 4 : 5));
        server.port = static_cast<std::uint16_t>(high * 256 + low);
        servers.push_back(server);
    }
    return servers;
}

} // namespace quarn::gamenet
