#include "tools/gamenet/cli/ConfigFile.h"

#include "tools/gamenet/cli/SettingKeys.h"
#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/world/DemoNetwork.h"
#include "tools/gamenet/world/Text.h"

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

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw BadSetting("cannot read " + path);
    return text;
}

// Trimmed, without empty lines and comments.
std::vector<Line> MeaningfulLines(const std::string& text) {
    std::vector<Line> lines;
    std::size_t number = 0;
    for (const std::string& raw : SplitText(text, '\n')) {
        ++number;
        std::string line = Trimmed(raw);
        if (!line.empty() && line[0] != ';' && line[0] != '#')
            lines.push_back({number, std::move(line)});
    }
    return lines;
}

std::string Place(const std::string& fileName, std::size_t line) {
    return fileName + ':' + std::to_string(line);
}

std::string SectionName(const std::string& line) {
    const std::string name = line.back() == ']' ? Trimmed(line.substr(1, line.size() - 2)) : "";
    const bool game = name.starts_with("game ") && name.size() > 5;
    if (name != "network" && name != "all" && !game)
        throw BadSetting("not [network], [all] or [game SHORT]: " + line);
    return game ? "game " + Trimmed(name.substr(5)) : name;
}

std::vector<Entry> ParseEntries(const std::string& text, const std::string& fileName) {
    std::vector<Entry> entries;
    std::string section;
    for (const Line& line : MeaningfulLines(text)) {
        ComplainingAs(Place(fileName, line.number), [&] {
            if (line.text[0] == '[') {
                section = SectionName(line.text);
                return;
            }
            const std::size_t equals = line.text.find('=');
            if (section.empty() || equals == std::string::npos)
                throw BadSetting("not \"key = value\" in a section: " + line.text);
            entries.push_back({line.number, section, Trimmed(line.text.substr(0, equals)),
                               Trimmed(line.text.substr(equals + 1))});
        });
    }
    return entries;
}

// The game's short name if the section is a game's, else empty.
std::string GameOf(const std::string& section) {
    return section.starts_with("game ") ? section.substr(5) : std::string();
}

void SetBase(NetworkSettings& network, const std::string& value) {
    if (value != "demo" && value != "none")
        throw BadSetting("base: not demo or none: " + value);
    if (value == "none")
        network.games.clear();
}

void AddOrCheckGame(NetworkSettings& network, const std::string& name, Family family) {
    const GameSettings* game = FindGame(network, name);
    if (game == nullptr)
        network.games.push_back(PlainGame(family, name));
    else if (game->family != family)
        throw BadSetting("family: " + name + " is already a game of another family");
}

void ApplyEntry(NetworkSettings& network, const Entry& entry) {
    GameSettings* game = FindGame(network, GameOf(entry.section));
    if (game == nullptr)
        throw BadSetting("a new game needs its family: " + GameOf(entry.section));
    if (entry.key != "family")
        SetGameKey(*game, entry.key, entry.value);
}

} // namespace

NetworkSettings ParseConfig(const std::string& text, const std::string& fileName) {
    NetworkSettings network = DemoNetwork();
    const std::vector<Entry> entries = ParseEntries(text, fileName);
    // In passes, so that the sections may come in any order: first the games, then the settings for all of
    // them, then those for each.
    const auto pass = [&](auto&& wanted, auto&& step) {
        for (const Entry& entry : entries)
            if (wanted(entry))
                ComplainingAs(Place(fileName, entry.line), [&] { step(entry); });
    };
    pass([](const Entry& e) { return e.section == "network"; },
         [&](const Entry& e) {
             if (e.key == "base")
                 SetBase(network, e.value);
             else
                 SetNetworkKey(network, e.key, e.value);
         });
    pass([](const Entry& e) { return e.key == "family" && !GameOf(e.section).empty(); },
         [&](const Entry& e) { AddOrCheckGame(network, GameOf(e.section), ParseFamily(e.value)); });
    pass([](const Entry& e) { return e.section == "all"; },
         [&](const Entry& e) {
             for (GameSettings& game : network.games)
                 SetGameKey(game, e.key, e.value);
         });
    pass([](const Entry& e) { return !GameOf(e.section).empty(); },
         [&](const Entry& e) { ApplyEntry(network, e); });
    return network;
}

NetworkSettings ReadConfigFile(const std::string& path) {
    return ParseConfig(ReadFile(path), path);
}

std::vector<ListedServer> ParseServerList(const std::string& text, const std::string& fileName) {
    std::vector<ListedServer> servers;
    for (const Line& line : MeaningfulLines(text)) {
        ComplainingAs(Place(fileName, line.number), [&] {
            const std::size_t blank = line.text.find_first_of(" \t");
            if (blank == std::string::npos)
                throw BadSetting("not \"GAME ADDRESS:PORT\": " + line.text);
            const Endpoint endpoint = ParseLoopbackEndpoint(Trimmed(line.text.substr(blank)));
            if (LooksLikeEndMark(endpoint))
                throw BadSetting("its bytes would read as the end of a list: " + line.text);
            servers.push_back({line.text.substr(0, blank), endpoint});
        });
    }
    return servers;
}

std::vector<ListedServer> ReadServerList(const std::string& path) {
    return ParseServerList(ReadFile(path), path);
}

} // namespace quarn::gamenet
