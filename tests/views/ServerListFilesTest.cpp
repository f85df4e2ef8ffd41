#include "views/ServerListFiles.h"
#include "tests/views/ListFileTest.h"

#include "core/modStringHelper.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ServerListFilesTest : public ListFileTest {};

TEST_F(ServerListFilesTest, NamesTheFileAfterTheList) {
    EXPECT_EQ(files.PathOf("q3"), "C:\\Quarn\\servers-q3.dat");
    EXPECT_EQ(files.PathOf("fav2"), "C:\\Quarn\\servers-fav2.dat");
}

TEST_F(ServerListFilesTest, WritesEveryFieldInItsPlace) {
    EXPECT_EQ(SavedAlone(FullRecord()), " 1\r\n192.0.2.7;27960;DE;My server;50;3;16;baseq3;q3dm17;0;;"
                                        "abc\\sv_hostname\\x;3155673600\r\n");
}

TEST_F(ServerListFilesTest, WritesWhatARecordMayHold) {
    struct Case {
        const char* name;
        void (*change)(ServerRecord&);
        std::string line;
    };
    const Case cases[] = {
        {"an empty record", [](ServerRecord& s) { s = {}; }, ";0;;;0;0;0;;;0;;;"},
        {"never visited", [](ServerRecord& s) { s.LastVisit = {}; },
         "192.0.2.7;27960;DE;My server;50;3;16;baseq3;q3dm17;0;;abc\\sv_hostname\\x;"},
        {"visited at the start of 1990",
         [](ServerRecord& s) {
             s.LastVisit = DateTime::From({1990, 1, 1, 0, 0, 0});
         },
         "192.0.2.7;27960;DE;My server;50;3;16;baseq3;q3dm17;0;;abc\\sv_hostname\\x;2840140800"},
        {"negative and largest numbers",
         [](ServerRecord& s) {
             s.Port = -1;
             s.Ping = 2147483647;
             s.Players = -2147483647 - 1;
             s.Locked = 77;
         },
         "192.0.2.7;-1;DE;My "
         "server;2147483647;-2147483648;16;baseq3;q3dm17;77;;abc\\sv_hostname\\x;3155673600"},
        {"separators in names", [](ServerRecord& s) { s.Name = "a;b"; },
         "192.0.2.7;27960;DE;a;b;50;3;16;baseq3;q3dm17;0;;abc\\sv_hostname\\x;3155673600"},
        {"line ends in texts",
         [](ServerRecord& s) {
             s.Name = "a\r\nb\n";
             s.Map = "\rm";
             s.ModName = "x\n";
             s.Password = "p\nq";
             s.Variables = "\\k\\v\r\nw";
         },
         "192.0.2.7;27960;DE;a  b ;50;3;16;x ; m;0;;p q\\k\\v  w;3155673600"},
        {"control characters and high codes", [](ServerRecord& s) { s.Name = "\0\x1A\xFF\xE4"s; },
         "192.0.2.7;27960;DE;\0\x1A\xFF\xE4;50;3;16;baseq3;q3dm17;0;;abc\\sv_hostname\\x;3155673600"s},
    };
    for (const Case& c : cases) {
        ServerRecord server = FullRecord();
        c.change(server);
        EXPECT_EQ(SavedAlone(server), " 1\r\n" + c.line + "\r\n") << c.name;
    }
}

TEST_F(ServerListFilesTest, WritesTheHighestIndexWhateverTheCountSays) {
    for (const std::int32_t count : {0, 1, 3, -1, 2147483647}) {
        program.ServerCount = count;
        EXPECT_EQ(Saved(), " 2\r\n192.0.2.1;0;;;0;0;0;;;0;;;\r\n192.0.2.2;0;;;0;0;0;;;0;;;\r\n") << count;
    }
    program.Servers.Reset();
    EXPECT_EQ(Saved(), " 0\r\n");
}

TEST_F(ServerListFilesTest, ReadsEveryField) {
    const ServerRecord& server =
        LoadOne("192.0.2.7;27960;DE;My server;50;3;16;baseq3;q3dm17;1;secret;\\g_gametype\\4;3155673600");
    EXPECT_EQ(server.Address, "192.0.2.7");
    EXPECT_EQ(server.Port, 27960);
    EXPECT_EQ(server.Country, "DE");
    EXPECT_EQ(server.Name, "My server");
    EXPECT_EQ(server.Ping, 50);
    EXPECT_EQ(server.Players, 3);
    EXPECT_EQ(server.MaxPlayers, 16);
    EXPECT_EQ(server.ModName, "baseq3");
    EXPECT_EQ(server.Map, "q3dm17");
    EXPECT_EQ(server.Locked, 1);
    EXPECT_EQ(server.Password, "secret");
    EXPECT_EQ(server.Variables, "\\g_gametype\\4");
    EXPECT_EQ(server.LastVisit, DateTime::From({2000, 1, 1, 0, 0, 0}));
    EXPECT_EQ(server.PlayerList.HighestIndex(), 0);
    EXPECT_EQ(program.ServerCount, 1);
}

