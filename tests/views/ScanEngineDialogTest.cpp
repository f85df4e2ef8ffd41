// A scan during which a dialog or message box is open: it continues behind it.

#include "tests/views/DialogScanTest.h"
#include "views/ScanEngine.h"

#include <algorithm>
#include <tuple>

namespace quarn {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Aborted = "Scanning aborted by user.";
constexpr const char* Ready = "Ready.";

// A command that opens dialogs or boxes.
struct Opener {
    const char* name;
    void (*open)(HeadlessBrowser& browser);
};

void PrintTo(const Opener& opener, std::ostream* stream) {
    *stream << opener.name;
}

const Opener Openers[] = {
    {"Options", [](HeadlessBrowser& b) { b.Form().dialogs.mnuExtrasOptions_Click(); }},
    {"AddServer", [](HeadlessBrowser& b) { b.Form().dialogs.mnuServAdd_Click(); }},
    {"GameSetup", [](HeadlessBrowser& b) { b.Form().dialogs.mnuExtrasGameSetup_Click(); }},
    {"Password", [](HeadlessBrowser& b) { b.Form().dialogs.mnuServSetPass_Click(); }},
    {"About", [](HeadlessBrowser& b) { b.Form().dialogs.mnuInfoAbout_Click(); }},
    {"TextBox",
     [](HeadlessBrowser& b) {
         b.fake.prompts.textAnswers = {"Renamed"};
         b.Form().tree.mnuTreeRename_Click("fav1");
     }},
    {"FileDialog",
     [](HeadlessBrowser& b) {
         b.fake.prompts.fileAnswers = {"C:\\out.txt"};
         b.Form().servers.mnuServerListExport_Click();
     }},
    {"Question",
     [](HeadlessBrowser& b) {
         for (std::int32_t i = 1; i <= b.program.Servers.HighestIndex(); ++i)
             b.program.Servers[i].ModName = "osp +quit";
         b.fake.prompts.yesNoAnswers = {false};
         b.Form().game.mnuServConnectPlay_Click();
     }},
    {"ErrorOfACommand",
     [](HeadlessBrowser& b) {
         b.fake.shell.clipboardBlocked = true;
         b.Form().servers.mnuServCopyAddress_Click();
     }},
    {"MessageOutsideACommand", [](HeadlessBrowser& b) { b.program.AppLog->ErrorMessage("Something"); }},
    {"MessageAndThenADialog", [](HeadlessBrowser& b) { b.Form().game.mnuServConnectPlay_Click(); }},
    {"MessageInADialog",
     [](HeadlessBrowser& b) {
         b.dialogs.whileOpen = nullptr;
         b.dialogs.inOptions = [](frmOptions& form) {
             form.txtScanPingTimeout = "soon";
             form.cmdOK_Click();
         };
         b.Form().dialogs.mnuExtrasOptions_Click();
     }},
    {"FolderDialogInADialog",
     [](HeadlessBrowser& b) {
         b.dialogs.whileOpen = nullptr;
         b.fake.prompts.folderAnswers = {"C:\\Arena"};
         b.dialogs.inGamSetup = [](frmGamSetup& form) { form.cmdBrowse_Click(); };
         b.Form().dialogs.mnuExtrasGameSetup_Click();
     }},
    {"LookUpInADialog",
     [](HeadlessBrowser& b) {
         b.dialogs.whileOpen = nullptr;
         b.fake.hosts.addresses["typed.example"] = "127.0.17.1";
         b.fake.hosts.lookUpMilliseconds = 20'000;
         b.dialogs.inAddServer = [](frmAddServer& form) {
             form.txtIP = "typed.example";
             form.txtPort = "27960";
             form.cmdOK_Click();
         };
         b.Form().dialogs.mnuServAdd_Click();
     }},
};

class ScanEngineDialogTest : public DialogScanTest {
  protected:
    // A message box while a command lets events run.
    void OpenABoxAtTheNextYield() {
        browser.fake.events.whenYielding = [this, first = true](std::int32_t) mutable {
            if (std::exchange(first, false))
                browser.fake.events.Post([this] { browser.program.AppLog->ErrorMessage("Something"); });
        };
    }

