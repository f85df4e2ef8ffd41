#include "views/FavoriteGames.h"

#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

constexpr const char* Path = "C:\\Quarn\\Favorites.ini";

class FavoriteGamesTest : public ProgramTest {
  protected:
    FavoriteGamesTest() {
        ResetGames(program, 3);
        program.Games[1].GameShort = "q3";
        program.Games[2].GameShort = "d3";
        program.Games[3].GameShort = "hl";
    }

    static ServerRecord At(const std::string& address, std::int32_t game = 0) {
        ServerRecord server;
        const std::size_t colon = address.find(':');
        server.Address = address.substr(0, colon);
        server.Port = std::stoi(address.substr(colon + 1));
        server.Game = game;
        return server;
    }
    static OneBased<ServerRecord> ListOf(const std::vector<std::string>& addresses) {
        OneBased<ServerRecord> servers(static_cast<std::int32_t>(addresses.size()));
        for (std::size_t i = 0; i < addresses.size(); ++i)
            servers[static_cast<std::int32_t>(i) + 1] = At(addresses[i]);
        return servers;
    }
    void Put(const std::string& content) { fake.files.Put(Path, content); }
    std::string File() const { return fake.files.Get(Path); }

    // The game that each of the list's servers has after a file of this content was read.
    std::vector<std::int32_t> GamesRead(const std::string& content,
                                        const std::vector<std::string>& addresses = {"1.2.3.4:5"},
                                        const std::string& list = "fav1") {
        Put(content);
        OneBased<ServerRecord> servers = ListOf(addresses);
        games.Read(list, servers);
        std::vector<std::int32_t> found;
        for (std::int32_t i = 1; i <= servers.HighestIndex(); ++i)
            found.push_back(servers[i].Game);
        return found;
    }
    std::int32_t GameRead(const std::string& content) { return GamesRead(content).at(0); }

    std::string FileAfterAdding(const std::string& content, const std::vector<ServerRecord>& servers) {
        Put(content);
        games.Add("fav1", servers);
        return File();
    }
    std::string FileAfterRemoval(const std::string& content, const std::vector<std::string>& kept) {
        Put(content);
        games.RemoveOthers("fav1", ListOf(kept));
        return File();
    }

    FavoriteGames games{program, fake.files};
};

TEST_F(FavoriteGamesTest, TellsTheListsOfFavorites) {
    for (const char* list : {"fav1", "fav5", "fav9"})
        EXPECT_TRUE(FavoriteGames::IsFavoritesList(list)) << list;
    for (const char* list : {"", "fav", "fav0", "fav10", "favx", "FAV1", "fav1 ", "q3", "games", "favorites"})
        EXPECT_FALSE(FavoriteGames::IsFavoritesList(list)) << list;
}

TEST_F(FavoriteGamesTest, ReadsTheGameOfEachAddress) {
    EXPECT_THAT(GamesRead("[fav1]\r\n1.2.3.4:5=hl\r\n1.2.3.4:6=d3\r\n[fav2]\r\n1.2.3.4:7=q3\r\n",
                          {"1.2.3.4:6", "1.2.3.4:5", "1.2.3.4:7", "1.2.3.4:6"}),
                ElementsAre(2, 3, 0, 2));
}

