// A log that cannot be written while datagrams cause errors. The user is told once, after the scan: what
// arrives while the message is open would otherwise change the list under a parser.

#include "tests/views/ScanTest.h"

#include <string>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* LogPath = "C:\\Quarn\\Quarn.log";

class UnwritableLogTest : public ScanTest, public ::testing::WithParamInterface<std::int32_t> {
  protected:
    // The first server's reply ends after its name, which is an error that is logged. While the message is
    // open, a master lists more servers than the list has room for without moving its records.
    void StartWithABrokenServer() {
        StartWith(4, Family::HalfLife);
        browser.program.Simultaneous = GetParam();
        Script(1, [this] {
            for (int reply = 0; reply < 3; ++reply)
                browser.sckServer.ReplyIn(Latency, "\xFF\xFF\xFF\xFF\x43"
                                                   "127.0.0.1:27960\0Cut off\0"s);
        });
        browser.fake.files.FailWrites(LogPath, ErrorNumber::PermissionDenied);
        browser.fake.prompts.whileOpen = [this] {
            messages.push_back(browser.Message());
            browser.sckMaster.ReplyIn(0, MasterDatagram(Family::HalfLife, HeadlessBrowser::Block(9, 250)));
            browser.sckMaster.ReplyIn(1, MasterDatagram(Family::HalfLife, HeadlessBrowser::Block(8, 250)));
            browser.fake.events.RunFor(100);
        };
    }

    std::vector<std::string> messages; // of the status bar, while a box was open
};

TEST_P(UnwritableLogTest, IsToldOnceAfterTheScan) {
    StartWithABrokenServer();
    browser.sckMaster.SendData("a request that the master still answers");
    browser.RefreshAll();
    browser.fake.events.RunFor(5 * Timeout);

    EXPECT_THAT(messages, ElementsAre("Ready."));
    ASSERT_EQ(browser.fake.prompts.shown.size(), 1U);
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Quarn - Error");
    EXPECT_THAT(browser.fake.prompts.shown[0].text, HasSubstr("WriteLogEntry"));
    EXPECT_EQ(browser.RowCount(), 4 + 2 * 500) << "a Half-Life list adds each server twice";
    EXPECT_EQ(browser.Cell(1, NameColumn), "Cut off");
    for (std::int32_t row = 2; row <= 4; ++row)
        EXPECT_EQ(browser.Cell(row, NameColumn), "Live " + std::to_string(row));

    browser.RefreshAll();
    browser.fake.events.RunFor(5 * Timeout);
    EXPECT_EQ(browser.fake.prompts.shown.size(), 1U) << "it is told again";
}

INSTANTIATE_TEST_SUITE_P(AtOnce, UnwritableLogTest, ::testing::Values(1, 4));

} // namespace
} // namespace quarn