    // How many servers have been asked when a box opens and when it closes.
    void CountBeforeAndAfterABox(std::vector<std::size_t>& asked) {
        browser.fake.prompts.whileOpen = [this, &asked] {
            asked.push_back(Asked().size());
            browser.fake.events.RunFor(500);
            asked.push_back(Asked().size());
        };
    }
};

class ScanEngineDialogTableTest : public DialogScanTest,
                                  public ::testing::WithParamInterface<std::tuple<Opener, std::int32_t>> {
  protected:
    void Open() { std::get<Opener>(GetParam()).open(browser); }
    std::int32_t AtOnce() const { return std::get<std::int32_t>(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(EveryDialog, ScanEngineDialogTableTest,
                         ::testing::Combine(::testing::ValuesIn(Openers), ::testing::Values(1, 4)),
                         [](const auto& test) {
                             const std::int32_t atOnce = std::get<std::int32_t>(test.param);
                             return std::get<Opener>(test.param).name + std::string("_") +
                                    std::to_string(atOnce) + "AtOnce";
                         });

TEST_P(ScanEngineDialogTableTest, AllServersAreAskedBehindIt) {
    StartWith(9);
    browser.program.Simultaneous = AtOnce();
    Silence(3);
    Silence(7);
    browser.SelectRows({5});
    std::vector<std::int32_t> asked;
    std::vector<std::string> pings;
    KeepOpenFor(10'000, [&] {
        if (!asked.empty())
            return;
        asked = Asked();
        pings = browser.Column(PingColumn);
        ExpectEnded();
    });
    if (std::get<Opener>(GetParam()).name == std::string("LookUpInADialog"))
        browser.In(15'000, [&] {
            ++opened;
            asked = Asked();
            pings = browser.Column(PingColumn);
            ExpectEnded();
        });
    RefreshAllAnd(10, [&] { Open(); });
    EXPECT_GE(opened, 1);
    EXPECT_EQ(Asked(), asked);
    if (AtOnce() > 1) // the silent ones are asked twice
        asked.resize(std::min<std::size_t>(asked.size(), 9));
    EXPECT_THAT(asked, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    ASSERT_THAT(pings, SizeIs(9));
    for (std::int32_t n = 1; n <= 9; ++n) {
        const bool answers = n != 3 && n != 7;
        EXPECT_EQ(Server(n).Ping, answers ? Latency : Timeout) << n;
        EXPECT_EQ(Server(n).Name, (answers ? "Live " : "Server ") + std::to_string(n));
        EXPECT_EQ(pings[static_cast<std::size_t>(n) - 1], std::to_string(Server(n).Ping));
    }
    ExpectEnded();
    ExpectIdle();
}

TEST_P(ScanEngineDialogTableTest, TheProgramClosesThoughItIsOpen) {
    StartWith(9);
    browser.program.Simultaneous = AtOnce();
    browser.SelectRows({5});
    KeepOpenFor(25, [&] {
        browser.Form().Unload();
        browser.fake.prompts.yesNoAnswers.assign(2, false); // also to the report of an error
    });
    if (std::get<Opener>(GetParam()).name == std::string("LookUpInADialog"))
        browser.In(25, [&] { browser.Form().Unload(); });
    RefreshAllAnd(10, [&] { Open(); });
    browser.fake.events.RunFor(5000);
    EXPECT_LT(Asked().size(), 9U);
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
    EXPECT_EQ(browser.sckServer.OpenCount(), 0);
}

// The moments and contents of all datagrams.
std::vector<std::string> Datagrams(const HeadlessBrowser& browser) {
    std::vector<std::string> datagrams;
    for (const SentDatagram& sent : browser.sckServer.sent)
        datagrams.push_back(std::to_string(sent.tick) + " " + sent.address + " " + sent.bytes);
    return datagrams;
}

TEST_F(ScanEngineDialogTest, TheDatagramsAreThoseOfAScanWithoutADialog) {
    for (const std::int32_t atOnce : {1, 3}) {
        const auto scan = [&](bool withDialogs) {
            HeadlessBrowser other;
            const std::vector<std::string> servers = HeadlessBrowser::Addresses(20);
            other.PutList("q3", servers);
            other.PutServers(servers);
            for (const std::size_t silent : {4U, 5U, 11U})
                other.network.servers.erase(servers[silent]);
            EXPECT_TRUE(other.Start());
            other.program.Simultaneous = atOnce;
            other.fake.prompts.whileOpen = other.dialogs.whileOpen = [&] { other.fake.events.RunFor(70); };
            for (std::int32_t at = 5; withDialogs && at < 2000; at += 83)
                other.In(at, [&] { other.Form().dialogs.mnuExtrasOptions_Click(); });
            other.RefreshAll();
            EXPECT_EQ(other.Message(), Ready);
            return Datagrams(other);
        };
        EXPECT_EQ(scan(true), scan(false)) << atOnce;
    }
}

TEST_F(ScanEngineDialogTest, TheScanContinuesWhenTheDialogIsClosed) {
    for (const std::int32_t atOnce : {1, 2}) {
        BrowserWithServers other(9, atOnce);
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(9);
        std::size_t before = 0;
        std::size_t inside = 0;
        other.dialogs.whileOpen = [&] {
            before = other.network.Asked().size();
            other.fake.events.RunFor(40);
            inside = other.network.Asked().size();
        };
        other.In(10, [&] { other.Form().dialogs.mnuInfoAbout_Click(); });
        other.RefreshAll();
        EXPECT_GT(inside, before);
        EXPECT_LT(inside, servers.size());
        EXPECT_EQ(other.network.Asked(), servers);
        EXPECT_EQ(other.fake.clock.Elapsed(), (9 + atOnce - 1) / atOnce * Latency);
        EXPECT_EQ(other.Message(), Ready);
    }
}

TEST_F(ScanEngineDialogTest, TheProgressIsShownBehindADialog) {
    StartWith(9);
    std::string toolTip;
    std::string count;
    KeepOpenFor(85, [&] {
        toolTip = browser.Controls().pbScanning.toolTip;
        count = browser.Count();
        EXPECT_EQ(browser.Controls().pbScanning.Value(), 5);
        EXPECT_EQ(browser.Message(), "Retrieving server stats, please wait.");
    });
    RefreshAllAnd(10, [&] { OpenOptions(); });
    EXPECT_EQ(toolTip, "4 answered, 0 silent");
    EXPECT_EQ(count, "5/9");
}

TEST_F(ScanEngineDialogTest, OnlyTheInnermostScanContinuesAndTheOuterOneAfterIt) {
    StartWith(4);
    bool nested = false;
    During(1, [&] {
        if (std::exchange(nested, true))
            return;
        browser.In(5, [&] { OpenOptions(); });
        browser.SelectRows({3, 4});
        browser.RefreshSelected();
        EXPECT_THAT(Asked(), ElementsAre(1, 3, 4, 2, 3, 4));
    });
    std::vector<std::int32_t> asked;
    KeepOpenFor(30, [&] {
        asked = Asked();
        EXPECT_EQ(Server(1).Name, "Live 1"); // stored, but its scan does not continue
        browser.fake.events.RunFor(3000);
        EXPECT_THAT(Asked(), ElementsAre(1, 3, 4, 2, 3, 4));
        ExpectEnded();
    });
    browser.RefreshAll();
    EXPECT_THAT(asked, ElementsAre(1, 3, 4));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3", "Live 4"));
    EXPECT_THAT(Asked(), SizeIs(6));
    EXPECT_EQ(opened, 1);
    ExpectEnded();
    ExpectIdle();
}

TEST_F(ScanEngineDialogTest, TheOuterScanContinuesWhereItWasIfTheDialogClosesFirst) {
    StartWith(4);
    bool nested = false;
    During(1, [&] {
        if (std::exchange(nested, true))
            return;
        browser.In(5, [&] { OpenOptions(); });
        browser.SelectRows({3, 4});
        browser.RefreshSelected();
        EXPECT_THAT(Asked(), ElementsAre(1, 3, 4));
        EXPECT_EQ(browser.Message(), Ready);
    });
    KeepOpenFor(20);
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 3, 4, 2, 3, 4));
    ExpectEnded();
    ExpectIdle();
}

TEST_F(ScanEngineDialogTest, AScanThatEndedBehindTheDialogEndsOnce) {
    for (const std::int32_t atOnce : {1, 4}) {
        BrowserWithServers other(5, atOnce);
        other.dialogs.whileOpen = [&] {
            other.fake.events.RunFor(500);
            EXPECT_EQ(other.Message(), Ready);
            other.Controls().SetStatus(MessagePanel, "Changed since");
            other.Stop(); // of no scan
        };
        other.In(10, [&] { other.Form().dialogs.mnuInfoAbout_Click(); });
        other.RefreshAll();
        EXPECT_EQ(other.Message(), "Changed since");
        EXPECT_FALSE(other.Form().scan.ScanAborted);
        other.network.ForgetAsked();
        other.RefreshAll();
        EXPECT_THAT(other.network.Asked(), SizeIs(5));
        EXPECT_EQ(other.Message(), Ready);
    }
}

TEST_F(ScanEngineDialogTest, StopActsBehindADialog) {
    struct Case {
        std::int32_t atOnce;
        std::size_t asked;
    };
    for (const Case& c : {Case{1, 2}, Case{4, 4}}) {
        BrowserWithServers other(9, c.atOnce);
        other.dialogs.whileOpen = [&] {
            other.fake.events.RunFor(500);
            EXPECT_EQ(other.Message(), Aborted);
        };
        other.In(c.atOnce == 1 ? 25 : 5, [&] {
            other.Stop();
            other.Form().dialogs.mnuInfoAbout_Click();
        });
        other.RefreshAll();
        EXPECT_THAT(other.network.Asked(), SizeIs(c.asked));
        EXPECT_EQ(other.Message(), Aborted);
        EXPECT_FALSE(other.Form().scan.ScanAborted);
    }
}

TEST_F(ScanEngineDialogTest, NoStepIsTakenWhileTheListIsSorted) {
    StartWith(9);
    std::vector<std::size_t> asked;
    CountBeforeAndAfterABox(asked);
    During(2, [&] {
        OpenABoxAtTheNextYield();
        browser.Form().servers.lvwServers_ColumnClick(2);
    });
    browser.RefreshAll();
    EXPECT_THAT(asked, ElementsAre(2, 2));
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(browser.Column(PingColumn), Each("20"));
    ExpectEnded();
}

TEST_F(ScanEngineDialogTest, NoStepIsTakenWhileTheListIsSaved) {
    StartWith(9);
    browser.program.Simultaneous = 2;
    std::vector<std::size_t> asked;
    CountBeforeAndAfterABox(asked);
    RefreshAllAnd(10, [&] {
        OpenABoxAtTheNextYield();
        browser.ClickNode("q3");
    });
    EXPECT_THAT(asked, ElementsAre(2, 2));
    EXPECT_THAT(Asked(), SizeIs(9));
    EXPECT_THAT(browser.Column(PingColumn), Each("20"));
}

// The master's servers are listed while the dialog is open, and events run in between.
TEST_F(ScanEngineDialogTest, NoStepIsTakenInsideACommandButOneAfterIt) {
    StartWith(9);
    browser.fake.prompts.yesNoAnswers = {true};
    const std::vector<std::string> listed = HeadlessBrowser::Addresses(9);
    browser.Form().tbMain_ButtonClick("querymaster");
    browser.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, listed));
    browser.fake.events.RunFor(10);
    ASSERT_EQ(browser.RowCount(), 9);
    browser.network.ForgetAsked();

    std::vector<std::size_t> asked;
    browser.dialogs.whileOpen = [&] {
        asked.push_back(Asked().size());
        browser.fake.events.whenYielding = [&, first = true](std::int32_t) mutable {
            if (!std::exchange(first, false))
                return;
            browser.fake.events.RunFor(15); // the server answers
            asked.push_back(Asked().size());
        };
        browser.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, HeadlessBrowser::Block(7, 3)));
        browser.fake.events.RunFor(0);
        asked.push_back(Asked().size());
    };
    RefreshAllAnd(10, [&] { OpenOptions(); });
    EXPECT_THAT(asked, ElementsAre(1, 1, 2));
    EXPECT_EQ(browser.RowCount(), 12);
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    ExpectEnded();
}

