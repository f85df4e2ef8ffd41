#include "tools/gamenet/Options.h"

#include "tools/gamenet/ConfigFile.h"
#include "tools/gamenet/DemoNetwork.h"
#include "tools/gamenet/SettingKeys.h"
#include "tools/gamenet/Text.h"

#include <algorithm>
#include <functional>

namespace quarn::gamenet {
namespace {

// "--latency 20-90" is for every game, "--latency oa=20-90" for one.
void setForGames(NetworkSettings& network, std::string_view key, std::string_view value) {
    const std::size_t equals = value.find('=');
    if (equals != std::string_view::npos) {
        if (GameSettings* game = findGame(network, value.substr(0, equals))) {
            setGameKey(*game, key, value.substr(equals + 1));
            return;
        }
    }
    for (GameSettings& game : network.games)
        setGameKey(game, key, value);
}

void keepGames(NetworkSettings& network, std::string_view value) {
    std::vector<GameSettings> kept;
    for (const std::string& name : parseList(value)) {
        const GameSettings* game = findGame(network, name);
        if (game == nullptr)
            throw BadSetting("unknown game: " + name);
        kept.push_back(*game);
    }
    network.games = std::move(kept);
}

struct Option {
    std::string_view name;
    std::string_view value;
    std::string_view meaning;
    void (*set)(Options&, const std::string&);
};

constexpr Option options[] = {
    {"games", "G,G", "only these games, in this order",
     [](Options& o, const std::string& v) { keepGames(o.network, v); }},
    {"list", "FILE", "lists servers outside the network as well: lines\n\"GAME ADDRESS:PORT\"",
     [](Options& o, const std::string& v) {
         for (const ListedServer& server : readServerList(v))
             o.network.listed.push_back(server);
     }},
    {"duration", "S", "ends after so many seconds",
     [](Options& o, const std::string& v) { o.duration = parseNumber(v, 0, 1e6); }},
    {"ready-file", "PATH", "written when everything is bound",
     [](Options& o, const std::string& v) { o.readyFile = v; }},
    {"write-truth", "PATH", "what the servers say, one line each",
     [](Options& o, const std::string& v) { o.truth = v; }},
    {"write-games-ini", "PATH", "definitions file of the network's games",
     [](Options& o, const std::string& v) { o.gamesIni = v; }},
    {"country-file", "PATH", "address ranges of the network's countries",
     [](Options& o, const std::string& v) { o.countryFile = v; }},
    {"stats", "PATH", "packet counts, written at the end",
     [](Options& o, const std::string& v) { o.stats = v; }},
};

const Option* findOption(std::string_view name) {
    const auto* found = std::find_if(std::begin(options), std::end(options),
                                     [&](const Option& option) { return option.name == name; });
    return found == std::end(options) ? nullptr : found;
}

// Calls use(name, value) for each option; the options without a value get an empty one.
void eachArgument(std::span<const std::string> arguments,
                  const std::function<void(std::string_view, const std::string&)>& use) {
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        if (!argument.starts_with("--"))
            throw BadSetting("not an option: " + argument);
        const std::string_view name = std::string_view(argument).substr(2);
        if (name == "help" || name == "die-with-parent") {
            use(name, {});
            continue;
        }
        const bool known =
            name == "config" || findOption(name) != nullptr || isNetworkKey(name) || isGameKey(name);
        if (!known)
            throw BadSetting("unknown option: " + argument);
        if (++at == arguments.size())
            throw BadSetting("no value for " + argument);
        use(name, arguments[at]);
    }
}

void apply(Options& result, std::string_view name, const std::string& value) {
    if (name == "help")
        result.help = true;
    else if (name == "die-with-parent")
        result.dieWithParent = true;
    else if (const Option* option = findOption(name))
        complainingAs(std::string(name), [&] { option->set(result, value); });
    else if (isNetworkKey(name))
        setNetworkKey(result.network, name, value);
    else if (isGameKey(name))
        setForGames(result.network, name, value);
}

} // namespace

Options parseOptions(std::span<const std::string> arguments) {
    Options result;
    result.network = demoNetwork();
    eachArgument(arguments, [&](std::string_view name, const std::string& value) {
        if (name == "config")
            result.network = readConfigFile(value);
    });
    eachArgument(arguments,
                 [&](std::string_view name, const std::string& value) { apply(result, name, value); });
    checkSettings(result.network);
    return result;
}

std::string helpText() {
    std::string help =
        "Usage: gamenet [OPTION]...\n"
        "An emulated game network on 127.0.0.0/8: masters and game servers of the Quake III (q3),\n"
        "Doom 3 (d3) and Half-Life (hl) families. Without options: the demo network of 60 servers.\n"
        "Ends on SIGINT and SIGTERM.\n\n";
    for (const Option& option : options)
        help += helpEntry(option.name, option.value, option.meaning);
    help += helpEntry("config", "FILE", "games and settings; before all other options") +
            helpEntry("die-with-parent", "", "ends when the process that started it ends") +
            helpEntry("help", "", "this text") + "\nThe network:\n" + networkKeysHelp() +
            "\nSettings of a game; --KEY VALUE for every game, --KEY GAME=VALUE for one:\n" + gameKeysHelp();
    return help;
}

} // namespace quarn::gamenet
