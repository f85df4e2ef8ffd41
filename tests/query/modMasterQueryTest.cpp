#include "query/modMasterQuery.h"

#include "tests/query/ParserTest.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MasterReply : public ProgramTest {
  protected:
    void ParseQ3(std::string body) { ParseQ3EngineServers(program, body); }
    void ParseD3(const std::string& body) { ParseD3EngineServers(program, body); }
    void ParseHL(const std::string& body) { ParseHLCSServers(program, body); }

    // "Address:Port" of every slot.
    std::vector<std::string> Slots() const {
        std::vector<std::string> slots;
        for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i)
            slots.push_back(program.Servers[i].Address + ':' + std::to_string(program.Servers[i].Port));
        return slots;
    }

    const std::string server1 = Bytes({10, 0, 0, 1, 0x6D, 0x38});
    const std::string server2 = Bytes({192, 168, 255, 254, 0xFF, 0xFE});
};

TEST_F(MasterReply, Quake3EntriesHaveTheHighByteOfThePortFirstAndASeparatorBehind) {
    ParseQ3(server1 + "\\" + server2 + "\\");
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "192.168.255.254:65534"));
    EXPECT_EQ(program.ServerCount, 2);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(MasterReply, Quake3SeparatorsAreSkippedWhateverTheyAre) {
    ParseQ3(server1 + "x" + server2 + Bytes({0}));
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "192.168.255.254:65534"));
}

TEST_F(MasterReply, BackslashesInsideAnEntryArePartOfIt) {
    ParseQ3(Bytes({'\\', '\\', '\\', '\\', '\\', '\\', '\\'}));
    EXPECT_THAT(Slots(), ElementsAre("92.92.92.92:23644"));
}

TEST_F(MasterReply, Quake3EndMarksAreDeletedFromTheTextWhereverTheyStand) {
    std::string body = "EOF" + server1 + "\\EOT" + server2 + "EOTEOF\\";
    ParseQ3EngineServers(program, body);
    EXPECT_EQ(body, server1 + "\\" + server2 + "\\");
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "192.168.255.254:65534"));
}

