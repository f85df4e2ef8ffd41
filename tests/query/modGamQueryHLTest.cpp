#include "query/modGamQuery.h"

#include "tests/query/ParserTest.h"

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string Lead = "\xFF\xFF\xFF\xFF";
const std::string Missing = "modCommonSubs;ExtractString;5";

// The four bytes of a score and the four of a time.
std::string Player(const std::string& name, int score, const std::string& time = std::string(4, '\x01')) {
    return name + '\0' + Bytes({score, 0, 0, 0}) + time;
}

class HalfLifeStatus : public StatusTest {
  protected:
    void Parse(const std::string& datagram) { ParseHLCSStatus(program, datagram, 1); }
    void ParsePlayers(const std::string& players) { Parse(Lead + "D" + Bytes({2, 1}) + players); }
};

TEST_F(HalfLifeStatus, AnInfoReplyGivesNameMapModAndPlayerSlots) {
    Parse(Lead + "C10.0.0.1:27015\0^1Srv \"x\"\0de_dust\0cstrike\0X\x10rest"s);
    EXPECT_EQ(Server().Name, "^1Srv \"x\""); // as sent
    EXPECT_EQ(Server().Map, "de_dust");
    EXPECT_EQ(Server().ModName, "cstrike");
    EXPECT_EQ(Server().MaxPlayers, 16);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, PlayerSlotsAreOneByteWithoutASign) {
    Parse(Lead + "Ca\0n\0m\0g\0x\xFF"s);
    EXPECT_EQ(Server().MaxPlayers, 255);
}

TEST_F(HalfLifeStatus, TheKindCountsInAnyCase) {
    Parse(Lead + "ca\0n\0m\0g\0x\x08"s);
    EXPECT_EQ(Server().MaxPlayers, 8);
    Parse(Lead + "d" + Bytes({1, 1}) + Player("One", 5));
    EXPECT_EQ(Server().Players, 1);
    Parse(Lead + "e\0\0a\0001"s);
    EXPECT_EQ(Server().Variables, Lead + "e\\\\a\\1");
}

TEST_F(HalfLifeStatus, OtherKindsAndShortRepliesChangeNothing) {
    Server().Name = "old";
    Server().Variables = "\\old\\1";
    Server().Players = 3;
    Server().PlayerList.Reset(3);
    for (const std::string& datagram :
         {""s, "C"s, Lead, Lead + "Ba\0n\0m\0g\0x\x08"s, Lead + "Fabc"s, Lead + "ma\0n\0m\0g\0x\x08"s,
          Lead + "\0"s, Lead + "\xC3"s, "\xFE\xFF\xFF\xFF\x01\0\0\0\x02"s})
        Parse(datagram);
    EXPECT_EQ(Server().Name, "old");
    EXPECT_EQ(Server().Variables, "\\old\\1");
    EXPECT_EQ(Server().Players, 3);
    EXPECT_EQ(Server().PlayerList.HighestIndex(), 3);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, NoReplyResetsTheRecordOrItsPasswordFlag) {
    Server().Locked = 1;
    Server().Players = 3;
    Server().Variables = "\\old\\1";
    Server().Ping = 77;
    Parse(Lead + "Ca\0n\0m\0g\0x\x08"s);
    EXPECT_EQ(Server().Locked, 1);
    EXPECT_EQ(Server().Players, 3);
    EXPECT_EQ(Server().Variables, "\\old\\1");
    ParsePlayers(Player("One", 5));
    EXPECT_EQ(Server().Name, "n");
    EXPECT_EQ(Server().MaxPlayers, 8);
    EXPECT_EQ(Server().Locked, 1);
    EXPECT_EQ(Server().Ping, 77);
}

