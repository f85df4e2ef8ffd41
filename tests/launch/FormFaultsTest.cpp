// Each handler of a form logs its errors under its own name, shows them, and leaves the form as it is.

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/clsIPLocation.h"
#include "query/frmAddServer.h"
#include "support/frmAbout.h"
#include "tests/fakes/ProgramTest.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using Texts = std::vector<std::string>;

class FormFaultsTest : public ProgramTest {
  protected:
    FormFaultsTest() {
        program.Servers.Reset(1);
        program.CurrentServer = 1;
    }

    static void Fail() { throw RunTimeError(ErrorNumber::ObjectVariableNotSet); }

    void ExpectErrors(const Texts& errors) {
        EXPECT_EQ(LoggedErrors(*program.AppLog), errors);
        EXPECT_EQ(fake.prompts.shown.size(), errors.size());
    }
};

TEST_F(FormFaultsTest, AddServer) {
    frmAddServer form(program, fake.desktop, "list",
                      {[](const std::string&, const std::string&) -> bool {
                           Fail();
                           return false;
                       },
                       [](const std::function<bool()>& condition) { return condition(); }, &Fail});
    form.txtIP = "games.example";
    form.txtPort = "1";
    fake.hosts.addresses["games.example"] = "10.1.2.3";
    form.cmdOK_Click();
    form.cmdCancel_Click();
    ExpectErrors({"frmAddServer;cmdOK_Click;91", "frmAddServer;cmdCancel_Click;91"});
}

TEST_F(FormFaultsTest, Password) {
    frmSetPassword form(
        program, [server = program.CurrentServer] { return server; }, &Fail);
    form.cmdOK_Click();
    form.cmdCancel_Click();
    ExpectErrors({"frmSetPassword;cmdOK_Click;91", "frmSetPassword;cmdCancel_Click;91"});
}

TEST_F(FormFaultsTest, Options) {
    frmOptions form(program, fake.desktop, {&Fail, &Fail, &Fail}, &Fail);
    form.Form_Load();
    form.cmdOK_Click();
    form.cmdCancel_Click();
    form.Form_Unload();
    ExpectErrors({"frmOptions;cmdOK_Click;91", "frmOptions;cmdCancel_Click;91", "frmOptions;Form_Unload;91"});
}

TEST_F(FormFaultsTest, GameSetup) {
    frmGamSetup form(program, fake.desktop, &Fail, &Fail);
    form.cmdOK_Click();
    form.cmdCancel_Click();
    form.Form_Unload();
    ExpectErrors(
        {"frmGamSetup;cmdOK_Click;91", "frmGamSetup;cmdCancel_Click;91", "frmGamSetup;Form_Unload;91"});
}

TEST_F(FormFaultsTest, FolderOfAGame) {
    program.GameNum = 1;
    program.Games.Reset(1);
    program.Games[1].GameShort = "ar";
    for (OneBased<std::string>* texts : {&program.GamePath, &program.GameConfig, &program.GamePlayerName})
        texts->Reset(1);
    program.GameVisible.Reset(1);
    program.GamePath[1] = "C:\\Arena";
    frmGamSetup form(
        program, fake.desktop, [] {}, [] {});
    form.Form_Load();
    fake.prompts.whileOpen = [&] {
        if (fake.prompts.shown.back().kind == FakePrompts::Kind::Folder)
            Fail();
    };
    form.cmdBrowse_Click();
    ASSERT_EQ(fake.prompts.shown.size(), 2U); // the folders, and then the error
    EXPECT_EQ(LoggedErrors(*program.AppLog), Texts{"frmGamSetup;cmdBrowse_Click;91"});
    form.cmdOK_Click();
    EXPECT_EQ(program.GamePath[1], "C:\\Arena");
}

TEST_F(FormFaultsTest, About) {
    frmAbout form(program, fake.desktop, &Fail);
    form.cmdOK_Click();
    ExpectErrors({"frmAbout;cmdOK_Click;91"});
}

} // namespace
} // namespace quarn
