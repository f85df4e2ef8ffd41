#include "tools/gamenet/cli/Options.h"

#include "tools/gamenet/cli/ConfigFile.h"
#include "tools/gamenet/cli/SettingKeys.h"
#include "tools/gamenet/world/DemoNetwork.h"
#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <functional>

namespace quarn::gamenet {
namespace {

// "--latency 20-90" is for every game, "--latency oa=20-90" for one.
void SetForGames(NetworkSettings& network, std::string_view key, std::string_view value) {
    const std::size_t equals = value.find('=');
    if (equals != std::string_view::npos) {
        if (GameSettings* game = FindGame(network, value.substr(0, equals))) {
            SetGameKey(*game, key, value.substr(equals + 1));
            return;
        }
    }
    for (GameSettings& game : network.games)
        SetGameKey(game, key, value);
}

void KeepGames(NetworkSettings& network, std::string_view value) {
    std::vector<GameSettings> kept;
    for (const std::string& name : ParseList(value)) {
        const GameSettings* game = FindGame(network, name);
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

constexpr Option OptionTable[] = {
    {"games", "G,G", "only these games, in this order",
     [](Options& o, const std::string& v) { KeepGames(o.network, v); }},
    {"list", "FILE", "lists servers outside the network as well: lines\n\"GAME ADDRESS:PORT\"",
     [](Options& o, const std::string& v) {
         for (const ListedServer& server : ReadServerList(v))
             o.network.listed.push_back(server);
     }},
    {"duration", "S", "ends after this many seconds",
     [](Options& o, const std::string& v) { o.duration = ParseNumber(v, 0, 1e6); }},
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
    {"asked-file", "PATH", "the number of datagrams that servers have received so far",
     [](Options& o, const std::string& v) { o.askedFile = v; }},
    {"record", "PATH", "every request in its order, written at the end",
     [](Options& o, const std::string& v) { o.record = v; }},
};

const Option* FindOption(std::string_view name) {
    const auto* found = std::find_if(std::begin(OptionTable), std::end(OptionTable),
                                     [&](const Option& option) { return option.name == name; });
    return found == std::end(OptionTable) ? nullptr : found;
}

// Calls use(name, value) for each option, with an empty value for options without one.
void EachArgument(std::span<const std::string> arguments,
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
            name == "config" || FindOption(name) != nullptr || IsNetworkKey(name) || IsGameKey(name);
        if (!known)
            throw BadSetting("unknown option: " + argument);
        if (++at == arguments.size())
            throw BadSetting("no value for " + argument);
        use(name, arguments[at]);
    }
}

void Apply(Options& result, std::string_view name, const std::string& value) {
    if (name == "help")
        result.help = true;
    else if (name == "die-with-parent")
        result.dieWithParent = true;
    else if (const Option* option = FindOption(name))
        ComplainingAs(std::string(name), [&] { option->set(result, value); });
    else if (IsNetworkKey(name))
        SetNetworkKey(result.network, name, value);
    else if (IsGameKey(name))
        SetForGames(result.network, name, value);
}

} // namespace

Options ParseOptions(std::span<const std::string> arguments) {
    Options result;
    result.network = DemoNetwork();
    EachArgument(arguments, [&](std::string_view name, const std::string& value) {
        if (name == "config")
            result.network = ReadConfigFile(value);
    });
    EachArgument(arguments,
                 [&](std::string_view name, const std::string& value) { Apply(result, name, value); });
    CheckSettings(result.network);
    return result;
}

std::string HelpText() {
    std::string help =
        "Usage: gamenet [OPTION]...\n"
        "An emulated game network on 127.0.0.0/8: masters and game servers of the Quake III (q3),\n"
        "Doom 3 (d3) and Half-Life (hl) families. Without options: the demo network of 60 servers.\n"
        "Ends on SIGINT and SIGTERM.\n\n";
    for (const Option& option : OptionTable)
        help += HelpEntry(option.name, option.value, option.meaning);
    help += HelpEntry("config", "FILE", "games and settings; before all other options") +
            HelpEntry("die-with-parent", "", "ends when the process that started it ends") +
            HelpEntry("help", "", "this text") + "\nThe network:\n" + NetworkKeysHelp() +
            "\nSettings of a game; --KEY VALUE for every game, --KEY GAME=VALUE for one:\n" + GameKeysHelp();
    return help;
}

} // namespace quarn::gamenet
