#include "query/modGamQuery.h"

#include "tests/query/ParserTest.h"

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string Header = "\xFF\xFF\xFF\xFFstatusResponse\n";
const std::string Missing = "modCommonSubs;ExtractString;5";
const std::string Mismatch = "modGamQuery;ParseQ3EngineStatus;13";
const std::string TooLarge = "modGamQuery;ParseQ3EngineStatus;6";

class Quake3Status : public StatusTest {
  protected:
    void Parse(const std::string& datagram) { ParseQ3EngineStatus(program, datagram, 1); }
    void ParseInfo(const std::string& info) { Parse(Header + info + "\n"); }
    void ParsePlayers(const std::string& lines) { Parse(Header + "\\mapname\\q3dm17\n" + lines); }
};

TEST_F(Quake3Status, FillsTheRecordFromAnOrdinaryReply) {
    Parse(Header +
          "\\sv_hostname\\^2Srv \"x\"\\g_gametype\\4\\mapname\\q3dm17\\gamename\\osp\\sv_maxclients\\16"
          "\\g_needpass\\1\n"
          "12 48 \"^1Big^7 Boss\"\n-666 0 \"Bot\"\n");
    EXPECT_EQ(Server().Name, "Srv x");
    EXPECT_EQ(Server().Map, "q3dm17");
    EXPECT_EQ(Server().ModName, "osp");
    EXPECT_EQ(Server().MaxPlayers, 16);
    EXPECT_EQ(Server().Locked, 1);
    EXPECT_EQ(Server().Variables, "\\g_gametype\\4");
    EXPECT_EQ(Server().Players, 2);
    EXPECT_THAT(PlayerList(), ElementsAre("12/48/Big Boss", "-666/0/Bot"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Quake3Status, KnowsItsKeysInAnyCaseAndAlsoTheSecondNameOfThePasswordFlag) {
    ParseInfo("\\SV_MaxClients\\8\\Sv_HostName\\Name\\MAPNAME\\Dm1\\GameName\\Mod\\PsWrd\\1");
    EXPECT_EQ(Server().MaxPlayers, 8);
    EXPECT_EQ(Server().Name, "Name");
    EXPECT_EQ(Server().Map, "Dm1");
    EXPECT_EQ(Server().ModName, "Mod");
    EXPECT_EQ(Server().Locked, 1);
    EXPECT_EQ(Server().Variables, "");
}

TEST_F(Quake3Status, ClearsOnlyTheName) {
    ParseInfo("\\mapname\\^1\"Map\"\\gamename\\^2\"Mod\"");
    EXPECT_EQ(Server().Map, "^1\"Map\"");
    EXPECT_EQ(Server().ModName, "^2\"Mod\"");
}

TEST_F(Quake3Status, ResetsWhatTheLastReplyLeft) {
    Server().Name = "old";
    Server().Variables = "\\old\\1";
    Server().Players = 3;
    Server().PlayerList.Reset(3);
    Server().Ping = 77;
    Server().Locked = 1;
    Parse(Header + "\\fraglimit\\20\n");
    EXPECT_EQ(Server().Name, "");
    EXPECT_EQ(Server().ModName, "0");
    EXPECT_EQ(Server().Variables, "\\fraglimit\\20");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(PlayerList(), IsEmpty());
    EXPECT_EQ(Server().Ping, 77);
    EXPECT_EQ(Server().Locked, 1);
}

TEST_F(Quake3Status, ADisconnectChangesNothing) {
    Server().Name = "old";
    Server().Variables = "\\old\\1";
    Server().Players = 3;
    Server().PlayerList.Reset(3);
    Parse("\xFF\xFF\xFF\xFF"
          "disconnect");
    EXPECT_EQ(Server().Name, "old");
    EXPECT_EQ(Server().Variables, "\\old\\1");
    EXPECT_EQ(Server().Players, 3);
    EXPECT_EQ(Server().PlayerList.HighestIndex(), 3);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Quake3Status, OnlyTheWholeDatagramIsADisconnect) {
    for (const std::string& datagram : {"\xFF\xFF\xFF\xFF"
                                        "disconnect\n"s,
                                        "\xFF\xFF\xFF\xFF"
                                        "Disconnect"s,
                                        "\xFF\xFF"
                                        "disconnect\0"s,
                                        "disconnect"s}) {
        Server().Name = "old";
        Parse(datagram);
        EXPECT_EQ(Server().Name, "") << datagram;
    }
}

TEST_F(Quake3Status, CollectsPairsAsSeenInTheInfoText) {
    const struct {
        const char* info;
        const char* variables;
    } cases[] = {
        {"\\g_gametype\\4", "\\g_gametype\\4"},
        {"\\G_GameType\\FFA \xC4", "\\g_gametype\\ffa \xE4"}, // values are read as keys, so in lower case
        {"\\a\\1\\b\\2\\a\\3", "\\a\\1\\b\\2\\a\\3"},
        {"\\a\\\\b\\2", "\\a\\\\b\\2"}, // empty value in the middle
        {"\\a\\", "\\a\\"},             // and at the end
        {"\\a\\1\\b\\", "\\a\\1\\b\\"},
        {"\\a", "\\a"}, // odd number of fields
        {"\\a\\1\\b", "\\a\\1\\b"},
        {"\\mapname\\q3dm17\\", "\\"}, // an empty field behind a known pair
        {"\\ Administrator\\X\\.site\\y", "\\ administrator\\x\\.site\\y"},
        {"\\a\\1 %n%s\r\t", "\\a\\1 %n%s\r\t"},
        {"xa\\1", "\\a\\1"}, // the first character goes unseen
        {"x", ""},
        {"\\", ""},
        {"\\\\", "\\\\"},
    };
    for (const auto& c : cases) {
        ParseInfo(c.info);
        EXPECT_EQ(Server().Variables, c.variables) << c.info;
    }
}

TEST_F(Quake3Status, KeepsNulsInsidePairs) {
    ParseInfo("\\a\0b\\c\0"s);
    EXPECT_EQ(Server().Variables, "\\a\0b\\c\0"s);
}

TEST_F(Quake3Status, AValueThatIsAKnownKeyIsTakenAsThatKey) {
    ParseInfo("\\vote\\mapname\\q3dm6\\fraglimit\\20");
    EXPECT_EQ(Server().Map, "q3dm6");
    EXPECT_EQ(Server().Variables, "\\vote\\fraglimit\\20");
}

TEST_F(Quake3Status, AnEmptyValueOfAKnownKeyTakesTheNextKeyForIt) {
    ParseInfo("\\mapname\\\\gamename\\osp");
    EXPECT_EQ(Server().Map, "\\gamename");
    EXPECT_EQ(Server().ModName, "0");
    EXPECT_EQ(Server().Variables, "\\osp");
}

TEST_F(Quake3Status, AnEmptyLastValueOfAKnownKeyIsEmptyAndAppendsNothing) {
    Parse(Header + "\\fraglimit\\20\\mapname\\\n3 4 \"Player\"\n");
    EXPECT_EQ(Server().Map, "");
    EXPECT_EQ(Server().Variables, "\\fraglimit\\20");
    EXPECT_EQ(Server().Players, 1);
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Quake3Status, AnEmptyLastValueOfAnUnknownKeyIsOneBackslashAndThePlayersFollow) {
    Parse(Header + "\\mapname\\q3dm17\\motd\\\n3 4 \"Player\"\n");
    EXPECT_EQ(Server().Variables, "\\motd\\");
    EXPECT_EQ(Server().Players, 1);
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Quake3Status, AnInfoTextWithoutAnyPairAppendsNothing) {
    Parse(Header + "\\\n3 4 \"Player\"\n");
    EXPECT_EQ(Server().Variables, "");
    EXPECT_EQ(Server().Players, 1);
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Quake3Status, AnEmptyInfoLineRunsIntoTheNextLine) {
    Parse(Header + "\n3 4 \"Player\"\n5 6 \"Other\"\n");
    EXPECT_EQ(Server().Variables, "\\3 4 \"player\"");
    EXPECT_THAT(PlayerList(), ElementsAre("5/6/Other"));
}

TEST_F(Quake3Status, NumbersThatAreNoneEndTheParse) {
    const struct {
        const char* info;
        const std::string& error;
    } cases[] = {
        {"\\sv_maxclients\\many\\mapname\\q3dm17", Mismatch},
        {"\\sv_maxclients\\\\mapname\\q3dm17", Mismatch}, // reads "\mapname"
        {"\\sv_maxclients\\4294967296\\mapname\\q3dm17", TooLarge},
        {"\\g_needpass\\yes\\mapname\\q3dm17", Mismatch},
        {"\\pswrd\\0x1\\mapname\\q3dm17", Mismatch},
        {"\\g_needpass\\99999999999\\mapname\\q3dm17", TooLarge},
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        Parse(Header + "\\sv_hostname\\Name" + c.info + "\n3 4 \"Player\"\n");
        EXPECT_EQ(Server().Name, "Name") << c.info; // what came before stays
        EXPECT_EQ(Server().Map, "") << c.info;
        EXPECT_EQ(Server().Players, 0) << c.info;
        EXPECT_THAT(PlayerList(), IsEmpty()) << c.info;
        errors.push_back(c.error);
    }
    EXPECT_EQ(Logged(), errors);
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(Quake3Status, AnEmptyNumberAtTheEndEndsTheParse) {
    Parse(Header + "\\sv_hostname\\Name\\sv_maxclients\\\n3 4 \"Player\"\n");
    EXPECT_EQ(Server().Name, "Name");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(Logged(), ElementsAre(Missing, Mismatch));
}

TEST_F(Quake3Status, WholeNumbersNeedNotBeWrittenAsSuch) {
    ParseInfo("\\sv_maxclients\\ 16.5 \\g_needpass\\-1");
    EXPECT_EQ(Server().MaxPlayers, 16);
    EXPECT_EQ(Server().Locked, -1);
}

TEST_F(Quake3Status, NoPlayerLinesAreNoPlayers) {
    ParsePlayers("");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_EQ(Server().PlayerList.HighestIndex(), 0);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Quake3Status, ReadsEachPlayerLineAsScorePingAndName) {
    const struct {
        const char* lines;
        std::vector<std::string> players;
    } cases[] = {
        {"0 999 \"Connecting\"\n", {"0/999/Connecting"}},
        {"32767 1 \"a\"\n-32768 2 \"b\"\n", {"32767/1/a", "-32768/2/b"}},
        {"28 135 \"\"\n1 2 \"x\"\n", {"28/135/", "1/2/x"}},
        {"1 2 no quotes\n", {"1/2/no quotes"}},
        {"1 2 \"in \"side\"\"\n", {"1/2/in side"}},
        {"1 2 3 \"team\"\n", {"1/2/3 team"}},
        {"1 2000000000 \"slow\"\n", {"1/2000000000/slow"}},
        {"1.5 2.5 \"half\"\n", {"2/2/half"}},
        {"1 2 \n\"x\"\n", {"1/2/\nx"}}, // a line end in front of a name is not seen
        {"1 2 ^1c^\n", {"1/2/c^"}},
    };
    for (const auto& c : cases) {
        ParsePlayers(c.lines);
        EXPECT_EQ(PlayerList(), c.players) << c.lines;
        EXPECT_EQ(Server().Players, static_cast<std::int32_t>(c.players.size())) << c.lines;
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Quake3Status, ADamagedPlayerEndsTheParseAndIsNotCounted) {
    const std::string whole = "1 2 \"whole\"\n";
    const struct {
        const char* line;
        std::vector<std::string> players;
        std::int32_t counted;
        std::vector<std::string> errors;
    } cases[] = {
        {"x 2 \"n\"\n", {"0/0/"}, 0, {Mismatch}},
        {"", {}, 1, {}},
        {"\n", {"0/0/"}, 0, {Missing, Mismatch}},
        {"5", {"0/0/"}, 0, {Missing, Mismatch}},
        {"5 ", {"5/0/"}, 0, {Missing, Mismatch}},
        {"5 6", {"5/0/"}, 0, {Missing, Mismatch}},
        {" 5 6 \"n\"\n", {"5/6/n"}, 2, {}}, // a blank in front of the score is not seen
        {"5  6 \"n\"\n", {"5/6/n"}, 2, {}}, // nor one in front of the ping
        {"5 x \"n\"\n", {"5/0/"}, 0, {Mismatch}},
        {"5 \"n\"\n", {"5/0/"}, 0, {Missing, Mismatch}},
        {"5 \"n m\"\n", {"5/0/"}, 0, {Mismatch}},
        {"32768 6 \"n\"\n", {"0/0/"}, 0, {TooLarge}},
        {"-32769 6 \"n\"\n", {"0/0/"}, 0, {TooLarge}},
        {"5 2147483648 \"n\"\n", {"5/0/"}, 0, {TooLarge}},
        {"\"n\" 5 6\n", {"0/0/"}, 0, {Mismatch}},
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        ParsePlayers(whole + c.line);
        errors.insert(errors.end(), c.errors.begin(), c.errors.end());
        EXPECT_EQ(Logged(), errors) << c.line;
        EXPECT_EQ(Server().Map, "q3dm17") << c.line;
        EXPECT_EQ(Server().Players, c.counted) << c.line;
        std::vector<std::string> players = {"1/2/whole"};
        players.insert(players.end(), c.players.begin(), c.players.end());
        EXPECT_EQ(PlayerList(), players) << c.line;
    }
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(Quake3Status, ANameWithoutALineEndIsReadOnAsPlayers) {
    ParsePlayers("5 6 \"cut off\"");
    EXPECT_THAT(PlayerList(), ElementsAre("5/6/", "0/0/"));
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(Logged(), ElementsAre(Missing, Mismatch));
}

TEST_F(Quake3Status, NumbersWithoutAnyLineEndLogNoMoreThanTheFirst) {
    ParsePlayers(Repeated("1 ", 32000));
    EXPECT_EQ(Server().PlayerList.HighestIndex(), MaxPlayersOfAReply);
    EXPECT_EQ(Server().PlayerList[MaxPlayersOfAReply].Score, 1);
    EXPECT_EQ(Server().Players, MaxPlayersOfAReply);
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(Quake3Status, AReplyWithoutAnyLineEndLeavesAnEmptyRecord) {
    Server().Variables = "\\old\\1";
    Parse("\xFF\xFF\xFF\xFFstatusResponse \\mapname\\q3dm17");
    EXPECT_EQ(Server().Variables, "");
    EXPECT_EQ(Server().Map, "");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(PlayerList(), ElementsAre("0/0/"));
    // header, info, its lone backslash; then the whole datagram as a player
    EXPECT_THAT(Logged(), ElementsAre(Missing, Missing, Missing, Mismatch));
}

TEST_F(Quake3Status, AnInfoTextWithoutALineEndIsReadAsPlayers) {
    Parse(Header + "\\mapname\\q3dm17");
    EXPECT_EQ(Server().Map, "");
    EXPECT_EQ(Server().Variables, "");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(Logged(), ElementsAre(Missing, Missing, Missing, Mismatch));
}

TEST_F(Quake3Status, RepliesOfAnotherKindGoThroughTheSameSteps) {
    Parse("\xFF\xFF\xFF\xFFprint\nServer is full\n");
    EXPECT_EQ(Server().Variables, "\\erver is full");
    EXPECT_EQ(Server().Players, 0);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Quake3Status, AHeaderOfOneLineEndIsNotSeen) {
    Parse("\n\\a\\1\n\\mapname\\q3dm17\n");
    EXPECT_EQ(Server().Map, "q3dm17");
    EXPECT_EQ(Server().Variables, "");
}

TEST_F(Quake3Status, AnIndexOutsideTheListIsItsRoutinesError) {
    for (const std::int32_t index : {-1, 2, 1'000'000})
        ParseQ3EngineStatus(program, Header + "\\mapname\\q3dm17\n", index);
    EXPECT_THAT(Logged(),
                ElementsAre("modGamQuery;ParseQ3EngineStatus;9", "modGamQuery;ParseQ3EngineStatus;9",
                            "modGamQuery;ParseQ3EngineStatus;9"));
}

} // namespace
} // namespace quarn
