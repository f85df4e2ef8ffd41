#include "support/clsHTMLHelp.h"

#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

class HTMLHelpTest : public ::testing::Test {
  protected:
    HTMLHelpTest() {
        help.CHMFile = "C:\\Quarn\\..\\Kestrune.chm";
        help.HelpWindow = "Main";
    }
    std::vector<FakeHelpViewer::Call>& Calls() { return fake.help.calls; }

    FakeDesktop fake;
    clsAppLog log{fake.desktop, "C:\\Quarn\\"};
    clsHTMLHelp help{log, fake.help};
};

TEST_F(HTMLHelpTest, ShowsATopicInItsWindow) {
    help.ShowTopic(0x1234, "Progs\\Quarn\\Main.htm");
    ASSERT_EQ(Calls().size(), 1U);
    EXPECT_EQ(Calls()[0].caller, 0x1234U);
    EXPECT_EQ(Calls()[0].file, "C:\\Quarn\\..\\Kestrune.chm>Main");
    EXPECT_EQ(static_cast<int>(Calls()[0].command), 0);
    EXPECT_EQ(Calls()[0].topic, "Progs\\Quarn\\Main.htm");
}

TEST_F(HTMLHelpTest, LeavesAWindowThatCameToTheUser) {
    help.CloseFile();
    EXPECT_TRUE(Calls().empty());
    help.ShowTopic(1, "topic");
    help.CloseFile();
    EXPECT_EQ(Calls().size(), 1U);
}

TEST_F(HTMLHelpTest, ClosesAfterATopicThatCouldNotBeShown) {
    fake.help.windowComes = false;
    help.ShowTopic(0x1234, "topic");
    fake.help.windowComes = true;
    help.ShowTopic(0x5678, "topic"); // a later success does not change it
    help.CloseFile();
    ASSERT_EQ(Calls().size(), 3U);
    EXPECT_EQ(Calls()[2].caller, 0x5678U);
    EXPECT_EQ(Calls()[2].file, "C:\\Quarn\\..\\Kestrune.chm>Main");
    EXPECT_EQ(static_cast<int>(Calls()[2].command), 18);
    EXPECT_EQ(Calls()[2].topic, std::nullopt);
}

TEST_F(HTMLHelpTest, TakesAnyFileWindowAndTopic) {
    for (const std::string& text : {std::string(), std::string(" "), std::string("a>b"),
                                    std::string("\xff\""), std::string(10'000, 'x')}) {
        help.CHMFile = help.HelpWindow = text;
        help.ShowTopic(0, text);
        EXPECT_EQ(Calls().back().file, text + ">" + text);
        EXPECT_EQ(Calls().back().topic, text);
    }
}

TEST_F(HTMLHelpTest, LogsAFaultWithoutShowingIt) {
    fake.help.fault = ErrorNumber::OutOfMemory;
    help.ShowTopic(1, "topic");
    EXPECT_EQ(LoggedErrors(log), std::vector<std::string>{"clsHTMLHelp;ShowTopic;7"});
    EXPECT_TRUE(fake.prompts.shown.empty());
}

} // namespace
} // namespace quarn