// Events run in the middle of every step.
TEST_F(ScanEngineDialogTest, NoStepIsTakenInsideAnother) {
    for (const std::int32_t atOnce : {1, 3}) {
        BrowserWithServers other(12, atOnce);
        const std::vector<std::string> rows = other.Column(AddressColumn);
        int depth = 0;
        int deepest = 0;
        bool isOpen = false;
        other.network.whenAsked = [&](const std::string&) {
            const Restore deeper(depth, depth + 1);
            deepest = std::max(deepest, depth);
            if (isOpen)
                other.fake.events.RunFor(7);
            if (isOpen && atOnce == 3)
                other.Controls().tmrDeadlines.Tick();
        };
        other.dialogs.whileOpen = [&] {
            isOpen = true;
            other.fake.events.RunFor(1000);
            EXPECT_EQ(other.Message(), Ready);
            isOpen = false;
        };
        other.In(10, [&] { other.Form().dialogs.mnuInfoAbout_Click(); });
        other.RefreshAll();
        EXPECT_EQ(deepest, 1) << atOnce;
        EXPECT_EQ(other.network.Asked(), rows) << atOnce;
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

TEST_F(ScanEngineDialogTest, NoStepIsTakenBehindAMenu) {
    StartWith(3);
    browser.In(10, [&] { // the menu's loop runs inside the command that opens it
        browser.fake.events.RunFor(500);
        EXPECT_THAT(Asked(), SizeIs(1));
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), SizeIs(3));
}

TEST_F(ScanEngineDialogTest, ALowerTimeOutOfTheOptionsHoldsFromThenOn) {
    StartWith(3);
    for (const std::int32_t number : {1, 2, 3})
        Silence(number);
    browser.dialogs.inOptions = [&](frmOptions& form) {
        browser.fake.events.RunFor(1100);
        EXPECT_THAT(Asked(), SizeIs(2));
        form.txtScanPingTimeout = "300";
        form.cmdOK_Click();
    };
    RefreshAllAnd(10, [&] { OpenOptions(); });
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "300", "300"));
    EXPECT_EQ(browser.fake.clock.Elapsed(), 10 + 1100 + 600);
}

TEST_F(ScanEngineDialogTest, TheEndOfTheSessionEndsTheScanBehindADialog) {
    for (const std::int32_t after : {25, 2000}) { // before and after the scan's end
        BrowserWithServers other(9);
        std::size_t asked = 0;
        other.dialogs.whileOpen = [&] {
            other.fake.events.RunFor(after);
            other.Form().EndSession();
            asked = other.network.Asked().size();
            other.fake.events.RunFor(2000);
        };
        other.In(10, [&] { other.Form().dialogs.mnuExtrasOptions_Click(); });
        other.RefreshAll();
        EXPECT_EQ(other.network.Asked().size(), asked);
        EXPECT_EQ(other.window.destroyCalls, 1);
        EXPECT_THAT(other.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
    }
}

} // namespace
} // namespace quarn
