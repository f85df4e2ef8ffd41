#include "views/ToolbarButtons.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(ToolbarButtonsTest, AreTenWithTheSeparators) {
    Toolbar toolbar;
    AddToolbarButtons(toolbar);
    std::vector<std::string> buttons;
    for (std::int32_t i = 1; i <= toolbar.buttons.HighestIndex(); ++i)
        buttons.push_back(toolbar.buttons[i].key + "/" + toolbar.buttons[i].toolTip);
    EXPECT_THAT(buttons,
                ElementsAre("querymaster/Get new server list from Master", "/",
                            "refreshall/Refresh all servers in list", "refresh/Refresh selected server(s)",
                            "stop/Stop current operation", "/", "join/Join server as player",
                            "monitor/Monitor server with Velmar", "/", "favorites/Add server to favorites"));
}

TEST(ToolbarButtonsTest, RunTheirCommands) {
    HeadlessBrowser browser;
    browser.PutList("q3", HeadlessBrowser::Addresses(1));
    ASSERT_TRUE(browser.Start());
    browser.fake.prompts.yesNoAnswers = {false};
    browser.Form().tbMain_ButtonClick("querymaster");
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    browser.Form().tbMain_ButtonClick("favorites");
    EXPECT_THAT(browser.window.poppedUp, ElementsAre(PopupMenu::AddToFavorites));
    browser.Form().tbMain_ButtonClick("stop");
    EXPECT_FALSE(browser.Form().scan.ScanAborted); // no scan runs
    for (const char* key : {"", "Stop", "nothing", "refreshal"})
        browser.Form().tbMain_ButtonClick(key);
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    browser.Form().tbMain_ButtonClick("refreshall");
    EXPECT_THAT(browser.sckServer.sent, SizeIs(1));
    browser.SelectRows({1});
    browser.Form().tbMain_ButtonClick("refresh");
    EXPECT_THAT(browser.sckServer.sent, SizeIs(2));
    browser.In(5, [&] { browser.Form().tbMain_ButtonClick("stop"); });
    browser.Form().tbMain_ButtonClick("refreshall");
    EXPECT_EQ(browser.Message(), "Scanning aborted by user.");
}

} // namespace
} // namespace quarn
