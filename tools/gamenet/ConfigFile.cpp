#include "tools/gamenet/ConfigFile.h"

#include "tools/gamenet/DemoNetwork.h"
#include "tools/gamenet/MasterList.h"
#include "tools/gamenet/SettingKeys.h"
#include "tools/gamenet/Text.h"

#include <fstream>
#include <iterator>

namespace quarn::gamenet {
namespace {

struct Line {
    std::size_t number = 0;
    std::string text;
};

struct Entry {
    std::size_t line = 0;
    std::string section;
    std::string key;
    std::string value;
};

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw BadSetting("cannot read " + path);
    return text;
}

// Trimmed, without empty lines and comments.
std::vector<Line> meaningfulLines(const std::string& text) {
    std::vector<Line> lines;
    std::size_t number = 0;
    for (const std::string& raw : splitText(text, '\n')) {
        ++number;
        std::string line = trimmed(raw);
        if (!line.empty() && line[0] != ';' && line[0] != '#')
            lines.push_back({number, std::move(line)});
    }
    return lines;
}

std::string place(const std::string& fileName, std::size_t line) {
    return fileName + ':' + std::to_string(line);
}

std::string sectionName(const std::string& line) {
    const std::string name = line.back() == ']' ? trimmed(line.substr(1, line.size() - 2)) : "";
    const bool game = name.starts_with("game ") && name.size() > 5;
    if (name != "network" && name != "all" && !game)
        throw BadSetting("not [network], [all] or [game SHORT]: " + line);
    return game ? "game " + trimmed(name.substr(5)) : name;
}

std::vector<Entry> parseEntries(const std::string& text, const std::string& fileName) {
    std::vector<Entry> entries;
    std::string section;
    for (const Line& line : meaningfulLines(text)) {
        complainingAs(place(fileName, line.number), [&] {
            if (line.text[0] == '[') {
                section = sectionName(line.text);
                return;
            }
            const std::size_t equals = line.text.find('=');
            if (section.empty() || equals == std::string::npos)
                throw BadSetting("not \"key = value\" in a section: " + line.text);
            entries.push_back({line.number, section, trimmed(line.text.substr(0, equals)),
                               trimmed(line.text.substr(equals + 1))});
        });
    }
    return entries;
}

// The game's short name where the section is a game's.
std::string gameOf(const std::string& section) {
    return section.starts_with("game ") ? section.substr(5) : std::string();
}

void setBase(NetworkSettings& network, const std::string& value) {
    if (value != "demo" && value != "none")
        throw BadSetting("base: not demo or none: " + value);
    if (value == "none")
        network.games.clear();
}

void addOrCheckGame(NetworkSettings& network, const std::string& name, Family family) {
    const GameSettings* game = findGame(network, name);
    if (game == nullptr)
        network.games.push_back(plainGame(family, name));
    else if (game->family != family)
        throw BadSetting("family: " + name + " is already a game of another family");
}

void applyEntry(NetworkSettings& network, const Entry& entry) {
    GameSettings* game = findGame(network, gameOf(entry.section));
    if (game == nullptr)
        throw BadSetting("a new game needs its family: " + gameOf(entry.section));
    if (entry.key != "family")
        setGameKey(*game, entry.key, entry.value);
}

} // namespace

NetworkSettings parseConfig(const std::string& text, const std::string& fileName) {
    NetworkSettings network = demoNetwork();
    const std::vector<Entry> entries = parseEntries(text, fileName);
    // In passes, so that the sections may stand in any order: what games there are, what holds for all
    // of them, what holds for each.
    const auto pass = [&](auto&& wanted, auto&& step) {
        for (const Entry& entry : entries)
            if (wanted(entry))
                complainingAs(place(fileName, entry.line), [&] { step(entry); });
    };
    pass([](const Entry& e) { return e.section == "network"; },
         [&](const Entry& e) {
             if (e.key == "base")
                 setBase(network, e.value);
             else
                 setNetworkKey(network, e.key, e.value);
         });
    pass([](const Entry& e) { return e.key == "family" && !gameOf(e.section).empty(); },
         [&](const Entry& e) { addOrCheckGame(network, gameOf(e.section), parseFamily(e.value)); });
    pass([](const Entry& e) { return e.section == "all"; },
         [&](const Entry& e) {
             for (GameSettings& game : network.games)
                 setGameKey(game, e.key, e.value);
         });
    pass([](const Entry& e) { return !gameOf(e.section).empty(); },
         [&](const Entry& e) { applyEntry(network, e); });
    return network;
}

NetworkSettings readConfigFile(const std::string& path) {
    return parseConfig(readFile(path), path);
}

std::vector<ListedServer> parseServerList(const std::string& text, const std::string& fileName) {
    std::vector<ListedServer> servers;
    for (const Line& line : meaningfulLines(text)) {
        complainingAs(place(fileName, line.number), [&] {
            const std::size_t blank = line.text.find_first_of(" \t");
            if (blank == std::string::npos)
                throw BadSetting("not \"GAME ADDRESS:PORT\": " + line.text);
            const Endpoint endpoint = parseLoopbackEndpoint(trimmed(line.text.substr(blank)));
            if (looksLikeEndMark(endpoint))
                throw BadSetting("its bytes would read as the end of a list: " + line.text);
            servers.push_back({line.text.substr(0, blank), endpoint});
        });
    }
    return servers;
}

std::vector<ListedServer> readServerList(const std::string& path) {
    return parseServerList(readFile(path), path);
}

} // namespace quarn::gamenet
