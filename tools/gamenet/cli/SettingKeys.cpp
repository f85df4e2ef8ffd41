#include "tools/gamenet/cli/SettingKeys.h"

#include "tools/gamenet/world/Text.h"

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

constexpr int LongestWait = 600'000; // milliseconds
constexpr int MostServers = 100'000;

int WholeUpTo(std::string_view text, int high) {
    return static_cast<int>(ParseWhole(text, 0, high));
}

double ParsePercent(std::string_view text) {
    return ParseNumber(text, 0, 100);
}

// "20" or "20-90".
Range ParseRange(std::string_view text, int low, int high) {
    const std::size_t dash = text.find('-');
    const bool single = dash == std::string_view::npos;
    const Range result{static_cast<int>(ParseWhole(text.substr(0, dash), low, high)),
                       static_cast<int>(ParseWhole(single ? text : text.substr(dash + 1), low, high))};
    if (result.low > result.high)
        throw BadSetting("the range runs backwards: " + std::string(text));
    return result;
}

// A text that is sent between separators or NULs must not contain one; no text may contain a line end.
std::string PlainText(std::string_view text) {
    if (text.find_first_of(std::string_view("\0\r\n\\\"", 5)) != std::string_view::npos)
        throw BadSetting("holds a backslash, a quote or a line end: " + TruthEscaped(text));
    return std::string(text);
}

std::string NeededText(std::string_view text) {
    if (text.empty())
        throw BadSetting("is empty");
    return PlainText(text);
}

std::vector<std::string> PlainList(std::string_view text) {
    std::vector<std::string> list = ParseList(text);
    for (const std::string& entry : list)
        PlainText(entry);
    return list;
}

// "osp:Orange Smoothie, cpma"
std::vector<Mod> ParseMods(std::string_view text) {
    std::vector<Mod> result;
    for (const std::string& entry : PlainList(text)) {
        const std::size_t colon = entry.find(':');
        const std::string name = Trimmed(entry.substr(0, colon));
        result.push_back({name, colon == std::string::npos ? name : Trimmed(entry.substr(colon + 1))});
        if (name.empty())
            throw BadSetting("a MOD without a name: " + entry);
    }
    return result;
}

// "static", "requests:5", "seconds:30"
Churn ParseChurn(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string_view clock = text.substr(0, colon);
    if (text == "static")
        return {};
    if (colon == std::string_view::npos || (clock != "requests" && clock != "seconds"))
        throw BadSetting("not static, requests:N or seconds:N: " + std::string(text));
    return {clock == "requests" ? Churn::Clock::Requests : Churn::Clock::Seconds,
            static_cast<int>(ParseWhole(text.substr(colon + 1), 1, 1'000'000))};
}

EndMark ParseEndMark(std::string_view text) {
    if (text == "none")
        return EndMark::None;
    if (text != "last" && text != "every")
        throw BadSetting("not none, last or every: " + std::string(text));
    return text == "last" ? EndMark::Last : EndMark::Every;
}

HalfLifeList ParseHalfLifeList(std::string_view text) {
    if (text != "separated" && text != "packed")
        throw BadSetting("not separated or packed: " + std::string(text));
    return text == "packed" ? HalfLifeList::Packed : HalfLifeList::Separated;
}

std::vector<std::string> ParseCountries(std::string_view text) {
    std::vector<std::string> codes = ParseList(text);
    for (const std::string& code : codes)
        if (code.size() != 2 || code.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos)
            throw BadSetting("not a country code of two capitals: " + code);
    return codes;
}

using G = GameSettings;
using Text = std::string_view;