TEST_F(MasterReply, AnEndMarkInsideAnAddressShiftsWhatFollows) {
    ParseQ3(Bytes({'E', 'O', 'T', 1, 2, 3, '\\', 4, 5, 6}));
    EXPECT_THAT(Slots(), ElementsAre("1.2.3.92:1029"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(MasterReply, EndMarksAreTheirLettersInUpperCaseOnly) {
    ParseQ3(Bytes({'e', 'o', 't', 'E', 'O', 'S', '\\'}));
    EXPECT_THAT(Slots(), ElementsAre("101.111.116.69:20307"));
}

TEST_F(MasterReply, TheEndOfAnOrdinaryQuake3ListIsCountedAndLoggedOnce) {
    ParseQ3(server1 + "\\" + server2 + "\\EOT" + Bytes({0, 0, 0}));
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "192.168.255.254:65534"));
    EXPECT_EQ(program.ServerCount, 3);
    EXPECT_EQ(program.LastServerIndex(), 2);
    EXPECT_THAT(Logged(), ElementsAre("modMasterQuery;ParseQ3EngineServers;9"));
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(MasterReply, Doom3EntriesHaveTheLowByteOfThePortFirstAndNoSeparator) {
    ParseD3(Bytes({10, 0, 0, 1, 0x70, 0x6D, 192, 168, 255, 254, 0xFE, 0xFF}));
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:28016", "192.168.255.254:65534"));
    EXPECT_EQ(program.ServerCount, 2);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(MasterReply, Doom3AndHalfLifeBodiesKeepTheLettersOfEndMarks) {
    ParseD3("EOTEOF");
    EXPECT_THAT(Slots(), ElementsAre("69.79.84.69:17999"));
    ParseHL("EOTEOF\\");
    EXPECT_THAT(Slots(), ElementsAre("69.79.84.69:17999", "69.79.84.69:20294"));
}

TEST_F(MasterReply, HalfLifeEntriesAreWalkedInSevensButSizedInSixes) {
    ParseHL(server1 + "x" + server2 + "y" + server1 + "z");
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "192.168.255.254:65534", "10.0.0.1:27960", ":0"));
    EXPECT_EQ(program.ServerCount, 3);
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(MasterReply, ANewEntryHasOnlyAddressAndPort) {
    ParseQ3(server1 + "\\");
    const ServerRecord& server = program.Servers[1];
    EXPECT_EQ(server.PlayerList.HighestIndex(), 0);
    EXPECT_EQ(server.Name + server.Map + server.ModName + server.Country + server.Variables + server.Password,
              "");
    EXPECT_EQ(server.Locked + server.Ping + server.MaxPlayers + server.Players, 0);
    EXPECT_TRUE(server.LastVisit.IsZero());
}

TEST_F(MasterReply, ASlotThatALongerCountLeftOverIsFilledAndItsPlayersGo) {
    ParseHL(server1 + "x" + server1 + "y" + server1 + "z");
    ASSERT_EQ(program.Servers.HighestIndex(), 4);
    program.Servers[4].PlayerList.Reset(2);
    ParseD3(server2);
    EXPECT_EQ(Slots()[3], "192.168.255.254:65279");
    EXPECT_EQ(program.Servers[4].PlayerList.HighestIndex(), 0);
    EXPECT_EQ(program.ServerCount, 4);
}

TEST_F(MasterReply, EntriesAreAppendedWithoutLookingForDuplicates) {
    ParseQ3(server1 + "\\" + server1 + "\\");
    program.Servers[1].Name = "kept";
    EXPECT_EQ(program.PreviousServerCount, 0);
    ParseQ3(server1 + "\\");
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", "10.0.0.1:27960", "10.0.0.1:27960"));
    EXPECT_EQ(program.PreviousServerCount, 2);
    EXPECT_EQ(program.ServerCount, 3);
    EXPECT_EQ(program.Servers[1].Name, "kept");
}

TEST_F(MasterReply, TheNextListBeginsBehindACountThatIsOnePastTheEnd) {
    const std::string list = server1 + "\\EOT" + Bytes({'\\', 0, 0});
    ParseQ3(list);
    ASSERT_EQ(program.ServerCount, 2);
    ParseQ3(server2 + "\\");
    EXPECT_THAT(Slots(), ElementsAre("10.0.0.1:27960", ":0", "192.168.255.254:65534"));
    EXPECT_EQ(program.PreviousServerCount, 2);
    EXPECT_EQ(program.ServerCount, 3);
}

TEST_F(MasterReply, AnEmptyBodyAddsNothing) {
    program.ServerCount = 5;
    program.Servers.Reset(5);
    ParseQ3("");
    ParseQ3("EOT");
    ParseD3("");
    ParseHL("");
    EXPECT_EQ(program.ServerCount, 5);
    EXPECT_EQ(program.PreviousServerCount, 5);
    EXPECT_EQ(program.Servers.HighestIndex(), 5);
    EXPECT_THAT(Logged(), IsEmpty());
}

// One whole entry and so many bytes of the next.
struct CutEntry {
    std::size_t bytes;
    std::int32_t slots;
    const char* last; // what the last slot holds
    const char* error;
};

TEST_F(MasterReply, AQuake3EntryCutOffIsStoredAsFarAsItsSlotAndBytesGo) {
    const CutEntry cases[] = {
        {1, 1, "10.0.0.1:27960", "9"},    {2, 1, "10.0.0.1:27960", "9"},
        {3, 1, "10.0.0.1:27960", "9"},    {4, 2, "192.168.255.254:0", "5"},
        {5, 2, "192.168.255.254:0", "5"}, {6, 2, "192.168.255.254:65534", nullptr},
    };
    std::vector<std::string> errors;
    for (const CutEntry& c : cases) {
        program.Servers.Reset();
        program.ServerCount = 0;
        ParseQ3(server1 + "\\" + server2.substr(0, c.bytes));
        EXPECT_EQ(program.ServerCount, 2) << c.bytes;
        EXPECT_EQ(program.Servers.HighestIndex(), c.slots) << c.bytes;
        EXPECT_EQ(Slots().back(), c.last) << c.bytes;
        if (c.error)
            errors.push_back(std::string("modMasterQuery;ParseQ3EngineServers;") + c.error);
        EXPECT_EQ(Logged(), errors) << c.bytes;
    }
}

TEST_F(MasterReply, ADoom3EntryCutOffIsStoredAsFarAsItsSlotAndBytesGo) {
    const CutEntry cases[] = {
        {1, 1, "10.0.0.1:14445", "9"},    {2, 1, "10.0.0.1:14445", "9"},    {3, 2, ":0", "5"},
        {4, 2, "192.168.255.254:0", "5"}, {5, 2, "192.168.255.254:0", "5"},
    };
    std::vector<std::string> errors;
    for (const CutEntry& c : cases) {
        program.Servers.Reset();
        program.ServerCount = 0;
        ParseD3(server1 + server2.substr(0, c.bytes));
        EXPECT_EQ(program.ServerCount, 2) << c.bytes;
        EXPECT_EQ(program.Servers.HighestIndex(), c.slots) << c.bytes;
        EXPECT_EQ(Slots().back(), c.last) << c.bytes;
        errors.push_back(std::string("modMasterQuery;ParseD3EngineServers;") + c.error);
        EXPECT_EQ(Logged(), errors) << c.bytes;
    }
}

TEST_F(MasterReply, HalfASlotIsRoundedToTheEvenNumber) {
    for (const std::int32_t whole : {0, 1, 2, 3, 4, 5}) {
        program.Servers.Reset();
        program.ServerCount = 0;
        ParseD3(Repeated(server1, static_cast<std::size_t>(whole)) + server2.substr(0, 3));
        EXPECT_EQ(program.Servers.HighestIndex(), whole % 2 == 0 ? whole : whole + 1);
        EXPECT_EQ(program.ServerCount, whole + 1);
    }
}

TEST_F(MasterReply, AHalfLifeEntryCutOffEndsInItsOwnRoutinesError) {
    ParseHL(server1 + "x" + server2.substr(0, 1));
    EXPECT_EQ(program.ServerCount, 2);
    EXPECT_EQ(program.Servers.HighestIndex(), 1);
    EXPECT_THAT(Logged(), ElementsAre("modMasterQuery;ParseHLCSServers;9"));
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(MasterReply, AListDoesNotGrowBeyondItsLimit) {
    program.ServerCount = MaxServers;
    program.PreviousServerCount = 1;
    ParseQ3(server1 + "\\");
    ParseD3(server1);
    ParseHL(server1 + "\\");
    EXPECT_THAT(Logged(),
                ElementsAre("modMasterQuery;ParseQ3EngineServers;7", "modMasterQuery;ParseD3EngineServers;7",
                            "modMasterQuery;ParseHLCSServers;7"));
    EXPECT_EQ(program.Servers.HighestIndex(), 0);
    EXPECT_EQ(program.ServerCount, MaxServers);
    EXPECT_EQ(program.PreviousServerCount, MaxServers); // nothing is listed a second time
}

TEST_F(MasterReply, NineThousandTimesTheSameAddressIsNineThousandServers) {
    ParseQ3(Repeated(server1 + "\\", 9000));
    EXPECT_EQ(program.ServerCount, 9000);
    EXPECT_EQ(program.Servers[9000].Address, "10.0.0.1");
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(MasterReply, ZeroAddressesAreListedAsTheyCome) {
    ParseQ3(std::string(14, '\0'));
    EXPECT_THAT(Slots(), ElementsAre("0.0.0.0:0", "0.0.0.0:0"));
}

} // namespace
} // namespace quarn
