#include "query/frmAddServer.h"

#include "tests/fakes/ProgramTest.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class frmAddServerTest : public ProgramTest {
  protected:
    frmAddServerTest() {
        fake.hosts.addresses["games.example"] = "10.1.2.3";
        form.txtIP = "games.example";
        form.txtPort = "27960";
    }

    bool Add(const std::string& IP, const std::string& strPort) {
        if (isRefused)
            return false;
        added.push_back(IP + ':' + strPort);
        return true;
    }
    bool Wait(const std::function<bool()>& condition) {
        while (!condition() && !programCloses)
            fake.events.WaitForEvent();
        return !programCloses;
    }

    std::vector<std::string> added;
    bool isRefused = false;
    bool programCloses = false;
    int closed = 0;
    frmAddServer form{program,
                      fake.desktop,
                      "Arena",
                      {[this](const std::string& IP, const std::string& strPort) { return Add(IP, strPort); },
                       [this](const std::function<bool()>& condition) { return Wait(condition); },
                       [this] { ++closed; }}};
};

TEST_F(frmAddServerTest, NamesTheListThatGetsTheServer) {
    EXPECT_EQ(form.lblList, "The server is added to the list \"Arena\".");
    EXPECT_EQ(form.lblMessage, "");
}

TEST_F(frmAddServerTest, TellsWhatWasAdded) {
    std::vector<std::string> messages;
    form.MessageChanged = [&] { messages.push_back(form.lblMessage); };
    form.cmdOK_Click();
    EXPECT_EQ(form.lblMessage, "Added 10.1.2.3:27960.");
    EXPECT_EQ(form.focus, AddressField::Address);
    EXPECT_EQ(messages.back(), form.lblMessage);
    form.txtPort = "";
    form.cmdOK_Click();
    EXPECT_EQ(form.lblMessage, "") << "nothing was added this time";
    EXPECT_EQ(messages.back(), "");
}

TEST_F(frmAddServerTest, LeadsToTheFieldThatWasWrong) {
    const struct {
        const char* address;
        const char* port;
        bool isRefused;
        AddressField focus;
    } cases[] = {
        {"", "1", false, AddressField::Address},
        {"games.example", "", false, AddressField::Port},
        {"games.example", "x", false, AddressField::Port},
        {"nowhere.example", "1", false, AddressField::Address},
        {"games.example", "9999999999", true, AddressField::Port},
        {"games.example", "1", false, AddressField::Address},
    };
    for (const auto& c : cases) {
        form.txtIP = c.address;
        form.txtPort = c.port;
        isRefused = c.isRefused;
        form.cmdOK_Click();
        EXPECT_EQ(form.focus, c.focus) << c.address << ' ' << c.port;
    }
}

TEST_F(frmAddServerTest, LooksANameUpWhileEventsRunAndAddsOnce) {
    fake.hosts.lookUpMilliseconds = 5000;
    std::string meanwhile;
    fake.events.PostIn(100, [&] {
        meanwhile = form.lblMessage;
        form.txtPort = "1"; // what is typed now belongs to the next one
        form.cmdOK_Click();
    });
    form.cmdOK_Click();
    EXPECT_EQ(meanwhile, "Looking up games.example...");
    EXPECT_THAT(added, ElementsAre("10.1.2.3:27960"));
    EXPECT_EQ(form.lblMessage, "Added 10.1.2.3:27960.");
    EXPECT_THAT(fake.hosts.lookUps, ElementsAre("games.example"));
}

TEST_F(frmAddServerTest, CancelGivesALookUpUp) {
    fake.hosts.lookUpMilliseconds = 5000;
    fake.events.PostIn(100, [&] { form.cmdCancel_Click(); });
    form.cmdOK_Click();
    EXPECT_EQ(fake.clock.Elapsed(), 100);
    EXPECT_TRUE(form.Closed());
    EXPECT_EQ(closed, 1);
    EXPECT_THAT(added, IsEmpty());
    fake.events.RunFor(10'000);
    EXPECT_THAT(added, IsEmpty());
}

TEST_F(frmAddServerTest, AddsNothingWhenTheProgramClosesDuringALookUp) {
    fake.hosts.lookUpMilliseconds = 5000;
    fake.events.PostIn(100, [&] { programCloses = true; });
    form.cmdOK_Click();
    EXPECT_THAT(added, IsEmpty());
    EXPECT_EQ(form.lblMessage, "");
}

TEST_F(frmAddServerTest, OkAddsTheResolvedAddressWithThePortAsTypedAndStaysOpen) {
    form.txtPort = " 27960.0";
    form.cmdOK_Click();
    EXPECT_THAT(added, ElementsAre("10.1.2.3: 27960.0"));
    EXPECT_EQ(closed, 0);
}

TEST_F(frmAddServerTest, SeveralServersCanBeAddedInARowEvenTheSameTwice) {
    form.cmdOK_Click();
    form.cmdOK_Click();
    form.txtPort = "27961";
    form.cmdOK_Click();
    EXPECT_THAT(added, ElementsAre("10.1.2.3:27960", "10.1.2.3:27960", "10.1.2.3:27961"));
}

TEST_F(frmAddServerTest, ARefusedInputAddsNothingAndStaysOpen) {
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

TEST_F(frmAddServerTest, CancelClosesWithoutAdding) {
    form.cmdCancel_Click();
    EXPECT_EQ(closed, 1);
    EXPECT_THAT(added, IsEmpty());
}

TEST_F(frmAddServerTest, EnterInEitherFieldActsAsOk) {
    int key = '\r';
    form.txtIP_KeyPress(key);
    EXPECT_EQ(key, 0);
    key = '\r';
    form.txtPort_KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_THAT(added, ElementsAre("10.1.2.3:27960", "10.1.2.3:27960"));
}

TEST_F(frmAddServerTest, OtherKeysAreNotHandled) {
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
