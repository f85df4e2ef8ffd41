#include "views/CountryLookup.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* DatabasePath = "C:\\Quarn\\countryip.dat";
constexpr const char* Loopback = "1\r\n2130706432;2147483647;LO\r\n";

class CountryLookupTest : public ::testing::Test {
  protected:
    void StartWith(std::int32_t count) {
        browser.PutList("q3", HeadlessBrowser::Addresses(count));
        ASSERT_TRUE(browser.Start());
    }
    std::vector<std::string> Countries() const {
        std::vector<std::string> countries;
        for (std::int32_t i = 1; i <= browser.program.Servers.HighestIndex(); ++i)
            countries.push_back(browser.program.Servers[i].Country);
        return countries;
    }
    void Recheck() { browser.Form().countries.mnuRecheckCountries_Click(); }
    bool Loaded() const { return browser.program.IPLocation->Initialized(); }

    HeadlessBrowser browser;
};

TEST_F(CountryLookupTest, LoadsTheDatabaseOnceOnFirstUse) {
    browser.fake.files.Put(DatabasePath, Loopback);
    StartWith(2);
    EXPECT_FALSE(Loaded());
    EXPECT_EQ(browser.fake.files.Reads(DatabasePath), 0);
    Recheck();
    EXPECT_TRUE(Loaded());
    Recheck();
    browser.Form().countries.EnsureIPDatabase();
    EXPECT_EQ(browser.fake.files.Reads(DatabasePath), 1);
}

TEST_F(CountryLookupTest, ShowsAMessageWhileItLoads) {
    browser.fake.files.Put(DatabasePath, Loopback);
    StartWith(1);
    browser.Controls().SetStatus(MessagePanel, "Something else.");
    std::vector<std::string> shown;
    browser.window.whenShowingChanges = [&] {
        shown.push_back(browser.Message());
        EXPECT_EQ(browser.Controls().sbMain.panels[MessagePanel].tag, "Something else.");
    };
    browser.Form().countries.EnsureIPDatabase();
    EXPECT_THAT(shown, ElementsAre("Initializing IP Database..."));
    EXPECT_EQ(browser.Message(), "Something else.");
    browser.Form().countries.EnsureIPDatabase();
    EXPECT_THAT(shown, SizeIs(1));
}

TEST_F(CountryLookupTest, LooksUpEveryListedServerAgain) {
    browser.fake.files.Put(DatabasePath, Loopback);
    StartWith(3);
    browser.program.Servers[2].Locked = 1;
    browser.ClickNode("fltkey"); // server 2 is not listed
    Recheck();
    EXPECT_THAT(Countries(), ElementsAre("LO", "--", "LO"));
    EXPECT_THAT(browser.Column(LocationColumn), Each("--"));
    browser.ClickNode("fltkey");
    EXPECT_THAT(browser.Column(LocationColumn), ElementsAre("LO", "--", "LO"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(CountryLookupTest, ChangesNothingWithoutADatabaseAndSaysSo) {
    struct Case {
        const char* name;
        const char* content; // null: no file
        const char* error;
    };
    for (const Case& c :
         {Case{"missing", nullptr, "53"}, Case{"empty", "", "62"}, Case{"no count", "x\r\n", "13"},
          Case{"no range", "0\r\n", "62"}, Case{"negative", "-1\r\n1;2;XX\r\n", "62"},
          Case{"too few", "2\r\n1;2;XX\r\n", "62"}, Case{"two fields", "1\r\n1000;2000\r\n", "9"},
          Case{"no number", "1\r\na;2;XX\r\n", "13"}, Case{"huge count", "2147483647\r\n1;2;XX\r\n", "62"}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(2));
        if (c.content != nullptr)
            other.fake.files.Put(DatabasePath, c.content);
        ASSERT_TRUE(other.Start());
        other.program.Servers[1].Country = "DE";
        other.Form().countries.mnuRecheckCountries_Click();
        EXPECT_THAT(other.Errors(), ElementsAre(std::string("frmMain;EnsureIPDatabase;") + c.error))
            << c.name;
        EXPECT_EQ(other.program.Servers[1].Country, "DE") << c.name;
        EXPECT_EQ(other.Message(), "Ready.") << c.name;
        ASSERT_THAT(other.fake.prompts.shown, SizeIs(1)) << c.name;
        EXPECT_EQ(other.fake.prompts.shown[0].kind, FakePrompts::Kind::Error);
        EXPECT_EQ(other.fake.prompts.shown[0].title, "Quarn - Error");
        EXPECT_EQ(other.fake.prompts.shown[0].text,
                  "The countries cannot be looked up, because the file \"countryip.dat\" in the program's "
                  "folder is missing or damaged.");

        other.fake.files.Put(DatabasePath, Loopback); // another program put it there
        other.Form().countries.mnuRecheckCountries_Click();
        EXPECT_EQ(other.program.Servers[1].Country, "LO") << c.name;
    }
}

TEST_F(CountryLookupTest, TriesOnceForAWholeList) {
    StartWith(0);
    browser.sckMaster.ReplyIn(0, MasterDatagram(gamenet::Family::Quake3, HeadlessBrowser::Addresses(100)));
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.RowCount(), 100);
    EXPECT_THAT(browser.Column(LocationColumn), Each("--"));
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;EnsureIPDatabase;53"));
    EXPECT_EQ(browser.fake.files.Reads(DatabasePath), 1);

    browser.fake.files.Put(DatabasePath, Loopback);
    browser.sckMaster.ReplyIn(0, MasterDatagram(gamenet::Family::Quake3, {"127.9.9.9:1"}));
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.Cell(101, LocationColumn), "--");
    EXPECT_EQ(browser.fake.files.Reads(DatabasePath), 1);

    browser.fake.prompts.yesNoAnswers = {true};
    browser.Form().servers.mnuServerListClear_Click();
    browser.sckMaster.ReplyIn(0, MasterDatagram(gamenet::Family::Quake3, {"127.9.9.9:1"}));
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.Cell(1, LocationColumn), "LO");
}

TEST_F(CountryLookupTest, TriesAgainForAServerThatIsAddedByHand) {
    StartWith(0);
    browser.Form().servers.AddServer("127.0.0.1", "1");
    EXPECT_EQ(browser.program.Servers[1].Country, "--");
    browser.fake.files.Put(DatabasePath, Loopback);
    browser.Form().servers.AddServer("127.0.0.1", "1");
    EXPECT_EQ(browser.program.Servers[2].Country, "LO");
}

TEST_F(CountryLookupTest, PassesOverAnAddressThatIsNotDotted) {
    browser.fake.files.Put(DatabasePath, Loopback);
    StartWith(3);
    for (const char* address : {"localhost", "1.2.3", "1.2.x.4", "1.2.99999999999.4", "", "."}) {
        browser.program.Servers[2].Address = address;
        for (std::int32_t i = 1; i <= 3; ++i)
            browser.program.Servers[i].Country = "old";
        Recheck();
        EXPECT_THAT(Countries(), ElementsAre("LO", "--", "LO")) << address;
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(CountryLookupTest, PassesOverARowWhoseRecordIsGone) {
    browser.fake.files.Put(DatabasePath, Loopback);
    StartWith(3);
    browser.Controls().lvwServers.Edit(2).main.tag = "9";
    Recheck();
    EXPECT_THAT(Countries(), ElementsAre("LO", "--", "LO"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

} // namespace
} // namespace quarn
