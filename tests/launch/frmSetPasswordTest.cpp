#include "launch/frmSetPassword.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/ProgramTest.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

class frmSetPasswordTest : public ProgramTest {
  protected:
    frmSetPasswordTest() {
        program.Servers.Reset(3);
        program.CurrentServer = 2;
        program.Servers[1].Password = "first";
        program.Servers[2].Password = "second";
        program.Servers[3].Password = "third";
    }
    frmSetPassword Form() {
        return frmSetPassword(
            program, [server = program.CurrentServer] { return server; }, [this] { ++closed; });
    }
    const std::string& Password(std::int32_t server = 2) { return program.Servers[server].Password; }

    int closed = 0;
};

TEST_F(frmSetPasswordTest, ShowsTheCurrentPassword) {
    frmSetPassword form = Form();
    form.Form_Load();
    EXPECT_EQ(form.txtPass, "second");
    EXPECT_EQ(closed, 0);
}

TEST_F(frmSetPasswordTest, StoresWhatIsTypedAsItIs) {
    for (const std::string& text :
         {std::string("secret"), std::string(), std::string(" "), std::string("\"+quit\""),
          std::string("a;b\\c"), std::string("p\xe4\xdf\xff\x80"), std::string(10'000, 'p')}) {
        closed = 0;
        frmSetPassword form = Form();
        form.Form_Load();
        form.txtPass = text;
        form.cmdOK_Click();
        EXPECT_EQ(Password(), text);
        EXPECT_EQ(closed, 1);
    }
    EXPECT_EQ(Password(1), "first");
    EXPECT_EQ(Password(3), "third");
}

TEST_F(frmSetPasswordTest, TellsWhetherTheUserAccepted) {
    frmSetPassword left = Form();
    EXPECT_FALSE(left.Accepted());
    left.cmdCancel_Click();
    EXPECT_FALSE(left.Accepted());
    frmSetPassword accepted = Form();
    accepted.cmdOK_Click();
    EXPECT_TRUE(accepted.Accepted());
}

TEST_F(frmSetPasswordTest, ChangesNothingWhenItIsCancelled) {
    frmSetPassword form = Form();
    form.Form_Load();
    form.txtPass = "other";
    form.cmdCancel_Click();
    EXPECT_EQ(closed, 1);
    form.Form_KeyDown(27);
    EXPECT_EQ(closed, 2);
    EXPECT_EQ(Password(), "second");
}

TEST_F(frmSetPasswordTest, EnterIsOkAndOtherKeysAreNotHandled) {
    frmSetPassword form = Form();
    form.Form_Load();
    form.txtPass = "new";
    for (int other : {0, 8, 9, 10, 12, 14, 27, 32, 97, 255, -13}) {
        int key = other;
        form.txtPass_KeyPress(key);
        EXPECT_EQ(key, other);
        if (other != 27)
            form.Form_KeyDown(other);
    }
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(Password(), "second");

    int enter = 13;
    form.txtPass_KeyPress(enter);
    EXPECT_EQ(enter, 0);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(Password(), "new");
}

TEST_F(frmSetPasswordTest, StoresIntoItsServerWhateverServerIsCurrent) {
    frmSetPassword form = Form();
    program.CurrentServer = 3;
    form.Form_Load();
    EXPECT_EQ(form.txtPass, "second");
    program.CurrentServer = 1;
    form.txtPass = "new";
    form.cmdOK_Click();
    EXPECT_EQ(Password(), "new");
    EXPECT_EQ(Password(1), "first");
    EXPECT_EQ(Password(3), "third");
}

TEST_F(frmSetPasswordTest, LogsAServerThatDoesNotExist) {
    frmSetPassword form = Form();
    program.Servers.Reset(1);
    form.Form_Load();
    EXPECT_EQ(form.txtPass, "");
    form.cmdOK_Click();
    EXPECT_EQ(LoggedErrors(*program.AppLog),
              (std::vector<std::string>{"frmSetPassword;Form_Load;9", "frmSetPassword;cmdOK_Click;9"}));
    form.cmdCancel_Click();
    EXPECT_EQ(closed, 1);
}

} // namespace
} // namespace quarn
