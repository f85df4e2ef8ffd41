// Commands whose dialogs are open while a scan continues behind them: each acts on the servers that it was
// given for.

#include "tests/views/DialogScanTest.h"
#include "views/ScanEngine.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Aborted = "Scanning aborted by user.";

class ScanEngineDialogCommandsTest : public DialogScanTest {};

// The scan selects row after row, and a filter removes the row that the password is for.
TEST_F(ScanEngineDialogCommandsTest, APasswordIsStoredForTheServerThatTheDialogWasOpenedFor) {
    StartWith(6);
    browser.ClickNode("png50");
    browser.network.servers.at(Address(4)).latency = 60;
    browser.SelectRows({4});
    const GivenRows rows = TargetRows(browser.Controls().lvwServers, browser.program);
    KeepOpenFor(1000, [&] { EXPECT_EQ(browser.RowCount(), 5); });
    browser.dialogs.inSetPassword = [](frmSetPassword& form) {
        form.txtPass = "secret";
        form.cmdOK_Click();
    };
    RefreshAllAnd(10, [&] { browser.Form().dialogs.mnuServSetPass_Click(rows); });
    for (std::int32_t n = 1; n <= 6; ++n)
        EXPECT_EQ(Server(n).Password, n == 4 ? "secret" : "") << n;
}

TEST_F(ScanEngineDialogCommandsTest, TheGameIsStartedForTheServerThatTheQuestionWasFor) {
    browser.Set("Games", "Path1", "C:\\Arena");
    browser.fake.files.Put("C:\\Arena\\arena.exe", "");
    StartWith(6);
    Server(4).ModName = "osp +quit";
    browser.SelectRows({4});
    const GivenRows rows = TargetRows(browser.Controls().lvwServers, browser.program);
    browser.fake.prompts.yesNoAnswers = {true};
    KeepOpenFor(1000);
    RefreshAllAnd(10, [&] { browser.Form().game.mnuServConnectPlay_Click(rows); });
    ASSERT_THAT(browser.fake.shell.opened, SizeIs(1));
    EXPECT_NE(browser.fake.shell.opened[0].parameters.find("osp +quit"), std::string::npos);
    EXPECT_NE(browser.fake.shell.opened[0].parameters.find("+connect " + Address(4)), std::string::npos);
    for (std::int32_t n = 1; n <= 6; ++n)
        EXPECT_EQ(Server(n).LastVisit.IsZero(), n != 4) << n;
    EXPECT_EQ(Server(4).ModName, "baseq3"); // as it answered meanwhile
}

TEST_F(ScanEngineDialogCommandsTest, AServerThatIsAddedIsNotAskedAndTheRestIs) {
    for (const std::int32_t atOnce : {1, 3}) {
        BrowserWithServers other(6, atOnce);
        other.fake.hosts.addresses["typed.example"] = "127.0.17.1";
        other.dialogs.inAddServer = [&](frmAddServer& form) {
            for (const char* port : {"1", "2", "3"}) {
                other.fake.events.RunFor(25);
                form.txtIP = "typed.example";
                form.txtPort = port;
                form.cmdOK_Click();
            }
        };
        other.In(5, [&] { other.Form().dialogs.mnuServAdd_Click(); });
        other.RefreshAll();
        EXPECT_EQ(other.network.Asked(), HeadlessBrowser::Addresses(6)) << atOnce;
        EXPECT_EQ(other.RowCount(), 9);
        for (std::int32_t n = 1; n <= 6; ++n)
            EXPECT_EQ(other.program.Servers[n].Name, "Live " + std::to_string(n));
        EXPECT_EQ(other.Count(), "9 servers");
    }
}

// The scan ends for the command, which runs when the dialog is closed.
TEST_F(ScanEngineDialogCommandsTest, ADeletionWaitsForTheDialogAndDeletesItsRows) {
    for (const std::int32_t atOnce : {1, 3}) {
        BrowserWithServers other(6, atOnce);
        other.dialogs.whileOpen = [&] {
            other.fake.events.RunFor(500);
            EXPECT_EQ(other.Message(), Aborted);
            EXPECT_EQ(other.RowCount(), 6);
        };
        other.dialogs.inSetPassword = [](frmSetPassword& form) {
            form.txtPass = "secret";
            form.cmdOK_Click();
        };
        other.In(5, [&] {
            other.SelectRows({2, 3});
            other.Form().servers.mnuServDelete_Click();
            other.SelectRows({5});
            other.Form().dialogs.mnuServSetPass_Click();
            EXPECT_EQ(other.RowCount(), 6);
        });
        other.RefreshAll();
        ASSERT_EQ(other.program.Servers.HighestIndex(), 4);
        std::vector<std::string> expected = HeadlessBrowser::Addresses(6);
        expected.erase(expected.begin() + 1, expected.begin() + 3);
        EXPECT_EQ(other.Column(AddressColumn), expected);
        for (std::int32_t n = 1; n <= 4; ++n)
            EXPECT_EQ(other.program.Servers[n].Password, n == 3 ? "secret" : "") << n;
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

TEST_F(ScanEngineDialogCommandsTest, AnotherListReplacesTheListWhenTheDialogIsClosed) {
    StartWith(6);
    browser.PutList("hl", {"127.0.3.1:27015"});
    KeepOpenFor(500, [&] {
        EXPECT_EQ(browser.program.CurrentGame, "q3");
        ExpectEnded(Aborted);
    });
    RefreshAllAnd(10, [&] {
        browser.ClickNode("hl");
        OpenOptions();
    });
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(browser.program.CurrentGame, "hl");
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

} // namespace
} // namespace quarn
