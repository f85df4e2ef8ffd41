#include "tests/tools/gamenet/BrowserReading.h"

#include "tools/gamenet/Text.h"

#include <algorithm>

namespace quarn::gamenet {
namespace {

std::string takeField(std::string& text, char separator) {
    const std::size_t at = text.find(separator, 1);
    if (text.empty() || at == std::string::npos)
        throw ReadingFailed("a field without an end: " + truthEscaped(text.substr(0, 60)));
    std::string field = text.substr(0, at);
    text.erase(0, at + 1);
    return field;
}

int takeNumber(std::string& text, char separator) {
    const std::string field = takeField(text, separator);
    try {
        return static_cast<int>(parseWhole(field, -32768, 32767));
    } catch (const BadSetting&) {
        throw ReadingFailed("no number: " + truthEscaped(field));
    }
}

int code(const std::string& text, std::size_t at) {
    return static_cast<unsigned char>(text.at(at));
}

// Whether the key was one with a column; its value is taken then.
bool readQuake3Key(const std::string& key, std::string& info, Reading& reading) {
    if (key == "sv_maxclients")
        reading.maxPlayers = takeNumber(info, '\\');
    else if (key == "sv_hostname")
        reading.name = withoutColours(takeField(info, '\\'));
    else if (key == "mapname")
        reading.map = takeField(info, '\\');
    else if (key == "gamename")
        reading.mod = takeField(info, '\\');
    else if (key == "g_needpass" || key == "pswrd")
        reading.locked = takeNumber(info, '\\');
    else
        return false;
    return true;
}

bool readDoom3Key(const std::string& key, std::string& text, Reading& reading) {
    if (key == "si_usepass")
        reading.locked = takeNumber(text, '\0');
    else if (key == "si_maxplayers")
        reading.maxPlayers = takeNumber(text, '\0');
    else if (key == "si_name")
        reading.name = withoutColours(takeField(text, '\0'));
    else if (key == "si_map")
        reading.map = takeField(text, '\0');
    else if (key == "gamename")
        reading.mod = takeField(text, '\0');
    else
        return false;
    return true;
}

const std::string twoNuls(2, '\0');
const std::string nulBlank("\0 ", 2);

// False where the pairs say that nobody plays.
bool readDoom3Pairs(std::string& text, Reading& reading) {
    while (!text.starts_with(twoNuls)) {
        const bool loneNul = text.size() > 1 && text[0] == '\0';
        if (loneNul)
            return true;
        const std::string key = lowerCase(takeField(text, '\0'));
        if (!readDoom3Key(key, text, reading)) {
            reading.variables += '\\' + key;
            if (text.starts_with('\0')) {
                text.erase(0, 1);
                reading.variables += '\\';
            }
        }
        if (text.starts_with(nulBlank))
            return false;
    }
    return true;
}

void readDoom3Players(std::string text, Reading& reading) {
    text.erase(0, 2);
    while (text.size() >= 6) {
        ReadPlayer player;
        if (code(text, 1) >= 128)
            throw ReadingFailed("a ping that overflows");
        player.ping = code(text, 1) * 256 + code(text, 2);
        text.erase(0, 7);
        player.name = withoutColours(takeField(text, '\0'));
        reading.players.push_back(player);
    }
}

void readHalfLifeInfo(std::string text, Reading& reading) {
    takeField(text, '\0');
    reading.name = takeField(text, '\0');
    reading.map = takeField(text, '\0');
    reading.mod = takeField(text, '\0');
    reading.maxPlayers = code(text, 1);
}

void readHalfLifePlayers(std::string text, Reading& reading) {
    text.erase(0, 7);
    while (text.size() >= 5) {
        ReadPlayer player;
        player.name = takeField(text, '\0');
        player.score = code(text, 0);
        text.erase(0, 9);
        reading.players.push_back(player);
    }
}

void eraseAll(std::string& text, const std::string& word) {
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at))
        text.erase(at, word.size());
}

} // namespace

Reading readQuake3Status(std::string reply) {
    Reading reading;
    takeField(reply, '\n');
    std::string info = takeField(reply, '\n').substr(1) + '\\';
    while (!info.empty()) {
        const std::string key = lowerCase(takeField(info, '\\'));
        if (!readQuake3Key(key, info, reading))
            reading.variables += '\\' + key;
    }
    while (!reply.empty()) {
        ReadPlayer player;
        player.score = takeNumber(reply, ' ');
        player.ping = takeNumber(reply, ' ');
        player.name = withoutColours(takeField(reply, '\n'));
        reading.players.push_back(player);
    }
    return reading;
}

Reading readDoom3Status(const std::string& reply) {
    Reading reading;
    const std::size_t start = reply.find(std::string("\0\1\0", 3));
    if (start == std::string::npos)
        throw ReadingFailed("no start of the pairs");
    std::string text = reply.substr(start + 3);
    const bool players = readDoom3Pairs(text, reading);
    if (reading.variables.ends_with('\\')) {
        reading.variables.pop_back();
        text.insert(0, 1, '\0');
    }
    if (players)
        readDoom3Players(text, reading);
    return reading;
}

void readHalfLife(std::string reply, Reading& reading) {
    const char type = reply.at(4);
    if (type == 'C') {
        readHalfLifeInfo(std::move(reply), reading);
    } else if (type == 'D') {
        readHalfLifePlayers(std::move(reply), reading);
    } else if (type == 'E') {
        std::replace(reply.begin(), reply.end(), '\0', '\\');
        reading.variables = reply;
    }
}

std::vector<Endpoint> readMasterList(Family family, const std::string& header, const std::string& reply) {
    const char delimiter = family == Family::Doom3 ? '\0' : '\\';
    std::string body = reply;
    if (takeField(body, delimiter) != header)
        return {};
    if (family == Family::Quake3) {
        eraseAll(body, "EOT");
        eraseAll(body, "EOF");
    }
    std::vector<Endpoint> servers;
    for (std::size_t at = 0; at + 6 <= body.size(); at += family == Family::Doom3 ? 6 : 7) {
        Endpoint server;
        for (std::size_t nth = 0; nth < 4; ++nth)
            server.address = server.address << 8 | static_cast<std::uint32_t>(code(body, at + nth));
        const int high = code(body, at + (family == Family::Doom3 ? 5 : 4));
        const int low = code(body, at + (family == Family::Doom3 ? 4 : 5));
        server.port = static_cast<std::uint16_t>(high * 256 + low);
        servers.push_back(server);
    }
    return servers;
}

} // namespace quarn::gamenet