TEST_F(FavoriteGamesTest, ReadsAFileOfAnyForm) {
    const struct {
        std::string content;
        std::int32_t game;
    } cases[] = {
        {"", 0},
        {"[fav1]", 0},
        {"[fav1]\r\n1.2.3.4:5=d3", 2},
        {"[fav1]\n1.2.3.4:5=d3\n", 2},
        {"[fav1]\r1.2.3.4:5=d3\r", 2},
        {"\r\n\r\n[fav1]\r\n\r\n1.2.3.4:5=d3", 2},
        {"[FAV1]\r\n1.2.3.4:5=d3", 2},
        {" [ fav1 ] \r\n\t1.2.3.4:5 =\td3 ", 2},
        {"[fav1\r\n1.2.3.4:5=d3", 2},
        {"[fav1]; favorites\r\n1.2.3.4:5=d3", 2},
        {"[fav1]\r\n[fav1]\r\n1.2.3.4:5=d3", 2},
        {"[fav1]\r\n1.2.3.4:5=hl\r\n1.2.3.4:5=d3", 3}, // the first one counts
        {"[fav1]\r\n1.2.3.4:5=hl\r\n[fav2]\r\n[fav1]\r\n1.2.3.4:5=d3", 3},
        {"[fav1]\r\n1.2.3.4:5=gone", 0},
        {"[fav1]\r\n1.2.3.4:5=gone\r\n1.2.3.4:5=d3", 0},
        {"[fav1]\r\n1.2.3.4:5=D3", 0}, // games are told apart by case
        {"[fav1]\r\n1.2.3.4:5=", 0},
        {"[fav1]\r\n1.2.3.4:5", 0},
        {"[fav1]\r\n=d3", 0},
        {"[fav1]\r\n=1.2.3.4:5=d3", 0},
        {"[fav1]\r\n;1.2.3.4:5=d3", 0},
        {"[fav1]\r\n1.2.3.4=d3", 0},
        {"[fav1]\r\n1.2.3.4:55=d3", 0},
        {"[fav1]\r\n1.2.3.4:5=d3=hl", 0},
        {"1.2.3.4:5=d3", 0},
        {"[fav2]\r\n1.2.3.4:5=d3", 0},
        {"[fav11]\r\n1.2.3.4:5=d3", 0},
        {"[]\r\n1.2.3.4:5=d3", 0},
        {"[\r\n1.2.3.4:5=d3", 0},
        {"]fav1[\r\n1.2.3.4:5=d3", 0},
        {"[fav1]\r\n\0\0\0=\0\r\n1.2.3.4:5=d3"s, 2},
        {"\0[fav1]\r\n1.2.3.4:5=d3"s, 0},
        {"[fav1]\r\n1.2.3.4\0:5=d3"s, 0},
        {"[fav1]\r\n1.2.3.4:5=d3\0"s, 0},
        {"[fav1]\r\n\xff\xfe\x1a = [fav2]\r\n1.2.3.4:5=d3", 2},
        {"\xff\xfe[\0f\0a\0v\0001\0]\0\r\0\n\0"s, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GameRead(c.content), c.game) << ::testing::PrintToString(c.content);
}

TEST_F(FavoriteGamesTest, ADamagedLineCostsItselfOnly) {
    for (const char* damaged : {"1.2.3.4:", "====", "\xff\xff", "[", "no sign", ":=:", "[fav2]\r\n[fav1]"})
        EXPECT_EQ(GameRead("[fav1]\r\n"s + damaged + "\r\n[fav1]\r\n1.2.3.4:5=d3\r\n"), 2) << damaged;
}

TEST_F(FavoriteGamesTest, NotesGamesInTheSectionOfTheList) {
    const struct {
        std::string before;
        std::string after;
    } cases[] = {
        {"", "[fav1]\r\n1.2.3.4:5=d3\r\n"},
        {"[fav1]", "[fav1]\r\n1.2.3.4:5=d3\r\n"},
        {"[fav1]\r\n1.2.3.4:4=hl", "[fav1]\r\n1.2.3.4:4=hl\r\n1.2.3.4:5=d3\r\n"},
        {"[fav1]\r\n1.2.3.4:5=hl\r\n1.2.3.4:4=hl\r\n", "[fav1]\r\n1.2.3.4:5=d3\r\n1.2.3.4:4=hl\r\n"},
        {"[fav1]\r\n1.2.3.4:5=hl\r\n1.2.3.4:5=q3\r\n", "[fav1]\r\n1.2.3.4:5=d3\r\n"},
        {"[FAV1]\n1.2.3.4:4=hl\n\n[fav2]\n1.2.3.4:5=hl\n",
         "[FAV1]\n1.2.3.4:4=hl\n1.2.3.4:5=d3\r\n\n[fav2]\n1.2.3.4:5=hl\n"},
        {"[fav2]\r\n1.2.3.4:5=hl", "[fav2]\r\n1.2.3.4:5=hl\r\n[fav1]\r\n1.2.3.4:5=d3\r\n"},
        {"; mine\r\n[other]\r\nkey=value\r\n[fav1]\r\nno entry\r\n",
         "; mine\r\n[other]\r\nkey=value\r\n[fav1]\r\nno entry\r\n1.2.3.4:5=d3\r\n"},
        {"\0\xff\r\r\n"s, "\0\xff\r\r\n[fav1]\r\n1.2.3.4:5=d3\r\n"s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileAfterAdding(c.before, {At("1.2.3.4:5", 2)}), c.after);
        EXPECT_EQ(GameRead(c.after), 2);
    }
}

TEST_F(FavoriteGamesTest, NotesTheLastGameOfAnAddress) {
    EXPECT_EQ(FileAfterAdding("", {At("1.2.3.4:5", 2), At("1.2.3.4:6", 1), At("1.2.3.4:5", 3)}),
              "[fav1]\r\n1.2.3.4:5=hl\r\n1.2.3.4:6=q3\r\n");
}

TEST_F(FavoriteGamesTest, WritesNothingThatTheFileAlreadySays) {
    const std::string content = "[fav1]\n 1.2.3.4:5 = d3\n";
    EXPECT_EQ(FileAfterAdding(content, {At("1.2.3.4:5", 2)}), content);
    EXPECT_EQ(FileAfterAdding(content, {At("9.9.9.9:9")}), content) << "its game is not known";
    EXPECT_EQ(FileAfterAdding(content, {}), content);
    EXPECT_EQ(FileAfterRemoval(content, {"1.2.3.4:5"}), content);
    EXPECT_EQ(fake.files.Writes(Path), 0);
}

TEST_F(FavoriteGamesTest, NotesNoAddressThatAKeyCannotHold) {
    for (const char* address : {"", "host", "1.2.3.4 ", "[1.2.3.4", "1=2", "1.2.3.4\r\nx", ";1.2.3.4"}) {
        ServerRecord server = At("1.2.3.4:5", 2);
        server.Address = address;
        EXPECT_EQ(FileAfterAdding("", {server}), "") << address;
    }
    games.Add("q3", {At("1.2.3.4:5", 2)});
    EXPECT_EQ(File(), "") << "a game's list has no section";
}

TEST_F(FavoriteGamesTest, RemovesTheAddressesThatLeftTheList) {
    const std::string content = "; mine\r\n[fav1]\r\n1.2.3.4:5=d3\r\n note\r\nkey=value\r\n1.2.3.4:6=gone\r\n"
                                "1.2.3.4:5=hl\r\n[fav2]\r\n1.2.3.4:5=hl\r\n[fav1]\n1.2.3.4:7=q3\n";
    EXPECT_EQ(FileAfterRemoval(content, {"1.2.3.4:5", "1.2.3.4:6", "1.2.3.4:7", "1.2.3.4:5"}), content);
    EXPECT_EQ(FileAfterRemoval(content, {"1.2.3.4:6"}),
              "; mine\r\n[fav1]\r\n note\r\nkey=value\r\n1.2.3.4:6=gone\r\n"
              "[fav2]\r\n1.2.3.4:5=hl\r\n[fav1]\n");
    EXPECT_EQ(FileAfterRemoval(content, {}), "; mine\r\n[fav1]\r\n note\r\nkey=value\r\n"
                                             "[fav2]\r\n1.2.3.4:5=hl\r\n[fav1]\n");
}

TEST_F(FavoriteGamesTest, AMissingFileIsNoFileUntilThereIsAGame) {
    OneBased<ServerRecord> servers = ListOf({"1.2.3.4:5"});
    games.Read("fav1", servers);
    games.RemoveOthers("fav1", servers);
    games.Add("fav1", {At("1.2.3.4:5")});
    EXPECT_FALSE(fake.files.Has(Path));
    EXPECT_EQ(servers[1].Game, 0);
    games.Add("fav1", {At("1.2.3.4:5", 2)});
    EXPECT_EQ(File(), "[fav1]\r\n1.2.3.4:5=d3\r\n");
}

TEST_F(FavoriteGamesTest, AnUnreadableFileIsNeverWritten) {
    for (const ErrorNumber error : {ErrorNumber::PermissionDenied, ErrorNumber::PathNotFound}) {
        const std::string content = "[fav1]\r\n1.2.3.4:5=hl\r\n";
        Put(content);
        fake.files.FailReads(Path, error);
        OneBased<ServerRecord> servers = ListOf({"1.2.3.4:5"});
        EXPECT_EQ(ErrorOf([&] { games.Read("fav1", servers); }), error);
        EXPECT_EQ(servers[1].Game, 0);
        EXPECT_EQ(ErrorOf([&] { games.Add("fav1", {At("1.2.3.4:6", 2)}); }), error);
        EXPECT_EQ(ErrorOf([&] { games.RemoveOthers("fav1", ListOf({})); }), error);
        EXPECT_EQ(fake.files.Writes(Path), 0);
        EXPECT_EQ(File(), content);
    }
}

TEST_F(FavoriteGamesTest, AFileThatCannotBeWrittenStaysWhole) {
    const std::string content = "[fav1]\r\n1.2.3.4:5=hl\r\n";
    Put(content);
    fake.files.Protect(Path);
    EXPECT_EQ(ErrorOf([&] { games.Add("fav1", {At("1.2.3.4:6", 2)}); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { games.RemoveOthers("fav1", ListOf({})); }), ErrorNumber::PathFileAccessError);
    fake.files.Unprotect(Path);
    fake.files.freeBytes = 10;
    EXPECT_EQ(ErrorOf([&] { games.Add("fav1", {At("1.2.3.4:6", 2)}); }), ErrorNumber::DiskFull);
    EXPECT_EQ(File(), content);
}

TEST_F(FavoriteGamesTest, ReadsAndChangesAFileOfTenMegabytes) {
    std::string content = "[fav1]\r\n";
    std::vector<std::string> addresses;
    for (int i = 0; i < 5000; ++i) {
        addresses.push_back("10.0." + std::to_string(i / 250) + "." + std::to_string(i % 250) + ":27960");
        content += addresses.back() + "=d3\r\n";
    }
    const std::string filler(10U << 20, '=');
    EXPECT_THAT(GamesRead(content + filler + "\r\n", addresses), ::testing::Each(2));
    const std::string entry = "10.0.0.7:27960=d3\r\n";
    std::vector<std::string> kept = addresses;
    kept.erase(kept.begin() + 7);
    const std::string after = FileAfterRemoval(content + filler, kept);
    EXPECT_EQ(after.size(), content.size() + filler.size() - entry.size());
    EXPECT_EQ(after.find(entry), std::string::npos);
}

} // namespace
} // namespace quarn