constexpr Key<G> GameKeys[] = {
    {"servers", "N", "number of servers", [](G& g, Text v) { g.servers = WholeUpTo(v, MostServers); }},
    {"latency", "MS[-MS]", "answer time, drawn once a server",
     [](G& g, Text v) { g.latency = ParseRange(v, 0, LongestWait); }},
    {"jitter", "MS", "at most this much is added to each answer",
     [](G& g, Text v) { g.jitter = WholeUpTo(v, LongestWait); }},
    {"loss", "PERCENT", "requests that get lost", [](G& g, Text v) { g.loss = ParsePercent(v); }},
    {"silent", "PERCENT", "servers that never answer", [](G& g, Text v) { g.silent = ParsePercent(v); }},
    {"closed", "PERCENT", "servers on whose port nothing listens",
     [](G& g, Text v) { g.closed = ParsePercent(v); }},
    {"locked", "PERCENT", "servers with a password (q3, d3)",
     [](G& g, Text v) { g.locked = ParsePercent(v); }},
    {"liars", "PERCENT", "servers that lie", [](G& g, Text v) { g.liars = ParsePercent(v); }},
    {"liar-kinds", "all|K,K",
     "truncated, empty, unterminated, oversized, random,\n"
     "late, duplicated, wrong-family",
     [](G& g, Text v) { g.liarKinds = ParseLiarKinds(v); }},
    {"late-by", "MS", "lateness of the late liars",
     [](G& g, Text v) { g.lateBy = WholeUpTo(v, LongestWait); }},
    {"slots", "N[-N]", "maximum players", [](G& g, Text v) { g.slots = ParseRange(v, 1, 64); }},
    {"fill", "PERCENT[-PERCENT]", "players, of the slots",
     [](G& g, Text v) { g.fill = ParseRange(v, 0, 100); }},
    {"churn", "HOW", "players come and go: static, requests:N or seconds:N",
     [](G& g, Text v) { g.churn = ParseChurn(v); }},
    {"mods", "M,M", "a MOD is NAME or NAME:Description", [](G& g, Text v) { g.mods = ParseMods(v); }},
    {"maps", "M,M", "maps", [](G& g, Text v) { g.maps = PlainList(v); }},
    {"game-types", "T,T", "values of the game type variable",
     [](G& g, Text v) { g.gameTypes = PlainList(v); }},
    {"description", "TEXT", "the game's name", [](G& g, Text v) { g.description = NeededText(v); }},
    {"exe", "FILE", "the game's executable", [](G& g, Text v) { g.exeName = NeededText(v); }},
    {"version", "TEXT", "value of the version variable", [](G& g, Text v) { g.version = NeededText(v); }},
    {"protocol", "N[.N]", "protocol number; d3: MAJOR.MINOR",
     [](G& g, Text v) { g.protocol = NeededText(v); }},
    {"port", "N", "port of all the game's servers",
     [](G& g, Text v) { g.port = static_cast<std::uint16_t>(ParseWhole(v, 1, 65535)); }},
    {"info", "TEXT", "description text of an hl info reply",
     [](G& g, Text v) { g.serverInfo = PlainText(v); }},
    {"spread", "MS", "at most this much is added to each of the three\nanswers of an hl server",
     [](G& g, Text v) { g.spread = WholeUpTo(v, LongestWait); }},
    {"details-after", "MS", "an hl server's players and rules are this much later",
     [](G& g, Text v) { g.detailsAfter = WholeUpTo(v, LongestWait); }},
    {"master", "ADDRESS:PORT", "the game's master",
     [](G& g, Text v) { g.master = ParseLoopbackEndpoint(v); }},
    {"master-latency", "MS", "answer time of the master",
     [](G& g, Text v) { g.masterLatency = WholeUpTo(v, LongestWait); }},
    {"master-pace", "MS", "time between the datagrams of a list",
     [](G& g, Text v) { g.masterPace = WholeUpTo(v, LongestWait); }},
    {"master-lie", "HOW",
     "none, silent, truncated, random, wrong-header,\n"
     "oversized, duplicated",
     [](G& g, Text v) { g.masterLie = ParseMasterLie(v); }},
    {"list-entries", "N", "addresses in a datagram; 0: 1400 bytes",
     [](G& g, Text v) { g.listEntries = WholeUpTo(v, 9000); }},
    {"end-mark", "WHICH", "datagrams of a q3 list with \\EOT: none, last, every",
     [](G& g, Text v) { g.endMark = ParseEndMark(v); }},
    {"hl-list", "FORM", "an hl list is separated or packed",
     [](G& g, Text v) { g.halfLifeList = ParseHalfLifeList(v); }},
    {"request", "TEXT", "MasterPacket, as Games.ini writes it",
     [](G& g, Text v) { g.request = NeededText(v); }},
};

using N = NetworkSettings;

constexpr Key<N> NetworkKeys[] = {
    {"seed", "N", "the same seed gives the same network",
     [](N& n, Text v) {
         n.seed = static_cast<std::uint64_t>(ParseWhole(v, 0, std::numeric_limits<std::int64_t>::max()));
     }},
    {"countries", "CC,CC", "countries, each with a block of addresses",
     [](N& n, Text v) { n.countries = ParseCountries(v); }},
    {"masters", "ADDRESS", "address of the masters",
     [](N& n, Text v) { n.masterAddress = ParseLoopbackAddress(v); }},
    {"master-port", "N", "port of the first game's master, the next have\nthe next ones; 0: any free ports",
     [](N& n, Text v) { n.masterPort = WholeUpTo(v, 65535); }},
};

template<class Target>
const Key<Target>* FindKey(std::span<const Key<Target>> keys, std::string_view name) {
    for (const Key<Target>& key : keys)
        if (key.name == name)
            return &key;
    return nullptr;
}

template<class Target>
void SetKey(std::span<const Key<Target>> keys, Target& target, std::string_view name,
            std::string_view value) {
    const Key<Target>* key = FindKey(keys, name);
    if (key == nullptr)
        throw BadSetting("unknown setting: " + std::string(name));
    ComplainingAs(std::string(name), [&] { key->set(target, value); });
}

template<class Target>
std::string KeysHelp(std::span<const Key<Target>> keys) {
    std::string help;
    for (const Key<Target>& key : keys)
        help += HelpEntry(key.name, key.value, key.meaning);
    return help;
}

} // namespace

bool IsGameKey(std::string_view key) {
    return FindKey<G>(GameKeys, key) != nullptr;
}
bool IsNetworkKey(std::string_view key) {
    return FindKey<N>(NetworkKeys, key) != nullptr;
}

void SetGameKey(GameSettings& game, std::string_view key, std::string_view value) {
    SetKey<G>(GameKeys, game, key, value);
}

void SetNetworkKey(NetworkSettings& network, std::string_view key, std::string_view value) {
    SetKey<N>(NetworkKeys, network, key, value);
}

std::string HelpEntry(std::string_view name, std::string_view value, std::string_view meaning) {
    constexpr std::size_t Column = 34;
    std::string help;
    std::string line = "  --" + std::string(name) + ' ' + std::string(value);
    for (const std::string& part : SplitText(meaning, '\n')) {
        line.resize(std::max(Column, line.size() + 1), ' ');
        help += line + part + '\n';
        line.clear();
    }
    return help;
}

std::string NetworkKeysHelp() {
    return KeysHelp<N>(NetworkKeys);
}
std::string GameKeysHelp() {
    return KeysHelp<G>(GameKeys);
}

} // namespace quarn::gamenet
