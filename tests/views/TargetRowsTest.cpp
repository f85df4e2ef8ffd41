// A command acts on the rows that the user saw when giving it, whatever happens before it runs.

#include "views/TargetRows.h"
#include "support/clsAppLog.h"
#include "tests/views/ScanTest.h"
#include "views/ScanEngine.h"
#include "views/ServerColumns.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TargetRowsTest : public ScanTest {
  protected:
    TargetRowsTest() {
        browser.Set("Games", "Path1", "C:\\Arena");
        browser.fake.files.Put("C:\\Arena\\arena.exe", "");
    }

    std::string FolderFile() { return browser.fake.files.Get(HeadlessBrowser::PathOf("fav1")); }
    std::vector<std::string> ShownAddresses() { return browser.Column(AddressColumn); }
};

TEST_F(TargetRowsTest, ADeletionThatWaitsForAScanTakesTheRowsSelectedWhenItWasGiven) {
    StartWith(5);
    During(1, [&] {
        browser.SelectRows({2, 3});
        browser.Form().servers.mnuServDelete_Click();
        browser.ClickRow(4);
    });
    browser.RefreshAll();
    EXPECT_THAT(ShownAddresses(), ElementsAre(Address(1), Address(4), Address(5)));
}

TEST_F(TargetRowsTest, ADeletionFindsItsRowsInAListThatWasSortedMeanwhile) {
    StartWith(5);
    During(1, [&] {
        browser.SelectRows({2, 3});
        browser.Form().servers.mnuServDelete_Click();
        browser.Form().servers.lvwServers_ColumnClick(2); // by address, descending
        browser.ClickRow(1);
    });
    browser.RefreshAll();
    EXPECT_THAT(ShownAddresses(), ElementsAre(Address(5), Address(4), Address(1)));
}

TEST_F(TargetRowsTest, ADeletionFindsItsRowsInAListThatWasListedAgainMeanwhile) {
    StartWith(5);
    During(1, [&] {
        browser.SelectRows({2, 3});
        browser.Form().servers.mnuServDelete_Click();
        browser.ClickNode("fltping");
        browser.ClickRow(4);
    });
    browser.RefreshAll();
    EXPECT_THAT(ShownAddresses(), ElementsAre(Address(1), Address(4), Address(5)));
}

