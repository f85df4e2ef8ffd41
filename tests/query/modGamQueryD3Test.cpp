#include "query/modGamQuery.h"

#include "tests/query/ParserTest.h"

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string Header = "\xFF\xFFinfoResponse\0\xA1\xB2\xC3\xD4\x29\0\x01\0"s;
const std::string End = "\0\0"s;
const std::string Tail = " \xFF\xFF\xFF\xFF";
const std::string Missing = "modCommonSubs;ExtractString;5";

std::string Pair(const std::string& key, const std::string& value) {
    return key + '\0' + value + '\0';
}

std::string Player(int client, int firstPingByte, int secondPingByte, const std::string& name) {
    return Bytes({client, firstPingByte, secondPingByte, 0x40, 0x1F, 0, 0}) + name + '\0';
}

class Doom3Status : public StatusTest {
  protected:
    void Parse(const std::string& datagram) { ParseD3EngineStatus(program, datagram, 1); }
};

TEST_F(Doom3Status, FillsTheRecordFromAnOrdinaryReply) {
    Parse(Header + Pair("si_name", "^1Srv \"x\"") + Pair("si_version", "DOOM 1.3.1") +
          Pair("si_maxPlayers", "8") + Pair("gamename", "baseDOOM-1") + Pair("si_usePass", "1") +
          Pair("si_map", "game/mp/d3dm3") + End + Player(0, 0, 50, "^2Big\"Boss\"") +
          Player(3, 1, 2, "Other") + Tail);
    EXPECT_EQ(Server().Name, "Srv x");
    EXPECT_EQ(Server().MaxPlayers, 8);
    EXPECT_EQ(Server().ModName, "baseDOOM-1");
    EXPECT_EQ(Server().Locked, 1);
    EXPECT_EQ(Server().Map, "game/mp/d3dm3");
    EXPECT_EQ(Server().Variables, "\\si_version\\doom 1.3.1");
    EXPECT_EQ(Server().Players, 2);
    EXPECT_THAT(PlayerList(), ElementsAre("0/50/BigBoss", "0/258/Other"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Doom3Status, ClearsOnlyTheName) {
    Parse(Header + Pair("si_map", "^1\"Map\"") + Pair("gamename", "^2\"Mod\"") + End + Tail);
    EXPECT_EQ(Server().Map, "^1\"Map\"");
    EXPECT_EQ(Server().ModName, "^2\"Mod\"");
}

TEST_F(Doom3Status, ResetsWhatTheLastReplyLeft) {
    Server().Name = "old";
    Server().Variables = "\\old\\1";
    Server().Players = 3;
    Server().PlayerList.Reset(3);
    Server().Ping = 77;
    Parse(Header + Pair("si_map", "m") + End + Tail);
    EXPECT_EQ(Server().Name, "");
    EXPECT_EQ(Server().ModName, "0");
    EXPECT_EQ(Server().Variables, "");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(PlayerList(), IsEmpty());
    EXPECT_EQ(Server().Ping, 77);
}

TEST_F(Doom3Status, ADisconnectChangesNothing) {
    Server().Name = "old";
    Server().Variables = "\\old\\1";
    Parse("\xFF\xFF"
          "disconnect\0"s);
    EXPECT_EQ(Server().Name, "old");
    EXPECT_EQ(Server().Variables, "\\old\\1");
    for (const std::string& datagram : {"\xFF\xFF"
                                        "disconnect"s,
                                        "\xFF\xFF"
                                        "disconnect\0\0"s,
                                        "\xFF\xFF\xFF\xFF"
                                        "disconnect\0"s}) {
        Server().Name = "old";
        Parse(datagram);
        EXPECT_EQ(Server().Name, "") << datagram;
    }
}

TEST_F(Doom3Status, PairsBeginBehindTheFirstNulOneNul) {
    Parse("\xFF\xFF\0\x01\0"s + Pair("si_map", "m\0\x01\0"s) + End);
    EXPECT_EQ(Server().Map, "m");
}

TEST_F(Doom3Status, WithoutThatMarkNothingIsRead) {
    for (const std::string& datagram :
         {"\xFF\xFFinfoResponse\0"s, "\xFF\xFFinfoResponse\0\xA1\xB2\xC3\xD4\x29\0\x01"s, "si_map\0m\0\0\0"s,
          std::string(5, '\0'), "\0\x01\x01\0"s}) {
        Server().Name = "old";
        Parse(datagram);
        EXPECT_EQ(Server().Name, "");
        EXPECT_EQ(Server().Variables, "");
        EXPECT_EQ(Server().Players, 0);
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Doom3Status, CollectsPairsAsSeen) {
    const struct {
        std::string pairs;
        std::string variables;
    } cases[] = {
        {"", ""},
        {Pair("si_Pure", "One"), "\\si_pure\\one"},
        {Pair("a", "1") + Pair("b", "2"), "\\a\\1\\b\\2"},
        {Pair("a", "") + Pair("b", "2"), "\\a\\\\b\\2"}, // empty value in the middle
        {Pair("a", ""), "\\a"},                          // and at the end
        {Pair("a", "") + Pair("si_map", "m"), "\\a"},
        {Pair("a", "1") + Pair("si_map", "m"), "\\a\\1"},
        {Pair("vote", "si_map") + Pair("d3dm1", "x"), "\\vote\\x"}, // a value that is a known key
        {Pair("si_map", "") + Pair("gamename", "x"), "\\x"},        // takes the next key for its value
        {Pair("a\\", "\\"), "\\a\\\\\\"},
        {Pair("si_map", "m") + "\0key\0value\0"s, "\\\0key\\value"s}, // a NUL in front of a key
    };
    for (const auto& c : cases) {
        Parse(Header + c.pairs + End + '\0'); // the first client number, and no more
        EXPECT_EQ(Server().Variables, c.variables);
        EXPECT_EQ(Server().Players, 0) << c.variables;
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Doom3Status, PlayersFollowTheLastPairWhateverItIs) {
    const std::string players = Player(1, 0, 50, "One") + Player(7, 0, 60, "Two") + Tail;
    const std::string playersFromZero = Player(0, 0, 50, "One") + Player(1, 0, 60, "Two") + Tail;
    for (const std::string& pairs :
         {Pair("si_map", "m"), Pair("si_version", "DOOM"), Pair("a", "1") + Pair("b", "2"), std::string()}) {
        Parse(Header + pairs + End + players);
        EXPECT_THAT(PlayerList(), ElementsAre("0/50/One", "0/60/Two")) << pairs;
        EXPECT_EQ(Server().Players, 2) << pairs;
        Parse(Header + pairs + End + playersFromZero);
        EXPECT_THAT(PlayerList(), ElementsAre("0/50/One", "0/60/Two")) << pairs;
        EXPECT_EQ(Server().Players, 2) << pairs;
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Doom3Status, AnEmptyValueThatVariablesEndWithShiftsThePlayersByOne) {
    for (const std::string& pairs : {Pair("fs_game", ""), Pair("fs_game", "") + Pair("si_map", "m")}) {
        Parse(Header + pairs + End + Player(0, 0, 50, "One") + Tail);
        EXPECT_EQ(Server().Variables, "\\fs_game");
        EXPECT_THAT(PlayerList(), ElementsAre("0/0/\0One"s));
    }
}

TEST_F(Doom3Status, TheEndMarkRightBehindThePairsMeansNoPlayers) {
    // With the last value read as a key, and with a pair cut short.
    for (const std::string& pairs : {Pair("si_version", "DOOM") + End, "si_map\0m\0\0"s}) {
        Parse(Header + pairs + " " + Player(1, 0, 50, "One"));
        EXPECT_EQ(Server().Players, 0);
        EXPECT_THAT(PlayerList(), IsEmpty());
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Doom3Status, TheTrailingBackslashGoesAlsoWithoutPlayers) {
    Parse(Header + Pair("si_version", "DOOM") + End + Tail);
    EXPECT_EQ(Server().Variables, "\\si_version\\doom");
    Parse(Header + Pair("si_version", ""));
    EXPECT_EQ(Server().Variables, "\\si_version");
}

TEST_F(Doom3Status, ADictionaryThatNeverEndsHasNoPlayers) {
    const struct {
        std::string pairs;
        const char* variables;
    } cases[] = {
        {"", ""},
        {"\0"s, ""},
        {"a", ""},
        {"a\0"s, "\\a"},
        {"a\0b"s, "\\a"},
        {"a\0b\0"s, "\\a\\b"},
        {"a\0\0"s, "\\a"},
        {"a\0b\0\0\0"s, "\\a\\b"},
        {"a\0\0b"s, "\\a"},
        {"si_map\0"s, ""},
        {"si_map\0m"s, ""},
        {"si_map\0m\0"s, ""},
        {"si_map\0m\0\0"s, ""},
        {"si_name\0n"s, ""},
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        Parse(Header + c.pairs);
        EXPECT_EQ(Server().Variables, c.variables) << c.pairs;
        EXPECT_EQ(Server().Players, 0) << c.pairs;
        EXPECT_THAT(PlayerList(), IsEmpty()) << c.pairs;
        errors.push_back(Missing);
        EXPECT_EQ(Logged(), errors) << c.pairs;
    }
}

TEST_F(Doom3Status, ALongUnendedDictionaryEndsInOneEntry) {
    Parse(Header + Repeated("key\0"s, 16000) + "x");
    EXPECT_EQ(Server().Variables.size(), 64000U);
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Doom3Status, NumbersThatAreNoBytesEndTheParse) {
    const std::string mismatch = "modGamQuery;ParseD3EngineStatus;13";
    const std::string overflow = "modGamQuery;ParseD3EngineStatus;6";
    const struct {
        std::string pair;
        std::vector<std::string> errors;
    } cases[] = {
        {Pair("si_maxplayers", "many"), {mismatch}}, {Pair("si_maxplayers", "256"), {overflow}},
        {Pair("si_maxplayers", "-1"), {overflow}},   {Pair("si_usepass", "yes"), {mismatch}},
        {Pair("si_usepass", "300"), {overflow}},     {Pair("si_usepass", "1e9"), {overflow}},
        {"si_usepass\0"s, {Missing, mismatch}},      {"si_maxplayers\0\0"s, {Missing, mismatch}},
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        const bool cutOff = c.errors.size() > 1;
        Parse(Header + Pair("si_name", "Name") + c.pair +
              (cutOff ? "" : Pair("si_map", "m") + End + Player(1, 0, 50, "One") + Tail));
        EXPECT_EQ(Server().Name, "Name") << c.pair; // what came before stays
        EXPECT_EQ(Server().Map, "") << c.pair;
        EXPECT_EQ(Server().Players, 0) << c.pair;
        EXPECT_THAT(PlayerList(), IsEmpty()) << c.pair;
        errors.insert(errors.end(), c.errors.begin(), c.errors.end());
    }
    EXPECT_EQ(Logged(), errors);
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(Doom3Status, BytesGoUpToTheirLimits) {
    Parse(Header + Pair("si_maxplayers", "255") + Pair("si_usepass", "0") + End + Tail);
    EXPECT_EQ(Server().MaxPlayers, 255);
    EXPECT_EQ(Server().Locked, 0);
}

TEST_F(Doom3Status, PingsAreReadHighByteFirst) {
    const std::string start = Header + Pair("si_map", "m") + End;
    Parse(start + Player(0, 0x7F, 0xFF, "Slow") + Player(31, 0, 0xFF, "Fast") + Tail);
    EXPECT_THAT(PlayerList(), ElementsAre("0/32767/Slow", "0/255/Fast"));
    EXPECT_EQ(Server().Players, 2);
}

TEST_F(Doom3Status, APingOutOfRangeEndsTheParse) {
    Parse(Header + Pair("si_map", "m") + End + Player(0, 0, 50, "One") + Player(1, 0x80, 0, "Two") +
          Player(2, 0, 60, "Three") + Tail);
    EXPECT_EQ(Server().Map, "m");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(PlayerList(), ElementsAre("0/50/One", "0/0/"));
    EXPECT_THAT(Logged(), ElementsAre("modGamQuery;ParseD3EngineStatus;6"));
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(Doom3Status, ClientNumbersAreNotLookedAt) {
    std::string players;
    for (const int client : {2, 33, 100, 255})
        players += Player(client, 0, client, "n");
    Parse(Header + Pair("si_map", "m") + End + players);
    EXPECT_THAT(PlayerList(), ElementsAre("0/2/n", "0/33/n", "0/100/n", "0/255/n"));
    EXPECT_EQ(Server().Players, 4);
}

TEST_F(Doom3Status, ReadsPlayersAsFarAsTheBytesGo) {
    const std::string whole = Player(0, 0, 1, "whole");
    const struct {
        std::string rest;
        std::vector<std::string> players;
        std::vector<std::string> errors;
    } cases[] = {
        {"", {}, {}},
        {"\x01", {}, {}},
        {"\x01\0\x02\0\0"s, {}, {}},                         // five bytes are no player
        {"\x01\0\x02xy\0"s, {"0/2/xy"}, {}},                 // a rate cut off stands for the name
        {"\x01\0\x02xyz\0"s, {"0/2/xyz"}, {}},               // also the last whole one
        {"\x01\0\x02xyz"s, {"0/2/"}, {Missing}},             //
        {"\x01\0\x02xyz\x01n\0"s, {"0/2/n"}, {}},            //
        {"\x01\0\x02xyz\x01name"s, {"0/2/"}, {Missing}},     // endless name
        {"\x01\0\x02xyz\x01\0name"s, {"0/2/"}, {Missing}},   // an empty name is not seen as such
        {"\x01\0\x02xyz\x01\0name\0"s, {"0/2/\0name"s}, {}}, //
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        Parse(Header + Pair("si_map", "m") + End + whole + c.rest);
        std::vector<std::string> players = {"0/1/whole"};
        players.insert(players.end(), c.players.begin(), c.players.end());
        EXPECT_EQ(PlayerList(), players) << c.rest;
        EXPECT_EQ(Server().Players, static_cast<std::int32_t>(players.size())) << c.rest;
        errors.insert(errors.end(), c.errors.begin(), c.errors.end());
        EXPECT_EQ(Logged(), errors) << c.rest;
    }
}

TEST_F(Doom3Status, AnEndlessNameIsReadOnAsPlayersButLoggedOnce) {
    Parse(Header + Pair("si_map", "m") + End + std::string(63000, '\x01'));
    EXPECT_EQ(Server().Players, MaxPlayersOfAReply);
    EXPECT_EQ(Server().PlayerList[MaxPlayersOfAReply].Ping, 257);
    EXPECT_EQ(Server().PlayerList[MaxPlayersOfAReply].Name, "");
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Doom3Status, AnIndexOutsideTheListIsItsRoutinesError) {
    ParseD3EngineStatus(program, Header + End, 2);
    EXPECT_THAT(Logged(), ElementsAre("modGamQuery;ParseD3EngineStatus;9"));
}

} // namespace
} // namespace quarn
