#include "views/ServerSearch.h"

#include "tests/fakes/ClassicLocale.h"
#include "tests/fakes/Samples.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

using namespace std::string_literals;

ServerRecord Searched() {
    ServerRecord server = SampleServer(); // 192.0.2.7:27960, "My server", q3dm17, baseq3
    server.Country = "DE";
    server.Variables = "\\secret\\hidden";
    server.Password = "hidden";
    server.PlayerList.Reset(4);
    server.PlayerList[1].Name = "Sarge";
    server.PlayerList[2].Name = "\xC4rger";
    server.PlayerList[3].Name = "a\0b"s;
    server.PlayerList[4].Name = "gone"; // the server has 3 players
    return server;
}

TEST(ServerSearchTest, LooksAtNameMapGameAddressAndPlayers) {
    const struct {
        std::string text;
        bool found;
    } cases[] = {
        {"", true},
        {"My server", true},
        {"my SERVER", true},
        {"y s", true},
        {"q3dm17", true},
        {"DM1", true},
        {"baseQ3", true},
        {"192.0.2.7", true},
        {"7:279", true},
        {":27960", true},
        {"sarge", true},
        {"\xE4rger", true},
        {"\xC4RGER", true},
        {"\0"s, true},
        {"gone", false},
        {"hidden", false},
        {"secret", false},
        {"DE", false},
        {"3 / 16", false},
        {"50", false},
        {"my  server", false},
        {" my", false},
        {"My server ", false},
        {"My serverq3dm17", false},
        {"192.0.2.8", false},
        {"*", false},
        {".*", false},
        {"\\", false},
        {std::string(10'000, 'm'), false},
    };
    const ClassicLocale locale;
    for (const auto& c : cases)
        EXPECT_EQ(ServerSearch(c.text, locale).Finds(Searched()), c.found) << c.text;
}

TEST(ServerSearchTest, WithoutATextItFindsEveryServer) {
    EXPECT_TRUE(ServerSearch().Finds(Searched()));
    EXPECT_TRUE(ServerSearch().Finds({}));
    EXPECT_EQ(ServerSearch().Text(), "");
}

TEST(ServerSearchTest, TakesAnyNumberOfPlayers) {
    const ClassicLocale locale;
    const ServerSearch search("gone", locale);
    ServerRecord server = Searched();
    for (const std::int32_t players : {0, -1, 3, 5, 2147483647}) {
        server.Players = players;
        EXPECT_EQ(search.Finds(server), players > 3) << players;
    }
    server.PlayerList.Reset(0);
    EXPECT_FALSE(search.Finds(server));
}

} // namespace
} // namespace quarn
