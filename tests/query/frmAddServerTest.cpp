#include "query/frmAddServer.h"

#include "tests/fakes/ProgramTest.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AddServerDialog : public ProgramTest {
  protected:
    AddServerDialog() {
        fake.hosts.addresses["games.example"] = "10.1.2.3";
        form.txtIP = "games.example";
        form.txtPort = "27960";
    }

    std::vector<std::string> added;
    int closed = 0;
    frmAddServer form{
        program, fake.desktop,
        [this](const std::string& IP, const std::string& strPort) { added.push_back(IP + ':' + strPort); },
        [this] { ++closed; }};
};

TEST_F(AddServerDialog, OkAddsTheResolvedAddressWithThePortAsTypedAndStaysOpen) {
    form.txtPort = " 27960.0";
    form.cmdOK_Click();
    EXPECT_THAT(added, ElementsAre("10.1.2.3: 27960.0"));
    EXPECT_EQ(closed, 0);
}

TEST_F(AddServerDialog, SeveralServersCanBeAddedInARowAlsoTheSameTwice) {
    form.cmdOK_Click();
    form.cmdOK_Click();
    form.txtPort = "27961";
    form.cmdOK_Click();
    EXPECT_THAT(added, ElementsAre("10.1.2.3:27960", "10.1.2.3:27960", "10.1.2.3:27961"));
}

TEST_F(AddServerDialog, ARefusedInputAddsNothingAndStaysOpen) {
    form.txtPort = "27a";
    form.cmdOK_Click();
    EXPECT_EQ(fake.prompts.shown.size(), 1U);
    form.txtPort = "27960";
    form.txtIP = "nowhere.example";
    form.cmdOK_Click();
    EXPECT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_THAT(added, IsEmpty());
    EXPECT_EQ(closed, 0);
}

TEST_F(AddServerDialog, CancelClosesWithoutAdding) {
    form.cmdCancel_Click();
    EXPECT_EQ(closed, 1);
    EXPECT_THAT(added, IsEmpty());
}

TEST_F(AddServerDialog, EnterInEitherBoxIsSwallowedAndActsAsOk) {
    int key = '\r';
    form.txtIP_KeyPress(key);
    EXPECT_EQ(key, 0);
    key = '\r';
    form.txtPort_KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_THAT(added, ElementsAre("10.1.2.3:27960", "10.1.2.3:27960"));
}

TEST_F(AddServerDialog, EveryOtherKeyIsLeftAlone) {
    for (int code = 0; code < 256; ++code) {
        if (code == '\r')
            continue;
        int key = code;
        form.txtIP_KeyPress(key);
        EXPECT_EQ(key, code);
        form.txtPort_KeyPress(key);
        EXPECT_EQ(key, code);
    }
    EXPECT_THAT(added, IsEmpty());
    EXPECT_EQ(closed, 0);
}

} // namespace
} // namespace quarn
