#include "launch/frmOptions.h"

#include "core/modMain.h"
#include "query/clsIPLocation.h"
#include "tests/fakes/ProgramTest.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace quarn {
namespace {

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

class frmOptionsTest : public ProgramTest {
  protected:
    frmOptions& Open() {
        form = std::make_unique<frmOptions>(program, fake.desktop,
                                            frmOptions::MainWindow{[this] { done.push_back("interface"); },
                                                                   [this] { done.push_back("tree"); },
                                                                   [this] { done.push_back("menu"); }},
                                            [this] { done.push_back("close"); });
        form->Form_Load();
        return *form;
    }

    std::unique_ptr<frmOptions> form;
    std::vector<std::string> done;
};

TEST_F(frmOptionsTest, ShowsTheSettingsOfAFirstRun) {
    LoadSettings(program, fake.desktop);
    const frmOptions& options = Open();
    EXPECT_EQ(options.chkMinToTray, 1);
    EXPECT_EQ(options.chkRemWinPos, 0);
    EXPECT_EQ(options.chkKeepOnTop, 0);
    EXPECT_EQ(options.txtScanPingTimeout, "1000");
    EXPECT_EQ(options.optQuitAfterLaunch, 0);
    EXPECT_EQ(options.cmbNumFavorites, 1); // it reads "2"
}

TEST_F(frmOptionsTest, BindsEachControlToItsOwnSetting) {
    program.MinToTray = 0;
    program.RemWinPos = 1;
    program.KeepOnTop = 0;
    EXPECT_EQ(Open().chkRemWinPos, 1);
    EXPECT_EQ(form->chkMinToTray + form->chkKeepOnTop, 0);
    program.RemWinPos = 0;
    program.KeepOnTop = 1;
    EXPECT_EQ(Open().chkKeepOnTop, 1);
    EXPECT_EQ(form->chkMinToTray + form->chkRemWinPos, 0);

    form->chkMinToTray = 1;
    form->chkKeepOnTop = 0;
    form->cmdOK_Click();
    EXPECT_EQ(program.MinToTray, 1);
    EXPECT_EQ(program.KeepOnTop, 0);
    EXPECT_EQ(program.RemWinPos, 0);

    Open().chkRemWinPos = 1;
    form->cmdOK_Click();
    EXPECT_EQ(program.RemWinPos, 1);
    EXPECT_EQ(program.KeepOnTop, 0);
}

TEST_F(frmOptionsTest, ShowsSettingsOutOfRange) {
    const struct {
        std::int32_t setting;
        std::int32_t minToTray;
        std::int32_t keepOnTopOrRemWinPos;
        std::int32_t quitAfterLaunch;
        std::int32_t numFavorites;
    } cases[] = {
        {Lowest, 1, 0, -1, -1}, {-1, 1, 0, -1, -1},     {0, 0, 0, 0, -1}, {1, 1, 1, 1, 0},
        {2, 1, 0, 2, 1},        {3, 1, 0, -1, 2},       {9, 1, 0, -1, 8}, {10, 1, 0, -1, 8},
        {255, 1, 0, -1, 8},     {Highest, 1, 0, -1, 8},
    };
    for (const auto& c : cases) {
        program.MinToTray = program.KeepOnTop = program.RemWinPos = program.QuitAfterStart =
            program.FavoritesNumber = program.PingTimeout = c.setting;
        const frmOptions& options = Open();
        EXPECT_EQ(options.chkMinToTray, c.minToTray) << c.setting;
        EXPECT_EQ(options.chkKeepOnTop, c.keepOnTopOrRemWinPos) << c.setting;
        EXPECT_EQ(options.chkRemWinPos, c.keepOnTopOrRemWinPos) << c.setting;
        EXPECT_EQ(options.optQuitAfterLaunch, c.quitAfterLaunch) << c.setting;
        EXPECT_EQ(options.cmbNumFavorites, c.numFavorites) << c.setting;
        EXPECT_EQ(options.txtScanPingTimeout, std::to_string(c.setting));
    }
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(frmOptionsTest, OkStoresAllAndCloses) {
    frmOptions& options = Open();
    options.chkMinToTray = 0;
    options.chkRemWinPos = 1;
    options.chkKeepOnTop = 1;
    options.txtScanPingTimeout = "250";
    options.optQuitAfterLaunch = 2;
    options.cmbNumFavorites = 8;
    options.cmdOK_Click();
    EXPECT_EQ(program.MinToTray, 0);
    EXPECT_EQ(program.RemWinPos, 1);
    EXPECT_EQ(program.KeepOnTop, 1);
    EXPECT_EQ(program.PingTimeout, 250);
    EXPECT_EQ(program.QuitAfterStart, 2);
    EXPECT_EQ(program.FavoritesNumber, 9);
    EXPECT_EQ(done, std::vector<std::string>{"close"});
    EXPECT_EQ(fake.files.TotalWrites(), 0) << "the settings file gets them at the end";
}

TEST_F(frmOptionsTest, StoresEachOptionByItsIndexAndEachNumberByItsPlace) {
    for (std::int32_t option = 0; option <= 2; ++option) {
        Open().optQuitAfterLaunch = option;
        form->cmdOK_Click();
        EXPECT_EQ(program.QuitAfterStart, option);
    }
    for (std::int32_t index = 0; index <= 8; ++index) {
        Open().cmbNumFavorites = index;
        form->cmdOK_Click();
        EXPECT_EQ(program.FavoritesNumber, index + 1);
    }
}

TEST_F(frmOptionsTest, KeepsTheActionWhenNoneIsChosen) {
    for (const std::int32_t action : {-1, 3, 77, Highest, Lowest}) {
        program.QuitAfterStart = action;
        Open().cmdOK_Click();
        EXPECT_EQ(program.QuitAfterStart, action);
    }
}

TEST_F(frmOptionsTest, StoresEveryWholeNumberOfMilliseconds) {
    const struct {
        const char* text;
        std::int32_t timeout;
    } cases[] = {
        {"1", 1},
        {"0", 0},
        {"-1", -1},
        {" 500 ", 500},
        {"+7", 7},
        {"0010", 10},
        {"1e3", 1000},
        {"2.5", 2},
        {"3.5", 4},
        {"65536", 65536},
        {"2147483647", Highest},
        {"-2147483648", Lowest},
    };
    for (const auto& c : cases) {
        Open().txtScanPingTimeout = c.text;
        form->cmdOK_Click();
        EXPECT_EQ(program.PingTimeout, c.timeout) << c.text;
        EXPECT_EQ(form->wrongField, frmOptions::Field::None);
    }
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(frmOptionsTest, StaysOpenAndStoresNothingWithoutANumber) {
    const std::vector<std::string> texts = {"",
                                            " ",
                                            "abc",
                                            "10ms",
                                            "1 000 x",
                                            "-",
                                            "+",
                                            ".",
                                            "e3",
                                            "--1",
                                            "1..2",
                                            "0x10",
                                            "NaN",
                                            "inf",
                                            "\xb2",
                                            "2147483648",
                                            "-2147483649",
                                            "99999999999999999999",
                                            "1e10",
                                            "1e400",
                                            std::string(10'000, '9'),
                                            std::string(10'000, 'x'),
                                            std::string("1\0", 2)};
    for (const std::string& text : texts) {
        fake.prompts.shown.clear();
        done.clear();
        frmOptions& options = Open();
        options.txtScanPingTimeout = text;
        options.chkMinToTray = 0;
        options.chkRemWinPos = 1;
        options.chkKeepOnTop = 1;
        options.optQuitAfterLaunch = 2;
        options.cmbNumFavorites = 8;
        options.cmdOK_Click();
        ASSERT_EQ(fake.prompts.shown.size(), 1U) << text;
        EXPECT_EQ(fake.prompts.shown[0].text, "The scan timeout must be a whole number of milliseconds!");
        EXPECT_EQ(fake.prompts.shown[0].title, "Quarn - Error");
        EXPECT_EQ(options.wrongField, frmOptions::Field::ScanPingTimeout);
        EXPECT_TRUE(done.empty()) << text;
        EXPECT_EQ(options.txtScanPingTimeout, text);
    }
    EXPECT_EQ(program.MinToTray, 1);
    EXPECT_EQ(program.RemWinPos, 0);
    EXPECT_EQ(program.KeepOnTop, 0);
    EXPECT_EQ(program.PingTimeout, 1000);
    EXPECT_EQ(program.QuitAfterStart, 0);
    EXPECT_EQ(program.FavoritesNumber, 2);
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(frmOptionsTest, ReadsTheNumberAsTheUserWritesNumbers) {
    fake.locale.german = true;
    Open().txtScanPingTimeout = "1.500";
    form->cmdOK_Click();
    EXPECT_EQ(program.PingTimeout, 1500);
}

TEST_F(frmOptionsTest, CancelAndEscapeStoreNothing) {
    for (const bool byKey : {false, true}) {
        done.clear();
        frmOptions& options = Open();
        options.chkMinToTray = 0;
        options.chkKeepOnTop = 1;
        options.txtScanPingTimeout = "1";
        options.optQuitAfterLaunch = 1;
        options.cmbNumFavorites = 4;
        if (byKey)
            options.Form_KeyDown(27);
        else
            options.cmdCancel_Click();
        EXPECT_EQ(done, std::vector<std::string>{"close"});
        EXPECT_EQ(program.MinToTray, 1);
        EXPECT_EQ(program.KeepOnTop, 0);
        EXPECT_EQ(program.PingTimeout, 1000);
        EXPECT_EQ(program.QuitAfterStart, 0);
        EXPECT_EQ(program.FavoritesNumber, 2);
    }
}

struct Extra {
    const char* name;
    std::int32_t frmOptions::*box;
    std::int32_t ProgramState::*setting;
};

constexpr Extra ExtraBoxes[] = {
    {"AskMasterFirst", &frmOptions::chkAskMasterFirst, &ProgramState::AskMasterFirst},
    {"ListOnce", &frmOptions::chkListOnce, &ProgramState::ListOnce},
    {"SaveListAtExit", &frmOptions::chkSaveListAtExit, &ProgramState::SaveListAtExit},
    {"NaturalSort", &frmOptions::chkNaturalSort, &ProgramState::NaturalSort},
    {"KeepSorted", &frmOptions::chkKeepSorted, &ProgramState::KeepSorted},
    {"ShowAtStart", &frmOptions::chkShowAtStart, &ProgramState::ShowAtStart},
    {"SearchBox", &frmOptions::chkSearchBox, &ProgramState::SearchBox},
    {"AskPassword", &frmOptions::chkAskPassword, &ProgramState::AskPassword},
};

TEST_F(frmOptionsTest, ShowsNoExtraAtFirst) {
    LoadSettings(program, fake.desktop);
    const frmOptions& options = Open();
    EXPECT_EQ(options.txtSimultaneous, "1");
    for (const Extra& extra : ExtraBoxes)
        EXPECT_EQ(options.*extra.box, 0) << extra.name;
}

TEST_F(frmOptionsTest, BindsEachExtraToItsOwnSetting) {
    for (const Extra& extra : ExtraBoxes) {
        program.*extra.setting = 1;
        Open();
        for (const Extra& other : ExtraBoxes)
            EXPECT_EQ(form.get()->*other.box, &other == &extra ? 1 : 0) << extra.name << ' ' << other.name;
        form.get()->*extra.box = 0;
        form->cmdOK_Click();
        EXPECT_EQ(program.*extra.setting, 0) << extra.name;

        Open().*extra.box = 1;
        form->cmdOK_Click();
        for (const Extra& other : ExtraBoxes)
            EXPECT_EQ(program.*other.setting, &other == &extra ? 1 : 0) << extra.name << ' ' << other.name;
        program.*extra.setting = 0;
    }
}

TEST_F(frmOptionsTest, CancelStoresNoExtra) {
    frmOptions& options = Open();
    options.txtSimultaneous = "8";
    for (const Extra& extra : ExtraBoxes)
        options.*extra.box = 1;
    options.cmdCancel_Click();
    EXPECT_EQ(program.Simultaneous, 1);
    for (const Extra& extra : ExtraBoxes)
        EXPECT_EQ(program.*extra.setting, 0) << extra.name;
}

TEST_F(frmOptionsTest, ANumberToAskAtOnceCountsAsTheNearest) {
    const struct {
        const char* text;
        std::int32_t atOnce;
    } cases[] = {
        {"1", 1},   {"2", 2},     {"64", 64},         {" 8 ", 8},
        {"+7", 7},  {"008", 8},   {"0", 1},           {"-5", 1},
        {"65", 64}, {"1000", 64}, {"2147483648", 64}, {"-99999999999999999999", 1},
        {"2.4", 2}, {"2.6", 3},   {"1e1", 10},        {"1e300", 64},
        {"0.2", 1}, {"64.4", 64}, {"-1e300", 1},
    };
    for (const auto& c : cases) {
        Open().txtSimultaneous = c.text;
        form->cmdOK_Click();
        EXPECT_EQ(program.Simultaneous, c.atOnce) << c.text;
        EXPECT_EQ(form->wrongField, frmOptions::Field::None);
    }
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(frmOptionsTest, StaysOpenWithoutANumberToAskAtOnce) {
    for (const char* const text : {"", " ", "abc", "8x", "-", "1..2", "0x10", "1 2", "NaN", "inf", "\xb2"}) {
        fake.prompts.shown.clear();
        done.clear();
        frmOptions& options = Open();
        options.txtSimultaneous = text;
        options.chkMinToTray = 0;
        options.chkSearchBox = 1;
        options.cmdOK_Click();
        ASSERT_EQ(fake.prompts.shown.size(), 1U) << text;
        EXPECT_EQ(fake.prompts.shown[0].text,
                  "The number of servers asked at once must be a number from 1 to 64!");
        EXPECT_EQ(options.wrongField, frmOptions::Field::Simultaneous);
        EXPECT_TRUE(done.empty()) << text;
        EXPECT_EQ(program.MinToTray, 1);
        EXPECT_EQ(program.Simultaneous, 1);
        EXPECT_EQ(program.SearchBox, 0);
    }
}

TEST_F(frmOptionsTest, OtherKeysCloseNothing) {
    Open();
    for (const int key : {0, 13, 26, 28, 32, 112, -27, 27 + 256})
        form->Form_KeyDown(key);
    EXPECT_TRUE(done.empty());
}

TEST_F(frmOptionsTest, AppliesTheSettingsHoweverItCloses) {
    Open().cmdOK_Click();
    form->Form_Unload();
    EXPECT_EQ(done, (std::vector<std::string>{"close", "interface", "tree", "menu"}));
    done.clear();
    Open().cmdCancel_Click();
    form->Form_Unload();
    EXPECT_EQ(done, (std::vector<std::string>{"close", "interface", "tree", "menu"}));
}

} // namespace
} // namespace quarn
