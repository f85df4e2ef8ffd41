#include "views/ScanProgress.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class ScanProgressTest : public ::testing::Test {
  protected:
    ScanProgressTest() {
        browser.PutList("q3", HeadlessBrowser::Addresses(20));
        EXPECT_TRUE(browser.Start());
    }

    MainFormContext Context() {
        return {browser.program, browser.fake.desktop, browser.window, browser.Controls(), gate, {}};
    }
    void Pass(std::int32_t milliseconds) { browser.fake.clock.Advance(milliseconds); }
    const ProgressBar& Bar() { return browser.Controls().pbScanning; }

    HeadlessBrowser browser;
    CommandGate gate{browser.fake.events};
};

TEST_F(ScanProgressTest, CountsAnswersAndSilence) {
    ScanProgress progress(Context());
    progress.Begin(20);
    EXPECT_TRUE(Bar().active);
    EXPECT_EQ(Bar().Maximum(), 20);
    EXPECT_EQ(Bar().toolTip, "0 answered, 0 silent");
    EXPECT_EQ(browser.Message(), "Retrieving server stats, please wait.");
    progress.Count(true);
    progress.Count(true);
    progress.Count(false);
    EXPECT_EQ(Bar().toolTip, "2 answered, 1 silent");
    progress.Reach(3);
    EXPECT_EQ(Bar().Value(), 3);
    progress.ShowNumber(3);
    EXPECT_EQ(browser.Count(), "3/20");
}

TEST_F(ScanProgressTest, SaysThatTheScanStandsStillUntilItGoesOn) {
    ScanEngine& scan = browser.Form().scan;
    browser.PutServers(HeadlessBrowser::Addresses(20));
    const std::string idle = Bar().toolTip;
    scan.NoteStandstill();
    EXPECT_EQ(Bar().toolTip, idle) << "no scan runs";
    std::string before;
    std::string behindMenu;
    browser.In(1, [&] {
        before = Bar().toolTip;
        scan.NoteStandstill();
        scan.NoteStandstill();
        behindMenu = Bar().toolTip;
    });
    browser.RefreshAll();
    EXPECT_EQ(behindMenu, before + "; paused while a menu is open or the window is moved");
    EXPECT_EQ(Bar().toolTip, idle);
}

// A menu of the tray may be open in front of a dialog.
TEST_F(ScanProgressTest, SaysNothingOfTheKindWhileTheScanContinuesBehindADialog) {
    browser.PutServers(HeadlessBrowser::Addresses(20));
    std::string behindDialog;
    browser.dialogs.whileOpen = [&] {
        browser.Form().scan.NoteStandstill();
        behindDialog = Bar().toolTip;
    };
    browser.In(1, [&] { browser.Form().dialogs.mnuInfoAbout_Click(); });
    browser.RefreshAll();
    EXPECT_EQ(behindDialog, "0 answered, 0 silent");
}

TEST_F(ScanProgressTest, EstimatesTheTimeLeftFromFiveOutcomesOn) {
    struct Case {
        std::int32_t millisecondsEach;
        std::int32_t outcomes;
        const char* toolTip;
    };
    for (const Case& c :
         {Case{1000, 4, "4 answered, 0 silent"}, Case{1000, 5, "5 answered, 0 silent, about 15 s left"},
          Case{1001, 5, "5 answered, 0 silent, about 16 s left"},
          Case{0, 5, "5 answered, 0 silent, about 0 s left"},
          Case{3999, 5, "5 answered, 0 silent, about 1 min left"},
          Case{6000, 5, "5 answered, 0 silent, about 2 min left"},
          Case{60'000, 10, "10 answered, 0 silent, about 10 min left"},
          Case{1000, 20, "20 answered, 0 silent"}, Case{1000, 21, "21 answered, 0 silent"}}) {
        ScanProgress progress(Context());
        progress.Begin(20);
        for (std::int32_t i = 0; i < c.outcomes; ++i) {
            Pass(c.millisecondsEach);
            progress.Count(true);
        }
        EXPECT_EQ(Bar().toolTip, c.toolTip) << c.millisecondsEach << ' ' << c.outcomes;
    }
}

TEST_F(ScanProgressTest, EndsAsItBegan) {
    for (const bool aborted : {false, true}) {
        ScanProgress progress(Context());
        progress.Begin(20);
        progress.Reach(20);
        progress.Count(false);
        progress.End(aborted);
        EXPECT_FALSE(Bar().active);
        EXPECT_EQ(Bar().Value(), 1);
        EXPECT_EQ(Bar().toolTip, "Server query status");
        EXPECT_EQ(browser.Count(), "20 servers");
        EXPECT_EQ(browser.Message(), aborted ? "Scanning aborted by user." : "Ready.");
    }
}

} // namespace
} // namespace quarn
