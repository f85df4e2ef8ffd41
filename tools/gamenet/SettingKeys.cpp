#include "tools/gamenet/SettingKeys.h"

#include "tools/gamenet/Text.h"

#include <algorithm>
#include <limits>
#include <span>

namespace quarn::gamenet {
namespace {

template<class Target>
struct Key {
    std::string_view name;
    std::string_view value;
    std::string_view meaning;
    void (*set)(Target&, std::string_view);
};

constexpr int longestWait = 600'000; // milliseconds
constexpr int mostServers = 100'000;

int wholeUpTo(std::string_view text, int high) {
    return static_cast<int>(parseWhole(text, 0, high));
}

double percent(std::string_view text) {
    return parseNumber(text, 0, 100);
}

// "20" or "20-90".
Range range(std::string_view text, int low, int high) {
    const std::size_t dash = text.find('-');
    const bool single = dash == std::string_view::npos;
    const Range result{static_cast<int>(parseWhole(text.substr(0, dash), low, high)),
                       static_cast<int>(parseWhole(single ? text : text.substr(dash + 1), low, high))};
    if (result.low > result.high)
        throw BadSetting("the range runs backwards: " + std::string(text));
    return result;
}

// A text that goes between separators or NULs must not hold one; a line end cannot stand in any.
std::string plainText(std::string_view text) {
    if (text.find_first_of(std::string_view("\0\r\n\\\"", 5)) != std::string_view::npos)
        throw BadSetting("holds a backslash, a quote or a line end: " + truthEscaped(text));
    return std::string(text);
}

std::string neededText(std::string_view text) {
    if (text.empty())
        throw BadSetting("is empty");
    return plainText(text);
}

std::vector<std::string> plainList(std::string_view text) {
    std::vector<std::string> list = parseList(text);
    for (const std::string& entry : list)
        plainText(entry);
    return list;
}

// "osp:Orange Smoothie, cpma"
std::vector<Mod> mods(std::string_view text) {
    std::vector<Mod> result;
    for (const std::string& entry : plainList(text)) {
        const std::size_t colon = entry.find(':');
        const std::string name = trimmed(entry.substr(0, colon));
        result.push_back({name, colon == std::string::npos ? name : trimmed(entry.substr(colon + 1))});
        if (name.empty())
            throw BadSetting("a MOD without a name: " + entry);
    }
    return result;
}

// "static", "requests:5", "seconds:30"
Churn churn(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string_view clock = text.substr(0, colon);
    if (text == "static")
        return {};
    if (colon == std::string_view::npos || (clock != "requests" && clock != "seconds"))
        throw BadSetting("not static, requests:N or seconds:N: " + std::string(text));
    return {clock == "requests" ? Churn::Clock::Requests : Churn::Clock::Seconds,
            static_cast<int>(parseWhole(text.substr(colon + 1), 1, 1'000'000))};
}

EndMark endMark(std::string_view text) {
    if (text == "none")
        return EndMark::None;
    if (text != "last" && text != "every")
        throw BadSetting("not none, last or every: " + std::string(text));
    return text == "last" ? EndMark::Last : EndMark::Every;
}

HalfLifeList halfLifeList(std::string_view text) {
    if (text != "separated" && text != "packed")
        throw BadSetting("not separated or packed: " + std::string(text));
    return text == "packed" ? HalfLifeList::Packed : HalfLifeList::Separated;
}

std::vector<std::string> countries(std::string_view text) {
    std::vector<std::string> codes = parseList(text);
    for (const std::string& code : codes)
        if (code.size() != 2 || code.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos)
            throw BadSetting("not a country code of two capitals: " + code);
    return codes;
}

using G = GameSettings;
using Text = std::string_view;

constexpr Key<G> gameKeys[] = {
    {"servers", "N", "number of servers", [](G& g, Text v) { g.servers = wholeUpTo(v, mostServers); }},
    {"latency", "MS[-MS]", "answer time, drawn once a server",
     [](G& g, Text v) { g.latency = range(v, 0, longestWait); }},
    {"jitter", "MS", "up to so much is added to each answer",
     [](G& g, Text v) { g.jitter = wholeUpTo(v, longestWait); }},
    {"loss", "PERCENT", "requests that get lost", [](G& g, Text v) { g.loss = percent(v); }},
    {"silent", "PERCENT", "servers that never answer", [](G& g, Text v) { g.silent = percent(v); }},
    {"closed", "PERCENT", "servers on whose port nothing listens",
     [](G& g, Text v) { g.closed = percent(v); }},
    {"locked", "PERCENT", "servers with a password (q3, d3)", [](G& g, Text v) { g.locked = percent(v); }},
    {"liars", "PERCENT", "servers that lie", [](G& g, Text v) { g.liars = percent(v); }},
    {"liar-kinds", "all|K,K",
     "truncated, empty, unterminated, oversized, random,\n"
     "late, duplicated, wrong-family",
     [](G& g, Text v) { g.liarKinds = parseLiarKinds(v); }},
    {"late-by", "MS", "lateness of the late liars",
     [](G& g, Text v) { g.lateBy = wholeUpTo(v, longestWait); }},
    {"slots", "N[-N]", "maximum players", [](G& g, Text v) { g.slots = range(v, 1, 64); }},
    {"fill", "PERCENT[-PERCENT]", "players, of the slots", [](G& g, Text v) { g.fill = range(v, 0, 100); }},
    {"churn", "HOW", "players come and go: static, requests:N or seconds:N",
     [](G& g, Text v) { g.churn = churn(v); }},
    {"mods", "M,M", "a MOD is NAME or NAME:Description", [](G& g, Text v) { g.mods = mods(v); }},
    {"maps", "M,M", "maps", [](G& g, Text v) { g.maps = plainList(v); }},
    {"game-types", "T,T", "values of the game type variable",
     [](G& g, Text v) { g.gameTypes = plainList(v); }},
    {"description", "TEXT", "the game's name", [](G& g, Text v) { g.description = neededText(v); }},
    {"exe", "FILE", "the game's executable", [](G& g, Text v) { g.exeName = neededText(v); }},
    {"version", "TEXT", "value of the version variable", [](G& g, Text v) { g.version = neededText(v); }},
    {"protocol", "N[.N]", "protocol number; d3: MAJOR.MINOR",
     [](G& g, Text v) { g.protocol = neededText(v); }},
    {"port", "N", "port of all the game's servers",
     [](G& g, Text v) { g.port = static_cast<std::uint16_t>(parseWhole(v, 1, 65535)); }},
    {"info", "TEXT", "description text of an hl info reply",
     [](G& g, Text v) { g.serverInfo = plainText(v); }},
    {"master", "ADDRESS:PORT", "the game's master",
     [](G& g, Text v) { g.master = parseLoopbackEndpoint(v); }},
    {"master-latency", "MS", "answer time of the master",
     [](G& g, Text v) { g.masterLatency = wholeUpTo(v, longestWait); }},
    {"master-pace", "MS", "time between the datagrams of a list",
     [](G& g, Text v) { g.masterPace = wholeUpTo(v, longestWait); }},
    {"master-lie", "HOW",
     "none, silent, truncated, random, wrong-header,\n"
     "oversized, duplicated",
     [](G& g, Text v) { g.masterLie = parseMasterLie(v); }},
    {"list-entries", "N", "addresses in a datagram; 0: 1400 bytes",
     [](G& g, Text v) { g.listEntries = wholeUpTo(v, 9000); }},
    {"end-mark", "WHICH", "datagrams of a q3 list with \\EOT: none, last, every",
     [](G& g, Text v) { g.endMark = endMark(v); }},
    {"hl-list", "FORM", "an hl list is separated or packed",
     [](G& g, Text v) { g.halfLifeList = halfLifeList(v); }},
    {"request", "TEXT", "MasterPacket of Games.ini, as it stands there",
     [](G& g, Text v) { g.request = neededText(v); }},
};

using N = NetworkSettings;

constexpr Key<N> networkKeys[] = {
    {"seed", "N", "the same seed gives the same network",
     [](N& n, Text v) {
         n.seed = static_cast<std::uint64_t>(parseWhole(v, 0, std::numeric_limits<std::int64_t>::max()));
     }},
    {"countries", "CC,CC", "countries, each with a block of addresses",
     [](N& n, Text v) { n.countries = countries(v); }},
    {"masters", "ADDRESS", "address of the masters",
     [](N& n, Text v) { n.masterAddress = parseLoopbackAddress(v); }},
    {"master-port", "N", "port of the first game's master, the next have\nthe next ones; 0: any free ports",
     [](N& n, Text v) { n.masterPort = wholeUpTo(v, 65535); }},
};

template<class Target>
const Key<Target>* findKey(std::span<const Key<Target>> keys, std::string_view name) {
    for (const Key<Target>& key : keys)
        if (key.name == name)
            return &key;
    return nullptr;
}

template<class Target>
void setKey(std::span<const Key<Target>> keys, Target& target, std::string_view name,
            std::string_view value) {
    const Key<Target>* key = findKey(keys, name);
    if (key == nullptr)
        throw BadSetting("unknown setting: " + std::string(name));
    complainingAs(std::string(name), [&] { key->set(target, value); });
}

template<class Target>
std::string keysHelp(std::span<const Key<Target>> keys) {
    std::string help;
    for (const Key<Target>& key : keys)
        help += helpEntry(key.name, key.value, key.meaning);
    return help;
}

} // namespace

bool isGameKey(std::string_view key) {
    return findKey<G>(gameKeys, key) != nullptr;
}
bool isNetworkKey(std::string_view key) {
    return findKey<N>(networkKeys, key) != nullptr;
}

void setGameKey(GameSettings& game, std::string_view key, std::string_view value) {
    setKey<G>(gameKeys, game, key, value);
}

void setNetworkKey(NetworkSettings& network, std::string_view key, std::string_view value) {
    setKey<N>(networkKeys, network, key, value);
}

std::string helpEntry(std::string_view name, std::string_view value, std::string_view meaning) {
    constexpr std::size_t column = 34;
    std::string help;
    std::string line = "  --" + std::string(name) + ' ' + std::string(value);
    for (const std::string& part : splitText(meaning, '\n')) {
        line.resize(std::max(column, line.size() + 1), ' ');
        help += line + part + '\n';
        line.clear();
    }
    return help;
}

std::string networkKeysHelp() {
    return keysHelp<N>(networkKeys);
}
std::string gameKeysHelp() {
    return keysHelp<G>(gameKeys);
}

} // namespace quarn::gamenet
