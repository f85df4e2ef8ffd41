// Every command at every place where events run in the middle of another command, alone and in pairs.
// Whatever is combined, lists stay intact: rows show their own records, no list's servers get into another
// list's file, no reply gets into another server's record, no wait is endless, and a closed program ends once
// and without errors.

#include "support/clsAppLog.h"
#include "tests/fakes/Invariants.h"
#include "tests/views/Interruptions.h"
#include "views/ServerListFiles.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quarn {
namespace {

using ::testing::IsEmpty;

class ReentrancyTest : public ::testing::Test {
  protected:
    // Runs `meanwhile` at the place and then all events. A scan whose timer was disabled by a second scan
    // waits for "stop".
    static void RunToTheEnd(BusyBrowser& b, const Place& place, const std::function<void()>& meanwhile) {
        ASSERT_TRUE(b.Start());
        b.fake.events.eventLimit = 20'000;
        for (const std::int32_t later : {20'000, 40'000, 60'000, 80'000, 100'000})
            b.In(later, [&b] { b.Stop(); });
        place.run(b, meanwhile);
        b.fake.events.RunFor(120'000);
    }

    // A parser may log an error about a datagram's content.
    static std::vector<std::string> ErrorsOfTheForm(BusyBrowser& b) {
        std::vector<std::string> errors = b.Errors();
        std::erase_if(errors, [](const std::string& error) { return error.rfind("frmMain;", 0) != 0; });
        return errors;
    }

    static Rows RowsAfter(bool recordsReplaced) { return recordsReplaced ? Rows::Stale : Rows::OfTheList; }

    static std::set<std::string> BlocksOf(BusyBrowser& b, const std::string& list) {
        std::set<std::string> blocks;
        const std::string path = HeadlessBrowser::PathOf(list);
        if (!b.fake.files.Has(path))
            return blocks;
        ProgramState read;
        read.AppPath = "C:\\Quarn\\";
        CommandGate gate(b.fake.events);
        ServerListFiles files(read, b.fake.files, gate);
        files.LoadServerList(list);
        for (std::int32_t i = 1; i <= read.Servers.HighestIndex(); ++i)
            blocks.insert(read.Servers[i].Address.substr(0, read.Servers[i].Address.rfind('.')));
        return blocks;
    }

    static void ExpectOnly(const std::set<std::string>& blocks, std::initializer_list<int> allowed,
                           const std::string& list) {
        std::set<std::string> names;
        for (const int block : allowed)
            names.insert("127.0." + std::to_string(block));
        EXPECT_TRUE(std::includes(names.begin(), names.end(), blocks.begin(), blocks.end()))
            << "servers of another list are in " << list;
    }

    static void ExpectWholeLists(BusyBrowser& b) {
        ExpectOnly(BlocksOf(b, "q3"), {Q3Block, MasterBlock, TypedBlock}, "q3");
        ExpectOnly(BlocksOf(b, "d3"), {D3Block, TypedBlock}, "d3");
        ExpectOnly(BlocksOf(b, "hl"), {HLBlock, TypedBlock}, "hl");
        ExpectOnly(BlocksOf(b, "fav2"), {Favorites2Block, TypedBlock}, "fav2");
        ExpectOnly(BlocksOf(b, "games"), {TypedBlock}, "games");
        EXPECT_THAT(ViolationsOfListFiles(b.fake.files), IsEmpty());
        for (const std::string& path : b.fake.files.Paths())
            EXPECT_FALSE(path.ends_with(".bak")) << path;
    }

    static void ExpectRepliesWhereTheyBelong(BusyBrowser& b) {
        for (std::int32_t i = 1; i <= b.program.Servers.HighestIndex(); ++i) {
            const ServerRecord& server = b.program.Servers[i];
            if (server.Name.rfind("Live ", 0) == 0) {
                EXPECT_EQ(server.Name, "Live " + server.Address + ":" + std::to_string(server.Port));
            }
        }
    }

    static void ExpectAtRest(BusyBrowser& b, Rows rows) {
        EXPECT_THAT(ViolationsOfRows(b, rows), IsEmpty());
        EXPECT_THAT(ViolationsAtRest(b, rows), IsEmpty());
        EXPECT_GE(b.program.ServerCount, b.program.Servers.HighestIndex());
        EXPECT_EQ(b.sckServer.CurrentState(), UdpSocket::State::Closed);
        EXPECT_NE(b.Message(), "Retrieving server stats, please wait.");
        // No waiting command was forgotten: a command given now runs at once.
        const std::string shown = b.program.CurrentGame == "fav1" ? "fav2" : "fav1";
        b.fake.events.whenYielding = nullptr;
        b.ClickNode(shown);
        EXPECT_EQ(b.program.CurrentGame, shown);
    }
};

TEST_F(ReentrancyTest, ListsStayIntactWhateverCommandRunsInBetween) {
    for (const Place& place : Places()) {
        for (const Command& command : Commands()) {
            SCOPED_TRACE(std::string(command.name) + " " + place.name);
            BusyBrowser b;
            RunToTheEnd(b, place, [&] { command.run(b); });
            ExpectRepliesWhereTheyBelong(b);
            ExpectAtRest(b, RowsAfter(place.replacesRecords || command.replacesRecords));
            ExpectWholeLists(b);
            EXPECT_THAT(ErrorsOfTheForm(b), IsEmpty());
            if (HasFailure())
                return;
        }
    }
}

TEST_F(ReentrancyTest, ListsStayIntactWhateverTwoCommandsRunInBetween) {
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        const Place& place = Places()[random() % Places().size()];
        const Command& first = Commands()[random() % Commands().size()];
        const Command& second = Commands()[random() % Commands().size()];
        const auto delay = static_cast<std::int32_t>(random() % 3 * 12);
        SCOPED_TRACE(std::string(first.name) + ", in " + std::to_string(delay) + " ms " + second.name + " " +
                     place.name);
        BusyBrowser b;
        RunToTheEnd(b, place, [&] {
            b.In(delay, [&] { second.run(b); });
            first.run(b);
        });
        ExpectRepliesWhereTheyBelong(b);
        ExpectAtRest(b, RowsAfter(place.replacesRecords || first.replacesRecords || second.replacesRecords));
        ExpectWholeLists(b);
        if (HasFailure())
            return;
    }
}

TEST_F(ReentrancyTest, EndsOnceAndWithoutErrorsWhereverTheWindowIsClosed) {
    struct Way {
        const char* name;
        void (frmMain::*close)();
    };
    for (const Way& way :
         {Way{"closed", &frmMain::Unload}, Way{"ended by the system", &frmMain::EndSession}}) {
        for (const Place& place : Places()) {
            for (const Command& command : Commands()) {
                SCOPED_TRACE(std::string(way.name) + " after " + command.name + " " + place.name);
                BusyBrowser b;
                std::int32_t writes = -1;
                RunToTheEnd(b, place, [&] {
                    b.In(0, [&] { (b.Form().*way.close)(); });
                    b.In(1, [&] {
                        (b.Form().*way.close)();
                        writes = b.fake.files.TotalWrites();
                    });
                    command.run(b);
                });
                EXPECT_EQ(b.window.destroyCalls, 1);
                EXPECT_THAT(b.LogFile(), ::testing::ElementsAre("frmMain;Form_Unload;0"));
                ExpectRepliesWhereTheyBelong(b);
                ExpectWholeLists(b);
                if (way.close == &frmMain::Unload && writes >= 0) {
                    EXPECT_EQ(b.fake.files.TotalWrites(), writes);
                }
                if (HasFailure())
                    return;
            }
        }
    }
}

TEST_F(ReentrancyTest, RunsWaitingCommandsOnceAndInOrder) {
    for (const std::int32_t yield :
         {1, 5, 6, 9}) { // the first while q3 is saved, the last while d3 is loaded
        SCOPED_TRACE(yield);
        BusyBrowser b;
        ASSERT_TRUE(b.Start());
        AtYield(b, yield, [&] {
            b.Form().servers.AddServer("127.0.17.1", "1"); // to d3, which is shown first
            b.ClickNode("hl");
            b.Form().servers.AddServer("127.0.17.2", "2");
            b.RefreshAll();
            b.ClickNode("fav2");
            b.Form().servers.AddServer("127.0.17.3", "3");
            EXPECT_EQ(b.program.Servers.HighestIndex(), 5);
            EXPECT_TRUE(b.sckServer.sent.empty());
        });
        b.ClickNode("d3");
        EXPECT_EQ(b.program.CurrentGame, "fav2");
        EXPECT_EQ(b.Cell(3, AddressColumn), "127.0.17.3:3");
        EXPECT_EQ(b.RowCount(), 3);
        EXPECT_NE(b.fake.files.Get(HeadlessBrowser::PathOf("d3")).find("127.0.17.1;1;"), std::string::npos);
        const std::string hl = b.fake.files.Get(HeadlessBrowser::PathOf("hl"));
        EXPECT_NE(hl.find("127.0.17.2;2;"), std::string::npos);
        EXPECT_EQ(hl.substr(0, 4), " 4\r\n");
        // The scan started, and ended after its first server, because the list was replaced.
        EXPECT_EQ(b.network.Asked(), HeadlessBrowser::Block(HLBlock, 1));
        EXPECT_NE(hl.find("Live 127.0.13.1:27960"), std::string::npos);
        EXPECT_EQ(b.Message(), "Scanning aborted by user.");
    }
}

// While a prompt or dialog is open, the window accepts no commands, but the network, the timer, the tray and
// the system are active.
TEST_F(ReentrancyTest, ListsStayIntactWhileAPromptOrDialogIsOpen) {
    const std::vector<Command> meanwhile = {
        {"a master's reply",
         [](BusyBrowser& b) {
             b.sckMaster.ReplyIn(
                 0, MasterDatagram(gamenet::Family::Quake3, HeadlessBrowser::Block(MasterBlock, 2)));
             b.fake.events.DoEvents();
         }},
        {"a tick", [](BusyBrowser& b) { b.fake.events.RunFor(2500); }},
        {"the end of a scan", [](BusyBrowser& b) { b.fake.events.RunFor(60); }},
        {"the window comes out of the tray", [](BusyBrowser& b) { b.Form().mnuSysOpen_Click(); }},
        {"the tray's quit", [](BusyBrowser& b) { b.Form().mnuSysQuit_Click(); }},
        {"the end of the session", [](BusyBrowser& b) { b.Form().EndSession(); }},
        {"closing", [](BusyBrowser& b) { b.Form().Unload(); }},
        {"closing and the end of the session",
         [](BusyBrowser& b) {
             b.Form().Unload();
             b.Form().EndSession();
         }},
    };
    for (const bool inAScan : {false, true}) {
        for (const Place& place : ModalPlaces()) {
            for (const Command& event : meanwhile) {
                SCOPED_TRACE(std::string(event.name) + " " + place.name + (inAScan ? ", in a scan" : ""));
                BusyBrowser b;
                ASSERT_TRUE(b.Start());
                b.fake.events.eventLimit = 20'000;
                bool happened = false;
                const auto open = [&] {
                    place.run(b, [&] {
                        happened = true;
                        event.run(b);
                    });
                };
                if (inAScan) {
                    b.In(30, open);
                    b.RefreshAll();
                } else {
                    open();
                }
                b.fake.events.RunFor(5000);
                EXPECT_TRUE(happened);
                ExpectRepliesWhereTheyBelong(b);
                ExpectWholeLists(b);
                if (b.Ended()) {
                    EXPECT_EQ(b.window.destroyCalls, 1);
                    EXPECT_EQ(b.LogFile().back(), "frmMain;Form_Unload;0");
                } else {
                    ExpectAtRest(b, Rows::OfTheList);
                }
                if (HasFailure())
                    return;
            }
        }
    }
}

// The last question is whether to send the errors to the maker.
TEST_F(ReentrancyTest, EndsOnceWhateverHappensDuringItsLastQuestion) {
    for (const bool inAScan : {false, true}) {
        for (const Command& command : Commands()) {
            SCOPED_TRACE(std::string(command.name) + (inAScan ? ", in a scan" : ""));
            BusyBrowser b;
            ASSERT_TRUE(b.Start());
            b.program.AppLog->Log("test", "test", 5, "an error");
            b.fake.prompts.yesNoAnswers.assign(50, false);
            b.fake.prompts.whileOpen = [&, first = true]() mutable {
                if (!std::exchange(first, false))
                    return;
                command.run(b);
                b.fake.events.RunFor(100);
                b.Form().EndSession();
                b.Form().Unload();
            };
            if (inAScan) {
                b.In(30, [&] { b.Form().Unload(); });
                b.RefreshAll();
            } else {
                b.Form().Unload();
            }
            EXPECT_EQ(b.window.destroyCalls, 1);
            EXPECT_THAT(b.LogFile(), ::testing::ElementsAre("frmMain;Form_Unload;0"));
            ExpectRepliesWhereTheyBelong(b);
            ExpectWholeLists(b);
            if (HasFailure())
                return;
        }
    }
}

} // namespace
} // namespace quarn