TEST_F(ServerListFilesTest, ReadsAPasswordBackAsTheFrontOfTheVariables) {
    SavedAlone(FullRecord());
    files.LoadServerList("q3");
    EXPECT_EQ(program.Servers[1].Password, "");
    EXPECT_EQ(program.Servers[1].Variables, "abc\\sv_hostname\\x");
    EXPECT_EQ(program.Servers[1].LastVisit, FullRecord().LastVisit);
}

TEST_F(ServerListFilesTest, ReplacesTheListAndIgnoresLinesBeyondTheCount) {
    Load(" 1\r\n" + Entry + "\r\nnonsense\r\n");
    EXPECT_THAT(Addresses(), ElementsAre("192.0.2.7"));
    EXPECT_EQ(program.ServerCount, 1);
    Load(" 0\r\n");
    EXPECT_THAT(Addresses(), IsEmpty());
    EXPECT_EQ(program.ServerCount, 0);
}

TEST_F(ServerListFilesTest, ReadsTheCountAsAnyWholeNumber) {
    const std::string lines = Entry + "\r\n" + Entry + "\r\n";
    for (const char* count :
         {" 2", "2", "2 ", "  2  ", "+2", "02", "2.4", "2.5", "1.5", "2e0", "0.2e1", "\t2"}) {
        Load(count + "\r\n"s + lines);
        EXPECT_EQ(program.Servers.HighestIndex(), 2) << count;
        EXPECT_EQ(program.ServerCount, 2) << count;
    }
}

TEST_F(ServerListFilesTest, ReadsEveryKindOfLineEnd) {
    for (const std::string& content :
         {"2\r\n" + Entry + "\r\n" + Entry + "\r\n", "2\n" + Entry + "\n" + Entry + "\n",
          "2\r" + Entry + "\r" + Entry + "\r", "2\r\n" + Entry + "\n" + Entry,
          "2\n" + Entry + "\r" + Entry}) {
        Load(content);
        EXPECT_EQ(program.Servers.HighestIndex(), 2) << content;
        if (program.Servers.HighestIndex() == 2) {
            EXPECT_EQ(program.Servers[2].Variables, "\\g_gametype\\4") << content;
        }
    }
}

TEST_F(ServerListFilesTest, ControlCharactersAreOrdinaryText) {
    const ServerRecord& server = LoadOne("192.0.2.7;27960;--;a\0b\x1A\t\xFF;50;3;16;;;0;;"s);
    EXPECT_EQ(server.Name, "a\0b\x1A\t\xFF"s);
    EXPECT_EQ(server.Variables, "");
}

TEST_F(ServerListFilesTest, ReadsNumbersWithBlanksFractionsAndExponents) {
    const ServerRecord& server = LoadOne("192.0.2.7; 27960 ;--;n;49.5;+3;1.6e1;m;q;-0;;v");
    EXPECT_EQ(server.Port, 27960);
    EXPECT_EQ(server.Ping, 50);
    EXPECT_EQ(server.Players, 3);
    EXPECT_EQ(server.MaxPlayers, 16);
    EXPECT_EQ(server.Locked, 0);
}

TEST_F(ServerListFilesTest, ReadsAVisitOnlyIfTheLineHasThirteenFields) {
    struct Case {
        std::string tail; // after the password field
        std::int64_t secondsSince1990;
    };
    constexpr std::int64_t Never = -1;
    for (const Case& c :
         {Case{"v;2840140800", 0}, Case{"v;3155673600", 315532800}, Case{"v; 2840140801 ", 1},
          Case{"v;2.8401408e9", 0}, Case{"v;2840140800.5", 0}, Case{"v;2840140801.5", 2},
          Case{"v;4987624447", 2147483647}, Case{"v;692657152", -2147483648}, Case{"v;", Never},
          Case{"v", Never}, Case{"v;;", Never}, Case{"v;3155673600;", Never}, Case{"a;b;3155673600", Never},
          Case{"v;x;y;z", Never}}) {
        const ServerRecord& server = LoadOne("192.0.2.7;27960;--;n;1;0;16;m;q;0;;" + c.tail);
        if (c.secondsSince1990 == Never)
            EXPECT_TRUE(server.LastVisit.IsZero()) << c.tail;
        else
            EXPECT_EQ(server.LastVisit.seconds - DateTime::From({1990, 1, 1, 0, 0, 0}).seconds,
                      c.secondsSince1990)
                << c.tail;
    }
}

