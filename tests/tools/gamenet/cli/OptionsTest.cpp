#include "tools/gamenet/cli/Options.h"

#include "tools/gamenet/world/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

using Arguments = std::vector<std::string>;

const GameSettings& GameOf(Options& options, const std::string& name) {
    return *FindGame(options.network, name);
}

TEST(Options, DemoNetworkHasSixtyServersOfThreeFamilies) {
    const Options options = ParseOptions({});
    std::vector<int> count(3);
    for (const GameSettings& game : options.network.games)
        count.at(static_cast<std::size_t>(game.family)) += game.servers;
    EXPECT_EQ(count, (std::vector<int>{30, 15, 15}));
}

TEST(Options, GameSettingsAreForAllGamesOrForOne) {
    Options options = ParseOptions(Arguments{"--latency", "20-90", "--latency", "oa=7", "--loss", "1.5"});
    EXPECT_EQ(GameOf(options, "q3a").latency.low, 20);
    EXPECT_EQ(GameOf(options, "q3a").latency.high, 90);
    EXPECT_EQ(GameOf(options, "oa").latency.high, 7);
    EXPECT_EQ(GameOf(options, "cs").loss, 1.5);
}

TEST(Options, LaterArgumentsWin) {
    Options options = ParseOptions(Arguments{"--servers", "oa=3", "--servers", "5"});
    EXPECT_EQ(GameOf(options, "oa").servers, 5);
}

TEST(Options, KeepsTheNamedGamesInTheirOrder) {
    const Options options = ParseOptions(Arguments{"--games", "hl, q3a"});
    ASSERT_EQ(options.network.games.size(), 2U);
    EXPECT_EQ(options.network.games[0].shortName, "hl");
    EXPECT_EQ(options.network.games[1].shortName, "q3a");
}

TEST(Options, ReadsEverySettingOfAGame) {
    Options options = ParseOptions(Arguments{"--games",
                                             "hl",
                                             "--jitter",
                                             "4",
                                             "--silent",
                                             "10",
                                             "--closed",
                                             "20",
                                             "--locked",
                                             "30",
                                             "--liars",
                                             "40",
                                             "--liar-kinds",
                                             "late,random",
                                             "--late-by",
                                             "900",
                                             "--slots",
                                             "4-8",
                                             "--fill",
                                             "100",
                                             "--churn",
                                             "requests:5",
                                             "--mods",
                                             "ns:Natural Selection, valve",
                                             "--maps",
                                             "a,b",
                                             "--game-types",
                                             "1",
                                             "--description",
                                             "Some game",
                                             "--exe",
                                             "some.exe",
                                             "--version",
                                             "1",
                                             "--protocol",
                                             "48",
                                             "--port",
                                             "27099",
                                             "--info",
                                             "About",
                                             "--spread",
                                             "3",
                                             "--details-after",
                                             "30",
                                             "--master",
                                             "127.9.9.9:1",
                                             "--master-latency",
                                             "1",
                                             "--master-pace",
                                             "2",
                                             "--master-lie",
                                             "random",
                                             "--list-entries",
                                             "3",
                                             "--end-mark",
                                             "every",
                                             "--hl-list",
                                             "packed",
                                             "--request",
                                             "c$0"});
    const GameSettings& game = GameOf(options, "hl");
    EXPECT_EQ(game.liarKinds, (std::vector<LiarKind>{LiarKind::Late, LiarKind::Random}));
    EXPECT_EQ(game.mods.at(0).description, "Natural Selection");
    EXPECT_EQ(game.mods.at(1).description, "valve");
    EXPECT_EQ(game.churn.every, 5);
    EXPECT_EQ(game.master, (Endpoint{0x7F090909, 1}));
    EXPECT_EQ(game.halfLifeList, HalfLifeList::Packed);
    EXPECT_EQ(game.fill.low, 100);
    EXPECT_EQ(game.port, 27099);
    EXPECT_EQ(game.spread, 3);
    EXPECT_EQ(game.detailsAfter, 30);
}

TEST(Options, HelpNamesEveryOptionOnce) {
    const std::string help = HelpText();
    for (const std::string name :
         {"games", "config", "list", "seed", "countries", "latency", "liar-kinds", "master-lie",
          "write-truth", "ready-file", "die-with-parent", "stats", "record", "spread", "details-after"}) {
        const std::string entry = "  --" + name + ' ';
        EXPECT_NE(help.find(entry), std::string::npos) << name;
        EXPECT_EQ(help.find(entry), help.rfind(entry)) << name;
    }
}

