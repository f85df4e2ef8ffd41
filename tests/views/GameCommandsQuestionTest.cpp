// What is asked before a server is joined: whether a suspicious line may be passed, and a missing password.

#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class GameCommandsQuestionTest : public ::testing::Test {
  protected:
    GameCommandsQuestionTest() {
        browser.Set("Games", "Path1", "C:\\Arena");
        browser.Set("Games", "Config1", "Arena.cfg");
        browser.Set("Games", "Name1", "Player");
        browser.fake.files.Put("C:\\Arena\\arena.exe", "");
        browser.PutList("q3", {"127.0.0.1:27960"});
    }
    ServerRecord& Server(std::int32_t index) { return browser.program.Servers[index]; }
    void Join(std::int32_t row) {
        browser.SelectRows({row});
        browser.Form().game.mnuServConnectPlay_Click();
    }
    std::vector<std::string> Started() const {
        std::vector<std::string> lines;
        for (const Shell::Request& request : browser.fake.shell.opened)
            lines.push_back(request.parameters);
        return lines;
    }
    void StartWithMod(const std::string& mod) {
        ASSERT_TRUE(browser.Start());
        browser.SelectRows({1});
        Server(1).ModName = mod;
    }
    std::vector<std::string> Questions() const {
        std::vector<std::string> titles;
        for (const FakePrompts::Prompt& prompt : browser.fake.prompts.shown)
            titles.push_back(prompt.title);
        return titles;
    }

    HeadlessBrowser browser;
};

TEST_F(GameCommandsQuestionTest, NoStartsNothing) {
    StartWithMod("osp +quit");
    browser.fake.prompts.yesNoAnswers = {false};
    Join(1);
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_THAT(browser.dialogs.shown, IsEmpty());
    EXPECT_TRUE(Server(1).LastVisit.IsZero());
    EXPECT_FALSE(browser.fake.files.Has("server.txt"));
    ASSERT_THAT(Questions(), ElementsAre("Join server"));
    EXPECT_EQ(browser.fake.prompts.shown[0].defaultButton, Prompts::DefaultButton::No);
    EXPECT_NE(browser.fake.prompts.shown[0].text.find("+set fs_game osp +quit +exec"), std::string::npos);
}

TEST_F(GameCommandsQuestionTest, YesPassesTheLineThatWasShown) {
    StartWithMod("osp +quit");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.fake.prompts.whileOpen = [&] { Server(1).ModName = "worse +exec"; };
    Join(1);
    EXPECT_THAT(Started(), ElementsAre("+set fs_game osp +quit +exec Arena.cfg +name Player +set password  "
                                       "+connect 127.0.0.1:27960"));
    EXPECT_FALSE(Server(1).LastVisit.IsZero());
}

TEST_F(GameCommandsQuestionTest, AServerThatIsGoneMeanwhileIsJoinedWithoutAVisit) {
    StartWithMod("osp +quit");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.fake.prompts.whileOpen = [&] {
        browser.Controls().lvwServers.Remove(1);
        browser.program.Servers.Reset(0);
    };
    Join(1);
    EXPECT_THAT(Started(), SizeIs(1));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsQuestionTest, ARowThatIsFilteredAwayMeanwhileKeepsItsVisit) {
    StartWithMod("osp +quit");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.fake.prompts.whileOpen = [&] { browser.Controls().lvwServers.Remove(1); };
    Join(1);
    EXPECT_THAT(Started(), SizeIs(1));
    EXPECT_FALSE(Server(1).LastVisit.IsZero());
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsQuestionTest, ANulEndsTheName) {
    StartWithMod(std::string("osp\0+quit", 9));
    Join(1);
    ASSERT_THAT(Started(), SizeIs(1));
    EXPECT_NE(Started()[0].find("+set fs_game osp +exec"), std::string::npos);
    EXPECT_THAT(Questions(), IsEmpty());
}

TEST_F(GameCommandsQuestionTest, TheProgramMayEndMeanwhile) {
    StartWithMod("+quit");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.fake.prompts.whileOpen = [&] { browser.Form().Unload(); };
    Join(1);
    browser.fake.events.RunFor(1000);
    EXPECT_TRUE(browser.Ended());
    EXPECT_THAT(Started(), IsEmpty());
}

class GameCommandsPasswordTest : public GameCommandsQuestionTest {
  protected:
    void StartLocked(std::int32_t askPassword, std::int32_t locked = 1) {
        ASSERT_TRUE(browser.Start());
        browser.program.AskPassword = askPassword;
        Server(1).Locked = locked;
        browser.dialogs.inSetPassword = [this](frmSetPassword& form) {
            if (!password)
                return form.cmdCancel_Click();
            form.txtPass = *password;
            form.cmdOK_Click();
        };
    }

    std::optional<std::string> password; // nothing: the user cancels
};

TEST_F(GameCommandsPasswordTest, IsAskedForWhereItIsMissing) {
    StartLocked(1);
    password = "sesame";
    Join(1);
    Join(1);
    EXPECT_THAT(browser.dialogs.shown, ElementsAre(FakeModalForms::Shown{"frmSetPassword", false}));
    ASSERT_THAT(Started(), SizeIs(2));
    for (const std::string& started : Started())
        EXPECT_NE(started.find(" +set password sesame "), std::string::npos);
}

TEST_F(GameCommandsPasswordTest, CancelDoesNotJoin) {
    StartLocked(1);
    Join(1);
    EXPECT_THAT(browser.dialogs.shown, SizeIs(1));
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_TRUE(Server(1).LastVisit.IsZero());
}

TEST_F(GameCommandsPasswordTest, AServerThatIsGoneMeanwhileIsNotJoined) {
    StartLocked(1);
    browser.dialogs.inSetPassword = [this](frmSetPassword& form) {
        browser.Controls().lvwServers.Remove(1);
        browser.program.Servers.Reset(0);
        form.cmdOK_Click();
    };
    Join(1);
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsPasswordTest, OkWithoutAPasswordJoins) {
    StartLocked(1);
    password = "";
    Join(1);
    EXPECT_THAT(Started(), SizeIs(1));
}

TEST_F(GameCommandsPasswordTest, IsNotAskedForOtherwise) {
    const struct {
        std::int32_t askPassword;
        std::int32_t locked;
        const char* stored;
    } cases[] = {{0, 1, ""}, {1, 0, ""}, {1, 1, "known"}};
    for (const auto& c : cases) {
        HeadlessBrowser other;
        other.Set("Games", "Path1", "C:\\Arena");
        other.fake.files.Put("C:\\Arena\\arena.exe", "");
        other.PutList("q3", {"127.0.0.1:27960"});
        ASSERT_TRUE(other.Start());
        other.program.AskPassword = c.askPassword;
        other.program.Servers[1].Locked = c.locked;
        other.program.Servers[1].Password = c.stored;
        other.SelectRows({1});
        other.Form().game.mnuServConnectPlay_Click();
        EXPECT_THAT(other.dialogs.shown, IsEmpty());
        EXPECT_THAT(other.fake.shell.opened, SizeIs(1));
    }
}

TEST_F(GameCommandsPasswordTest, ComesBeforeTheQuestion) {
    StartLocked(1);
    Server(1).ModName = "a+b";
    password = "sesame";
    browser.fake.prompts.yesNoAnswers = {true};
    Join(1);
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_NE(browser.fake.prompts.shown[0].text.find("sesame"), std::string::npos);
    EXPECT_THAT(Started(), SizeIs(1));
}

} // namespace
} // namespace quarn