TEST_F(ServerListFilesTest, ASeparatorInANameShiftsTheFollowingFields) {
    const ServerRecord& server = LoadOne("192.0.2.7;27960;--;a;1;2;3;4;q;5;m;0;;\\k\\v;3155673600");
    EXPECT_EQ(server.Name, "a");
    EXPECT_EQ(server.Ping, 1);
    EXPECT_EQ(server.ModName, "4");
    EXPECT_EQ(server.Locked, 5);
    EXPECT_EQ(server.Password, "m");
    EXPECT_EQ(server.Variables, "0");
    EXPECT_TRUE(server.LastVisit.IsZero());
}

TEST_F(ServerListFilesTest, GivesAnEmptyListForADamagedFile) {
    struct Case {
        const char* name;
        std::string content;
        std::int32_t count; // after the load
    };
    constexpr std::int32_t Before = 2;
    const std::string line = Entry + "\r\n";
    const auto field = [](std::size_t index, const std::string& value) {
        std::string changed;
        std::size_t at = 0;
        for (const std::string_view text : Split(Entry, ';')) {
            changed += at == 0 ? "" : ";";
            changed += at++ == index ? value : std::string(text);
        }
        return "1\r\n" + changed + "\r\n";
    };
    const Case cases[] = {
        {"nothing", "", Before},
        {"only a line end", "\r\n", Before},
        {"no count", line, Before},
        {"an empty count", "\r\n" + line, Before},
        {"a count that is none", "two\r\n" + line + line, Before},
        {"two counts", "1 2\r\n" + line, Before},
        {"a count in hexadecimal", "&H1\r\n" + line, Before},
        {"a count beyond 32 bits", "2147483648\r\n" + line, Before},
        {"a count far beyond", "1e400\r\n" + line, Before},
        {"NULs in front", "\0\0\0"s + "1\r\n" + line, Before},
        {"a mark of another encoding",
         "\xEF\xBB\xBF"
         "1\r\n" +
             line,
         Before},
        {"a negative count", "-1\r\n" + line, -1},
        {"the lowest count", "-2147483648\r\n" + line, -2147483647 - 1},
        {"the highest count", "2147483647\r\n" + line, 2147483647},
        {"more than a list may hold", "1000001\r\n" + line, 1000001},
        {"as many as it may hold", "1000000\r\n" + line, 1000000},
        {"one more than there are", "2\r\n" + line, 2},
        {"a count alone", "1", 1},
        {"a count with a line end alone", "1\r\n", 1},
        {"an empty entry", "1\r\n\r\n", 1},
        {"an empty entry in between", "3\r\n" + line + "\r\n" + line, 3},
        {"the last line cut", "2\r\n" + line + Entry.substr(0, 40), 2},
        {"eleven fields", "1\r\n192.0.2.7;27960;--;n;1;0;16;m;q;0;\r\n", 1},
        {"eleven separators too few", "1\r\n192.0.2.7\r\n", 1},
        {"only separators", "1\r\n;;;;;;;;;;;;\r\n", 1},
        {"a port that is none", field(1, "x"), 1},
        {"an empty port", field(1, ""), 1},
        {"a port beyond 32 bits", field(1, "2147483648"), 1},
        {"a ping that is none", field(4, "fast"), 1},
        {"a ping with a comma", field(4, "1,5"), 1},
        {"players that are none", field(5, "3 / 16"), 1},
        {"a maximum that is none", field(6, "--"), 1},
        {"a lock that is none", field(9, "yes"), 1},
        {"a number cut by a NUL", field(4, "5\0"s), 1},
        {"a shifted number", field(3, "a;b"), 1},
        {"a visit that is none", field(12, "yesterday"), 1},
        {"a visit of blanks", field(12, " "), 1},
        {"a visit too late", field(12, "4987624448"), 1},
        {"a visit too early", field(12, "692657151"), 1},
        {"a visit far beyond", field(12, "1e300"), 1},
        {"the second entry damaged", "2\r\n" + line + "x\r\n", 2},
    };
    for (const Case& c : cases) {
        program.Servers.Reset(2);
        program.ServerCount = Before;
        Load(c.content);
        EXPECT_THAT(Addresses(), IsEmpty()) << c.name;
        EXPECT_EQ(program.ServerCount, c.count) << c.name;
    }
    EXPECT_EQ(program.AppLog->HistoryLog(), "");
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(ServerListFilesTest, ReadsNoListThatIsLongerThanAListMayBe) {
    constexpr int Count = 1'000'001;
    std::string content = std::to_string(Count) + "\r\n";
    for (int i = 0; i < Count; ++i)
        content += "a;1;;;0;0;0;;;0;;\r\n";
    Load(content);
    EXPECT_THAT(Addresses(), IsEmpty());
}

TEST_F(ServerListFilesTest, GivesAnEmptyListForAFileThatCannotBeRead) {
    struct Case {
        const char* name;
        std::function<void(MemoryFiles&)> arrange;
    };
    const Case cases[] = {
        {"missing", [](MemoryFiles&) {}},
        {"a folder", [](MemoryFiles& f) { f.PutFolder(ListPath); }},
        {"locked", [](MemoryFiles& f) { f.FailReads(ListPath, ErrorNumber::PermissionDenied); }},
        {"broken disk", [](MemoryFiles& f) { f.FailReads(ListPath, ErrorNumber::DeviceIOError); }},
    };
    for (const Case& c : cases) {
        program.Servers.Reset(2);
        program.ServerCount = 2;
        c.arrange(fake.files);
        files.LoadServerList("q3");
        EXPECT_THAT(Addresses(), IsEmpty()) << c.name;
        EXPECT_EQ(program.ServerCount, 2) << c.name;
    }
    EXPECT_EQ(fake.files.TotalWrites(), 0);
    EXPECT_EQ(program.AppLog->HistoryLog(), "");
}

TEST_F(ServerListFilesTest, LetsEventsRunOnceForEachEntry) {
    Load("3\r\n" + Entry + "\r\n" + Entry + "\r\n" + Entry + "\r\n");
    EXPECT_EQ(fake.events.doEventsCalls, 3);
    Saved();
    EXPECT_EQ(fake.events.doEventsCalls, 6);
    files.LoadServerList("absent");
    EXPECT_EQ(fake.events.doEventsCalls, 6);
}

TEST_F(ServerListFilesTest, ShowsEventsTheOldListUntilTheNewOneIsWhole) {
    std::vector<std::string> seen;
    fake.events.Post([&] { seen = Addresses(); });
    Load("2\r\n" + Entry + "\r\n" + Entry + "\r\n");
    EXPECT_THAT(seen, ElementsAre("192.0.2.1", "192.0.2.2"));
    EXPECT_THAT(Addresses(), ElementsAre("192.0.2.7", "192.0.2.7"));
}

TEST_F(ServerListFilesTest, HandlesVeryLargeLists) {
    constexpr std::int32_t Count = 200'000;
    program.Servers.Reset(Count);
    for (std::int32_t i = 1; i <= Count; ++i) {
        program.Servers[i] = FullRecord();
        program.Servers[i].Port = i;
    }
    files.SaveServerList("q3");
    program.Servers.Reset();
    files.LoadServerList("q3");
    ASSERT_EQ(program.Servers.HighestIndex(), Count);
    EXPECT_EQ(program.Servers[Count].Port, Count);
    EXPECT_EQ(program.Servers[1].Map, "q3dm17");
    EXPECT_EQ(program.Servers[77'777].LastVisit, FullRecord().LastVisit);
}

TEST_F(ServerListFilesTest, ReadsBackWhatItWroteUpToTheAsymmetry) {
    std::mt19937 random(1);
    const auto text = [&] {
        std::string bytes;
        for (auto length = random() % 12; length > 0; --length)
            bytes += static_cast<char>(random() % 256);
        std::erase_if(bytes, [](char c) { return c == ';' || c == '\r' || c == '\n'; });
        return bytes;
    };
    const auto number = [&] { return static_cast<std::int32_t>(random()); };
    for (int round = 0; round < 2000; ++round) {
        ServerRecord s{text(), number(), number(), text(), number(), number(), text(),
                       text(), text(),   number(), {},     text(),   text(),   {}};
        s.LastVisit = DateTime::From({1990, 1, 1, 0, 0, 0});
        s.LastVisit.seconds += static_cast<std::int64_t>(random() / 2);
        SavedAlone(s);
        files.LoadServerList("q3");
        ASSERT_EQ(program.Servers.HighestIndex(), 1);
        const ServerRecord& r = program.Servers[1];
        EXPECT_EQ(std::tie(r.Address, r.Port, r.Country, r.Name, r.Ping, r.Players, r.MaxPlayers, r.ModName,
                           r.Map, r.Locked),
                  std::tie(s.Address, s.Port, s.Country, s.Name, s.Ping, s.Players, s.MaxPlayers, s.ModName,
                           s.Map, s.Locked));
        EXPECT_EQ(r.Password, "");
        EXPECT_EQ(r.Variables, s.Password + s.Variables);
        EXPECT_EQ(r.LastVisit, s.LastVisit);
    }
}

} // namespace
} // namespace quarn