TEST_F(TargetRowsTest, ADeletionDoesNothingInAnotherList) {
    StartWith(3);
    browser.PutList("d3", addresses);
    During(1, [&] {
        browser.SelectRows({2});
        browser.ClickNode("d3");
        browser.Form().servers.mnuServDelete_Click();
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.program.CurrentGame, "d3");
    EXPECT_THAT(ShownAddresses(), ElementsAre(Address(1), Address(2), Address(3)));
}

TEST_F(TargetRowsTest, AFavoriteThatWaitsForAScanIsTheServerSelectedWhenItWasGiven) {
    StartWith(5);
    During(1, [&] {
        browser.SelectRows({2});
        browser.Form().tree.mnuServAddToFavorites_Click(1);
        browser.ClickRow(4);
    });
    browser.RefreshAll();
    EXPECT_EQ(FolderFile().substr(0, 15), " 1\r\n127.0.1.2;2");
}

TEST_F(TargetRowsTest, ACommandThatWaitsForASortTakesTheServerSelectedWhenItWasGiven) {
    struct Case {
        const char* name;
        void (*give)(HeadlessBrowser& b);
        std::string (*server)(HeadlessBrowser& b);
    };
    const Case cases[] = {
        {"copy", [](HeadlessBrowser& b) { b.Form().servers.mnuServCopyAddress_Click(); },
         [](HeadlessBrowser& b) { return b.fake.shell.clipboard.value(); }},
        {"join", [](HeadlessBrowser& b) { b.Form().game.mnuServConnectPlay_Click(); },
         [](HeadlessBrowser& b) {
             const std::string& line = b.fake.shell.opened.at(0).parameters;
             return line.substr(line.rfind(' ') + 1);
         }},
        {"spectate", [](HeadlessBrowser& b) { b.Form().game.mnuServConnectSpec_Click(); },
         [](HeadlessBrowser& b) {
             const std::string& line = b.fake.shell.opened.at(0).parameters;
             const std::size_t start = line.find("+connect ") + 9;
             return line.substr(start, line.find(' ', start) - start);
         }},
        {"monitor", [](HeadlessBrowser& b) { b.Form().game.mnuServMonitor_Click(); },
         [](HeadlessBrowser& b) {
             return b.fake.peers.received.at(0).payload.substr(7,
                                                               b.fake.peers.received[0].payload.size() - 8);
         }},
        {"password", [](HeadlessBrowser& b) { b.Form().dialogs.mnuServSetPass_Click(); },
         [](HeadlessBrowser& b) {
             for (std::int32_t i = 1; i <= b.program.Servers.HighestIndex(); ++i)
                 if (b.program.Servers[i].Password == "secret")
                     return AddressText(b.program.Servers[i]);
             return std::string();
         }},
        {"refresh", [](HeadlessBrowser& b) { b.RefreshSelected(); },
         [](HeadlessBrowser& b) { return b.network.Asked().at(0); }},
        {"favorite", [](HeadlessBrowser& b) { b.Form().tree.mnuServAddToFavorites_Click(1); },
         [](HeadlessBrowser& b) {
             const std::string file = b.fake.files.Get(HeadlessBrowser::PathOf("fav1"));
             return file.substr(4, file.find(';') - 4) + ":27960";
         }},
    };
    for (const Case& c : cases) {
        HeadlessBrowser b;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(5);
        b.PutList("q3", servers);
        b.PutServers(servers);
        b.Set("Games", "Path1", "C:\\Arena");
        b.fake.files.Put("C:\\Arena\\arena.exe", "");
        b.fake.peers.versions["C:\\Quarn\\..\\Velmar\\Velmar.exe"] = {1, 2, 3};
        b.fake.peers.openWindows = {"Velmar 123"};
        b.dialogs.inSetPassword = [](frmSetPassword& form) {
            form.txtPass = "secret";
            form.cmdOK_Click();
        };
        ASSERT_TRUE(b.Start());
        b.fake.events.doEventsCalls = 0;
        b.fake.events.whenYielding = [&](std::int32_t call) {
            if (call != 2)
                return;
            b.SelectRows({2});
            c.give(b);
            b.SelectRows({4});
        };
        b.Form().servers.lvwServers_ColumnClick(6); // rows 2 and 4 change places
        EXPECT_EQ(c.server(b), servers[1]) << c.name;
        EXPECT_THAT(b.Errors(), IsEmpty()) << c.name;
    }
}

TEST_F(TargetRowsTest, RefreshAsksTheServersSelectedWhenItWasGiven) {
    StartWith(6);
    browser.SelectRows({1, 3, 5});
    During(1, [&] { browser.ClickRow(4); });
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(1, 3, 5));
}

TEST_F(TargetRowsTest, ACommandLeavesTheServerInHandToItsQuery) {
    struct Case {
        const char* name;
        void (*give)(HeadlessBrowser& b);
    };
    const Case cases[] = {
        {"copy", [](HeadlessBrowser& b) { b.Form().servers.mnuServCopyAddress_Click(); }},
        {"join", [](HeadlessBrowser& b) { b.Form().game.mnuServConnectPlay_Click(); }},
        {"double click",
         [](HeadlessBrowser& b) { b.Form().lvwServers_DblClick(b.Controls().lvwServers.Row(4).identity); }},
        {"monitor", [](HeadlessBrowser& b) { b.Form().game.mnuServMonitor_Click(); }},
        {"password", [](HeadlessBrowser& b) { b.Form().dialogs.mnuServSetPass_Click(); }},
        {"favorite", [](HeadlessBrowser& b) { b.Form().tree.mnuServAddToFavorites_Click(1); }},
        {"delete", [](HeadlessBrowser& b) { b.Form().servers.mnuServDelete_Click(); }},
    };
    for (const Case& c : cases) {
        HeadlessBrowser b;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(5);
        b.PutList("q3", servers);
        b.PutServers(servers);
        b.Set("Games", "Path1", "C:\\Arena");
        b.fake.files.Put("C:\\Arena\\arena.exe", "");
        b.dialogs.inSetPassword = [](frmSetPassword& form) { form.cmdOK_Click(); };
        ASSERT_TRUE(b.Start());
        std::int32_t current = -1;
        b.network.whenAsked = [&](const std::string& address) {
            if (address == servers[1])
                b.In(Latency / 2, [&] {
                    b.SelectRows({4});
                    c.give(b);
                    current = b.program.CurrentServer;
                });
        };
        b.RefreshAll();
        EXPECT_EQ(current, 2) << c.name;
        EXPECT_EQ(b.Cell(2, NameColumn), "Live 2") << c.name;
        EXPECT_THAT(b.Errors(), IsEmpty()) << c.name;
    }
}