struct BadArguments {
    Arguments arguments;
    std::string complaint;
};

void PrintTo(const BadArguments& bad, std::ostream* out) {
    for (const std::string& argument : bad.arguments)
        *out << argument << ' ';
}

class OptionsErrors : public testing::TestWithParam<BadArguments> {};

TEST_P(OptionsErrors, NameTheReason) {
    try {
        ParseOptions(GetParam().arguments);
        FAIL() << "accepted";
    } catch (const BadSetting& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(GetParam().complaint));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, OptionsErrors,
    testing::Values(
        BadArguments{{"demo"}, "not an option: demo"}, BadArguments{{"-h"}, "not an option: -h"},
        BadArguments{{"--"}, "unknown option: --"}, BadArguments{{"--sevrers", "5"}, "unknown option"},
        BadArguments{{"--seed"}, "no value for --seed"}, BadArguments{{"--seed", "-1"}, "seed: not from 0"},
        BadArguments{{"--seed", "one"}, "seed: not a whole number"},
        BadArguments{{"--servers", "many"}, "servers: not a whole number"},
        BadArguments{{"--servers", "-5"}, "servers: not from 0"},
        BadArguments{{"--servers", "nogame=5"}, "servers: not a whole number: nogame=5"},
        BadArguments{{"--latency", "90-20"}, "latency: the range runs backwards"},
        BadArguments{{"--latency", "-20"}, "latency: not a whole number"},
        BadArguments{{"--loss", "101"}, "loss: out of range"},
        BadArguments{{"--liar-kinds", "polite"}, "liar-kinds: unknown: polite"},
        BadArguments{{"--liar-kinds", ""}, "liar-kinds: an empty entry"},
        BadArguments{{"--master-lie", "all"}, "master-lie: unknown: all"},
        BadArguments{{"--end-mark", "yes"}, "end-mark: not none, last or every"},
        BadArguments{{"--hl-list", "zip"}, "hl-list: not separated or packed"},
        BadArguments{{"--churn", "seconds"}, "churn: not static"},
        BadArguments{{"--churn", "seconds:0"}, "churn: not from 1"},
        BadArguments{{"--churn", "days:3"}, "churn: not static"},
        BadArguments{{"--spread", "-1"}, "spread: not from 0"},
        BadArguments{{"--details-after", "soon"}, "details-after: not a whole number"},
        BadArguments{{"--slots", "0"}, "slots: not from 1"},
        BadArguments{{"--slots", "65"}, "slots: not from 1"},
        BadArguments{{"--slots", "d3=8-33"}, "d3: slots"}, BadArguments{{"--port", "0"}, "port: not from 1"},
        BadArguments{{"--maps", "a,,b"}, "maps: an empty"},
        BadArguments{{"--maps", "a\\b"}, "maps: holds a backslash"},
        BadArguments{{"--mods", ":x"}, "mods: a MOD without a name"},
        BadArguments{{"--description", ""}, "description: is empty"},
        BadArguments{{"--protocol", "d3=141"}, "d3: protocol: not MAJOR.MINOR"},
        BadArguments{{"--protocol", "hl=256"}, "hl: protocol"},
        BadArguments{{"--protocol", "1.41"}, "q3a: protocol"},
        BadArguments{{"--master", "127.0.0.1"}, "master: no port"},
        BadArguments{{"--master", "192.168.0.1:27950"}, "master: outside 127.0.0.0/8"},
        BadArguments{{"--masters", "10.1.1.1"}, "masters: outside 127.0.0.0/8"},
        BadArguments{{"--masters", "localhost"}, "masters: not a dotted address"},
        BadArguments{{"--master-port", "65536"}, "master-port: not from 0"},
        BadArguments{{"--master-port", "65530"}, "master-port: no room"},
        BadArguments{{"--countries", "DE,usa"}, "countries: not a country code"},
        BadArguments{{"--games", "q3a,quake"}, "games: unknown game: quake"},
        BadArguments{{"--games", "q3a,q3a"}, "two games named q3a"},
        BadArguments{{"--duration", "soon"}, "duration: not a number"},
        BadArguments{{"--config", "/nonexistent/gamenet.ini"}, "cannot read /nonexistent/gamenet.ini"},
        BadArguments{{"--list", "/nonexistent/list"}, "cannot read /nonexistent/list"},
        BadArguments{{"--silent", "50", "--liars", "40", "--closed", "11"}, "together are above 100 %"}));

} // namespace
} // namespace quarn::gamenet