TEST_F(HalfLifeStatus, AnInfoReplyCutOffFillsWhatItHas) {
    const std::string outOfText = "modGamQuery;ParseHLCSInfo;5";
    const struct {
        std::string reply;
        const char* name;
        const char* map;
        const char* mod;
        std::int32_t maxPlayers;
        std::vector<std::string> errors;
    } cases[] = {
        {"Ca\0n\0m\0g\0x"s, "n", "m", "g", 1, {outOfText}},
        {"Ca\0n\0m\0g\0"s, "n", "m", "g", 1, {outOfText}},
        {"Ca\0n\0m\0g"s, "n", "m", "", 1, {Missing, outOfText}},
        {"Ca\0n\0m\0"s, "n", "m", "", 1, {Missing, outOfText}},
        {"Ca\0n\0m"s, "n", "", "", 1, {Missing, Missing, outOfText}},
        {"Ca\0n\0map"s, "n", "", "", 'a', {Missing, Missing}}, // the text stands where it stood
        {"Ca\0n"s, "", "", "", 1, {Missing, Missing, Missing, outOfText}},
        {"Ca\0"s, "", "", "", 1, {Missing, Missing, Missing, outOfText}},
        {"C"s, "", "", "", 0xFF, {Missing, Missing, Missing, Missing}},
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        Server().MaxPlayers = 1;
        Parse(Lead + c.reply);
        EXPECT_EQ(Server().Name, c.name) << c.reply;
        EXPECT_EQ(Server().Map, c.map) << c.reply;
        EXPECT_EQ(Server().ModName, c.mod) << c.reply;
        EXPECT_EQ(Server().MaxPlayers, c.maxPlayers) << c.reply;
        errors.insert(errors.end(), c.errors.begin(), c.errors.end());
        EXPECT_EQ(Logged(), errors) << c.reply;
    }
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(HalfLifeStatus, AnEmptyTextTakesTheNextOneWithIt) {
    Parse(Lead + "Ca\0\0de_dust\0cstrike\0game\0x\x08"s);
    EXPECT_EQ(Server().Name, "\0de_dust"s);
    EXPECT_EQ(Server().Map, "cstrike");
    EXPECT_EQ(Server().ModName, "game");
    EXPECT_EQ(Server().MaxPlayers, 8);
}

TEST_F(HalfLifeStatus, APlayersReplyReplacesTheList) {
    Server().PlayerList.Reset(9);
    Server().Players = 9;
    ParsePlayers(Player("^1One", 5) + "\x02" + Player("Two \"x\"", 255));
    EXPECT_THAT(PlayerList(), ElementsAre("5/0/^1One", "255/0/Two \"x\"")); // names as sent
    EXPECT_EQ(Server().Players, 2);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, OnlyTheFirstByteOfAScoreCounts) {
    ParsePlayers("One\0"s + Bytes({0xFF, 0xFF, 0xFF, 0xFF}) + "time");
    EXPECT_THAT(PlayerList(), ElementsAre("255/0/One"));
}

TEST_F(HalfLifeStatus, TimesAreNotLookedAt) {
    ParsePlayers(Player("One", 1, Bytes({0, 0, 0xC0, 0x7F})) + "\x02" +
                 Player("Two", 2, Bytes({0, 0, 0x80, 0x7F})));
    EXPECT_THAT(PlayerList(), ElementsAre("1/0/One", "2/0/Two"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, TheAnnouncedPlayerCountIsNotLookedAt) {
    Parse(Lead + "D" + Bytes({255, 1}) + Player("One", 1));
    EXPECT_EQ(Server().Players, 1);
    Parse(Lead + "D" + Bytes({0, 1}) + Player("One", 1));
    EXPECT_EQ(Server().Players, 1);
}

TEST_F(HalfLifeStatus, ReadsPlayersAsFarAsTheBytesGo) {
    const std::string outOfText = "modGamQuery;ParseHLCSPlayers;5";
    const std::string whole = Player("whole", 7) + "\x02";
    const struct {
        std::string rest;
        std::vector<std::string> players;
        std::int32_t counted;
        std::vector<std::string> errors;
    } cases[] = {
        {"", {}, 1, {}},
        {"abcd", {}, 1, {}},                                 // four bytes are no player
        {"abcd\0"s, {"0/0/abcd"}, 9, {outOfText}},           // no score
        {"abcd\0\x05"s, {"5/0/abcd"}, 2, {}},                // a score of one byte
        {"abcd\0\x05\0\0\0time"s, {"5/0/abcd"}, 2, {}},      // no next index
        {"abcd\0\x05\0\0\0timeiabcd"s, {"5/0/abcd"}, 2, {}}, //
        {"abcde", {"97/0/"}, 2, {Missing}},                  // endless name
        {"\0abcd"s, {"0/0/"}, 2, {Missing}},                 // an empty name is not seen as such
    };
    std::vector<std::string> errors;
    for (const auto& c : cases) {
        Server().Players = 9;
        ParsePlayers(whole + c.rest);
        std::vector<std::string> players = {"7/0/whole"};
        players.insert(players.end(), c.players.begin(), c.players.end());
        EXPECT_EQ(PlayerList(), players) << c.rest;
        EXPECT_EQ(Server().Players, c.counted) << c.rest;
        errors.insert(errors.end(), c.errors.begin(), c.errors.end());
        EXPECT_EQ(Logged(), errors) << c.rest;
    }
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(HalfLifeStatus, AReplyWithoutPlayersEmptiesTheList) {
    for (const std::string& reply : {"D"s, "D\0"s, "D\0\0"s, "D\xFF\x01"s, "D\x01\x01"s}) {
        Server().Players = 9;
        Server().PlayerList.Reset(9);
        Parse(Lead + reply);
        EXPECT_EQ(Server().Players, 0);
        EXPECT_EQ(Server().PlayerList.HighestIndex(), 0);
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, AnEndlessNameIsReadOnAsPlayersButLoggedOnce) {
    ParsePlayers(std::string(63000, 'x'));
    EXPECT_EQ(Server().Players, MaxPlayersOfAReply);
    EXPECT_EQ(Server().PlayerList[MaxPlayersOfAReply].Score, 'x');
    EXPECT_THAT(Logged(), ElementsAre(Missing));
}

TEST_F(HalfLifeStatus, RulesAreKeptWithTheirHeaderAndAddUp) {
    Parse(Lead + "E\x01\0mp_friendlyfire\0001\0"s);
    const std::string once = Lead + "E\x01\\mp_friendlyfire\\1";
    EXPECT_EQ(Server().Variables, once);
    Parse(Lead + "E\x01\0mp_friendlyfire\0001\0"s);
    EXPECT_EQ(Server().Variables, once + once);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, OnlyOneBackslashBehindTheRulesIsRemoved) {
    const struct {
        std::string rules;
        const char* variables;
    } cases[] = {
        {"E"s, "E"},         {"E\0"s, "E"},         {"E\0\0"s, "E\\"},
        {"Ea\0b"s, "Ea\\b"}, {"Ea\0b\\"s, "Ea\\b"}, {"E\xFF\xFF"s, "E\xFF\xFF"},
    };
    for (const auto& c : cases) {
        Server().Variables.clear();
        Parse(Lead + c.rules);
        EXPECT_EQ(Server().Variables, Lead + c.variables);
    }
}

TEST_F(HalfLifeStatus, RulesDoNotGrowBeyondTheirLimit) {
    const std::string rules = Lead + "E" + std::string(95, 'x');
    const std::string most(MaxVariablesLength - rules.size(), 'v');
    Server().Variables = most;
    Parse(rules + '\0'); // fits without the backslash that is removed again
    EXPECT_EQ(Server().Variables, most + rules);
    Parse(Lead + "E");
    EXPECT_EQ(Server().Variables, most + rules);
    Server().Variables = most + "v";
    Parse(rules);
    EXPECT_EQ(Server().Variables, most + "v");
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(HalfLifeStatus, AnIndexOutsideTheListIsTheErrorOfTheRoutineThatMetIt) {
    ParseHLCSStatus(program, Lead + "Ca", 2);
    ParseHLCSStatus(program, Lead + "Da", 2);
    ParseHLCSStatus(program, Lead + "Ea", 2);
    EXPECT_THAT(Logged(), ElementsAre("modGamQuery;ParseHLCSInfo;9", "modGamQuery;ParseHLCSPlayers;9",
                                      "modGamQuery;ParseHLCSStatus;9"));
}

} // namespace
} // namespace quarn
