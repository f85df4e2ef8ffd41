#include "tools/gamenet/cli/ConfigFile.h"

#include "tools/gamenet/world/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

TEST(ConfigFile, SectionsMayComeInAnyOrder) {
    NetworkSettings network = ParseConfig("; a comment\r\n"
                                          "[game duke]\r\n"
                                          "latency = 5\r\n"
                                          "family = q3\r\n"
                                          "servers=4\r\n"
                                          "\r\n"
                                          "[all]\n"
                                          "latency = 50-60\n"
                                          "loss = 2\n"
                                          "# another\n"
                                          "[ network ]\n"
                                          "base = none\n"
                                          "seed = 9\n",
                                          "test.ini");
    ASSERT_EQ(network.games.size(), 1U);
    const GameSettings& game = network.games[0];
    EXPECT_EQ(game.shortName, "duke");
    EXPECT_EQ(game.description, "duke");
    EXPECT_EQ(game.servers, 4);
    EXPECT_EQ(game.latency.high, 5);
    EXPECT_EQ(game.loss, 2);
    EXPECT_EQ(network.seed, 9U);
}

TEST(ConfigFile, ChangesAndAddsToTheDemoNetwork) {
    NetworkSettings network = ParseConfig("[game oa]\nservers = 100\n[game cod]\nfamily = q3\n", "test.ini");
    EXPECT_EQ(network.games.size(), 9U);
    EXPECT_EQ(FindGame(network, "oa")->servers, 100);
    EXPECT_EQ(FindGame(network, "cod")->servers, 0);
}

TEST(ConfigFile, ValuesMayHoldEqualsSigns) {
    NetworkSettings network = ParseConfig("[game oa]\nmaps = a=b\n", "test.ini");
    EXPECT_EQ(FindGame(network, "oa")->maps, std::vector<std::string>{"a=b"});
}

TEST(ConfigFile, TheExampleIsValid) {
    NetworkSettings network = ReadConfigFile(GAMENET_EXAMPLE);
    CheckSettings(network);
    EXPECT_EQ(network.games.size(), 3U);
    EXPECT_EQ(FindGame(network, "tremulous")->servers, 20);
    EXPECT_EQ(FindGame(network, "tremulous")->loss, 1);
    EXPECT_EQ(FindGame(network, "doom")->latency.low, 40);
}

struct BadText {
    std::string text;
    std::string complaint;
};

void PrintTo(const BadText& bad, std::ostream* out) {
    *out << TruthEscaped(bad.text);
}

class ConfigFileErrors : public testing::TestWithParam<BadText> {};

TEST_P(ConfigFileErrors, NameFileAndLine) {
    try {
        ParseConfig(GetParam().text, "test.ini");
        FAIL() << "accepted";
    } catch (const BadSetting& error) {
        EXPECT_THAT(error.what(), testing::StartsWith(GetParam().complaint));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, ConfigFileErrors,
    testing::Values(BadText{"seed = 1", "test.ini:1: not \"key = value\" in a section"},
                    BadText{"[network]\nseed", "test.ini:2: not \"key = value\""},
                    BadText{"[network]\n\nseed = x", "test.ini:3: seed: not a whole number"},
                    BadText{"[network]\nlatency = 5", "test.ini:2: unknown setting: latency"},
                    BadText{"[network]\nbase = full", "test.ini:2: base: not demo or none"},
                    BadText{"[network]\n= 5", "test.ini:2: unknown setting: "},
                    BadText{"[all]\nseed = 5", "test.ini:2: unknown setting: seed"},
                    BadText{"[all]\nfamily = q3", "test.ini:2: unknown setting: family"},
                    BadText{"[network", "test.ini:1: not [network]"},
                    BadText{"[]", "test.ini:1: not [network]"},
                    BadText{"[game]", "test.ini:1: not [network]"},
                    BadText{"[game ]", "test.ini:1: not [network]"},
                    BadText{"[server oa]", "test.ini:1: not [network]"},
                    BadText{"[game new]\nservers = 5", "test.ini:2: a new game needs its family: new"},
                    BadText{"[game new]\nfamily = q4", "test.ini:2: unknown: q4"},
                    BadText{"[game oa]\nfamily = hl", "test.ini:2: family: oa is already"},
                    BadText{"[game oa]\nloss = lots", "test.ini:2: loss: not a number"}));

TEST(ConfigFile, ReadsTheGamesAndEndpointsOfAServerList) {
    const std::vector<ListedServer> servers =
        ParseServerList("# real servers\noa 127.0.0.1:27960\r\nq3a\t127.0.0.2:27961\n", "list");
    ASSERT_EQ(servers.size(), 2U);
    EXPECT_EQ(servers[0].game, "oa");
    EXPECT_EQ(servers[1].endpoint, (Endpoint{0x7F000002, 27961}));
}

TEST(ConfigFile, RefusesListedServersThatNoMasterMayName) {
    for (const std::string line : {"oa", "oa 8.8.8.8:27960", "oa 192.168.1.2:27960", "oa example.org:27960",
                                   "oa 127.0.0.1", "oa 127.0.0.1:0", "oa 127.0.0.1:27960 extra",
                                   "127.0.0.1:27960", "oa 127.69.79.84:27960", "oa 127.0.69.79:17921"})
        EXPECT_THROW(ParseServerList(line, "list"), BadSetting) << line;
}

} // namespace
} // namespace quarn::gamenet