TEST_F(TargetRowsTest, AVisitInAScanIsShownInTheRowOfItsServer) {
    StartWith(4);
    browser.fake.clock.SetNow({2001, 2, 3, 4, 5, 6});
    During(2, [&] {
        browser.SelectRows({4});
        browser.Form().game.mnuServConnectPlay_Click();
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(2, LastVisitColumn), browser.Cell(1, LastVisitColumn)); // the date of no visit
    EXPECT_NE(browser.Cell(4, LastVisitColumn), browser.Cell(1, LastVisitColumn));
    EXPECT_EQ(browser.Cell(4, NameColumn), "Live 4");
}

// The filter may take the row away while the command waits: its server is still the one that was meant.
TEST_F(TargetRowsTest, ACommandFindsTheServerOfARowThatIsFilteredOut) {
    StartWith(4);
    browser.fake.events.doEventsCalls = 0;
    browser.fake.events.whenYielding = [&](std::int32_t call) {
        if (call != 1)
            return;
        browser.SelectRows({2});
        browser.program.FilterPing = 20;
        browser.program.Servers[2].Ping = 500;
        browser.ClickNode("fltping");
        browser.Form().servers.mnuServCopyAddress_Click();
    };
    browser.Form().servers.lvwServers_ColumnClick(4);
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_EQ(browser.fake.shell.clipboard, Address(2));
}

TEST_F(TargetRowsTest, ASingleRowIsRecognisedWhenItIsListedAgain) {
    StartWith(3);
    const ListView& list = browser.Controls().lvwServers;
    const TargetRows target(list, browser.program, 2);
    const auto included = [&] {
        std::vector<std::string> found;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            if (target.Includes(list.Row(row), browser.program))
                found.push_back(list.Cell(row, AddressColumn + 1).text);
        return found;
    };
    EXPECT_THAT(included(), ElementsAre(Address(2)));
    const std::uint32_t identity = list.Row(2).identity;
    browser.ClickNode("fltping");
    EXPECT_NE(list.Row(2).identity, identity);
    EXPECT_THAT(included(), ElementsAre(Address(2)));
    EXPECT_EQ(target.RowNumber(list, browser.program), 2);
    browser.program.FilterPing = 20;
    browser.program.Servers[2].Ping = 500;
    browser.ClickNode("fltping");
    EXPECT_THAT(included(), IsEmpty());
    EXPECT_EQ(target.RowNumber(list, browser.program), 0);
}

TEST_F(TargetRowsTest, TheMonitorGetsTheServerItWasAskedForThoughTheShellLetsEventsRun) {
    StartWith(3);
    browser.fake.peers.versions["C:\\Quarn\\..\\Velmar\\Velmar.exe"] = {1, 2, 3};
    browser.fake.peers.openWindows = {"Velmar 123"};
    browser.fake.shell.whileOpening = [&] { browser.ClickRow(3); };
    browser.ClickRow(2);
    browser.Form().game.mnuServMonitor_Click();
    ASSERT_EQ(browser.fake.peers.received.size(), 1U);
    EXPECT_EQ(browser.fake.peers.received[0].payload.substr(0, 22), "ConGam:127.0.1.2:27960");
}

} // namespace
} // namespace quarn
