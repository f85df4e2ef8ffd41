#include "launch/frmGamSetup.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace quarn {
namespace {

using Texts = std::vector<std::string>;

class frmGamSetupTest : public ProgramTest {
  protected:
    frmGamSetupTest() {
        program.IniVer = 1050012;
        program.IniDesc = "Test games";
        DefineGames(
            {{"Arena", "arena.exe", "ar"}, {"Crowbar", "crowbar.exe", "cb"}, {"Demons", "demons.exe", "dm"}});
        program.GamePath[1] = "C:\\Games\\Arena\\";
        program.GameConfig[1] = "arena.cfg";
        program.GamePlayerName[1] = "Visor";
        program.GameVisible[1] = 1;
        program.GamePath[2] = "D:\\Crowbar";
        fake.files.Put("C:\\Games\\Arena\\arena.exe", "");
        fake.files.Put("E:\\Crowbar\\crowbar.exe", "");
    }

    struct Definition {
        const char* description;
        const char* exeName;
        const char* gameShort;
    };
    void DefineGames(const std::vector<Definition>& definitions) {
        ResetGames(program, static_cast<std::int32_t>(definitions.size()));
        std::int32_t i = 0;
        for (const Definition& definition : definitions) {
            GameDefinition& game = program.Games[++i];
            game.Description = definition.description;
            game.ExeName = definition.exeName;
            game.GameShort = definition.gameShort;
        }
    }

    frmGamSetup& Open(const std::string& game = {}) {
        form = std::make_unique<frmGamSetup>(
            program, fake.desktop, [this] { done.push_back("tree"); }, [this] { done.push_back("close"); },
            game);
        form->Form_Load();
        return *form;
    }
    Texts ItemTexts() const {
        Texts texts;
        for (const frmGamSetup::GameItem& item : form->lvwGameSel)
            texts.push_back(item.key + "=" + item.text);
        return texts;
    }

    // What the user does.
    void Select(const std::string& game) { form->lvwGameSel_ItemClick(game); }
    void TypePath(const std::string& text) {
        form->txtPath = text;
        form->txtPath_Change();
    }
    void TypeConfig(const std::string& text) {
        form->txtConfig = text;
        form->txtConfig_Change();
    }
    void TypeName(const std::string& text) {
        form->txtName = text;
        form->txtName_Change();
    }
    void Check(std::int32_t value) {
        form->chkVisible = value;
        form->chkVisible_Click();
    }
    void Browse(const std::string& folder) {
        fake.prompts.folderAnswers.push_back(folder);
        form->cmdBrowse_Click();
    }
    // The message boxes since the last call, without the folder dialog.
    Texts Messages() {
        Texts texts;
        for (const FakePrompts::Prompt& prompt : fake.prompts.shown)
            if (prompt.kind == FakePrompts::Kind::Error)
                texts.push_back(prompt.text);
        fake.prompts.shown.clear();
        return texts;
    }

    std::unique_ptr<frmGamSetup> form;
    Texts done;
};

constexpr const char* NotFound = "The selected game was not found in this directory!";

TEST_F(frmGamSetupTest, BeginsWithTheGameThatIsAskedFor) {
    Open("cb");
    EXPECT_EQ(form->SelectedGame(), "cb");
    EXPECT_EQ(form->txtPath, "D:\\Crowbar");
    for (const char* game : {"", "CB", "fav1"}) {
        Open(game);
        EXPECT_EQ(form->SelectedGame(), "ar") << game;
        EXPECT_EQ(form->txtName, "Visor") << game;
    }
}

TEST_F(frmGamSetupTest, KnowsWhichGamesHaveAPath) {
    program.GamePath[3] = "\\"; // as a launch without a path leaves it
    Open();
    EXPECT_TRUE(form->IsSetUp("ar"));
    EXPECT_TRUE(form->IsSetUp("cb"));
    EXPECT_FALSE(form->IsSetUp("dm"));
    EXPECT_FALSE(form->IsSetUp("none"));
    TypePath("");
    EXPECT_FALSE(form->IsSetUp("ar"));
    Select("dm");
    TypePath("E:\\Demons");
    EXPECT_TRUE(form->IsSetUp("dm"));
}

TEST_F(frmGamSetupTest, ListsTheGamesAndSelectsTheFirst) {
    Open();
    EXPECT_EQ(ItemTexts(), (Texts{"ar=Arena", "cb=Crowbar", "dm=Demons"}));
    EXPECT_TRUE(form->HasSelection());
    EXPECT_EQ(form->SelectedGame(), "ar");
    EXPECT_EQ(form->txtPath, "C:\\Games\\Arena\\");
    EXPECT_EQ(form->txtConfig, "arena.cfg");
    EXPECT_EQ(form->txtName, "Visor");
    EXPECT_EQ(form->chkVisible, 1);
    EXPECT_EQ(form->lblDefinition, "Test games");
    EXPECT_EQ(form->lblDefVersion, "1.05.0012");
}

TEST_F(frmGamSetupTest, ShowsAVersionOfAnyLength) {
    const struct {
        std::int32_t version;
        const char* text;
    } cases[] = {
        {1050012, "1.05.0012"},
        {1000001, "1.00.0001"},
        {9999999, "9.99.9999"},
        {0, "0..0"},
        {7, "7..7"},
        {12, "1.2.12"},
        {105, "1.05.105"},
        {1234, "1.23.1234"},
        {12345, "1.23.2345"},
        {12345678, "1.23.5678"},
        {-1, "-.1.-1"},
        {-1050012, "-.10.0012"},
        {std::numeric_limits<std::int32_t>::max(), "2.14.3647"},
        {std::numeric_limits<std::int32_t>::min(), "-.21.3648"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DefinitionVersionText(c.version), c.text);
}

TEST_F(frmGamSetupTest, OpensEmptyWithoutGames) {
    DefineGames({});
    Open();
    EXPECT_TRUE(form->lvwGameSel.empty());
    EXPECT_FALSE(form->HasSelection());
    EXPECT_EQ(form->txtPath, "");
    EXPECT_EQ(form->lblDefinition, "Test games");
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
    form->cmdOK_Click();
    EXPECT_EQ(done, Texts{"close"});
}

TEST_F(frmGamSetupTest, ListsEachKeyOnce) {
    DefineGames(
        {{"One", "1.exe", "a"}, {"Two", "2.exe", "a"}, {"Three", "3.exe", "A"}, {"", "", ""}, {"", "", ""}});
    Open();
    EXPECT_EQ(ItemTexts(), (Texts{"a=One", "A=Three", "="}));
    EXPECT_EQ(LoggedErrors(*program.AppLog),
              (Texts{"frmGamSetup;Form_Load;35602", "frmGamSetup;Form_Load;35602"}));
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(form->SelectedGame(), "a");
}

TEST_F(frmGamSetupTest, ShowsAnErrorThatOccursWhileItOpens) {
    program.GamePath.Reset(2); // one game has no setup
    Open();
    EXPECT_EQ(LoggedErrors(*program.AppLog), (Texts{"frmGamSetup;Form_Load;9"}));
    EXPECT_EQ(Messages().size(), 1U);
}

TEST_F(frmGamSetupTest, ShowsTheFieldsOfTheGameThatIsClicked) {
    Open();
    Select("cb");
    EXPECT_EQ(form->txtPath, "D:\\Crowbar");
    EXPECT_EQ(form->txtConfig, "");
    EXPECT_EQ(form->txtName, "");
    EXPECT_EQ(form->chkVisible, 0);
    Select("ar");
    EXPECT_EQ(form->txtPath, "C:\\Games\\Arena\\");
    EXPECT_EQ(form->chkVisible, 1);
}

TEST_F(frmGamSetupTest, AnyVisibleGameIsChecked) {
    for (const std::int32_t visible : {1, 2, -1, 255, std::numeric_limits<std::int32_t>::min()}) {
        program.GameVisible[1] = visible;
        EXPECT_EQ(Open().chkVisible, 1) << visible;
    }
}

TEST_F(frmGamSetupTest, KeepsTheInputForEachGame) {
    Open();
    TypePath("C:\\a");
    TypeConfig("a.cfg");
    TypeName("A");
    Check(0);
    Select("cb");
    EXPECT_EQ(form->txtPath, "D:\\Crowbar");
    TypePath("C:\\b");
    TypeName("B");
    Check(1);
    Select("dm");
    EXPECT_EQ(form->txtPath + form->txtConfig + form->txtName, "");
    Select("ar");
    EXPECT_EQ(form->txtPath, "C:\\a");
    EXPECT_EQ(form->txtConfig, "a.cfg");
    EXPECT_EQ(form->txtName, "A");
    EXPECT_EQ(form->chkVisible, 0);

    EXPECT_EQ(program.GamePath[1], "C:\\Games\\Arena\\") << "nothing is in force before OK";
    form->cmdOK_Click();
    EXPECT_EQ(done, Texts{"close"});
    EXPECT_EQ(program.GamePath[1], "C:\\a");
    EXPECT_EQ(program.GameConfig[1], "a.cfg");
    EXPECT_EQ(program.GamePlayerName[1], "A");
    EXPECT_EQ(program.GameVisible[1], 0);
    EXPECT_EQ(program.GamePath[2], "C:\\b");
    EXPECT_EQ(program.GamePlayerName[2], "B");
    EXPECT_EQ(program.GameVisible[2], 1);
    EXPECT_EQ(program.GamePath[3], "");
    EXPECT_EQ(fake.files.TotalWrites(), 0);
}

TEST_F(frmGamSetupTest, StoresTypedTextsUnchecked) {
    for (const std::string& text : {std::string("C:\\nowhere"), std::string(), std::string("\\"),
                                    std::string("?:*\""), std::string(" \t "), std::string("\xff\x80"),
                                    std::string(10'000, 'p'), std::string("+exec \"x\"")}) {
        Open();
        TypePath(text);
        TypeConfig(text);
        TypeName(text);
        form->cmdOK_Click();
        EXPECT_EQ(program.GamePath[1], text);
        EXPECT_EQ(program.GameConfig[1], text);
        EXPECT_EQ(program.GamePlayerName[1], text);
    }
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(frmGamSetupTest, BrowsesFromTheProgramsFolder) {
    Open();
    Select("cb");
    Browse("E:\\Crowbar");
    ASSERT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_EQ(fake.prompts.shown[0].kind, FakePrompts::Kind::Folder);
    EXPECT_EQ(fake.prompts.shown[0].text, "C:\\Quarn\\");
}

TEST_F(frmGamSetupTest, AcceptsAFolderThatContainsTheGame) {
    Open();
    Select("cb");
    for (const char* folder : {"E:\\Crowbar", "E:\\Crowbar\\"}) {
        Check(0);
        Browse(folder);
        EXPECT_EQ(form->txtPath, "E:\\Crowbar\\");
        EXPECT_EQ(form->chkVisible, 1);
        EXPECT_EQ(Messages(), Texts{});
    }
    form->cmdOK_Click();
    EXPECT_EQ(program.GamePath[2], "E:\\Crowbar\\");
    EXPECT_EQ(program.GameVisible[2], 1);
    EXPECT_EQ(program.GameVisible[1], 1);
}

TEST_F(frmGamSetupTest, AFolderWithoutTheGameClearsThePathButNotItsField) {
    fake.files.PutFolder("C:\\Folder\\arena.exe");
    fake.files.Put("C:\\File", "");
    for (const char* folder :
         {"", "C:\\Games", "E:\\Crowbar", "Q:\\", "C:\\Folder", "C:\\File", "relative"}) {
        program.GamePath[1] = "C:\\Games\\Arena\\";
        Open();
        Browse(folder);
        EXPECT_EQ(Messages(), Texts{NotFound}) << folder;
        EXPECT_EQ(form->txtPath, "C:\\Games\\Arena\\") << folder;
        EXPECT_EQ(form->chkVisible, 1) << folder;
        form->cmdOK_Click();
        EXPECT_EQ(program.GamePath[1], "") << folder;
        EXPECT_EQ(program.GameVisible[1], 1) << folder;
    }
}

TEST_F(frmGamSetupTest, AFolderWithoutTheGameMakesNoHiddenGameVisible) {
    Open();
    Check(0);
    for (const char* folder : {"", "E:\\Crowbar"}) {
        Browse(folder);
        EXPECT_EQ(form->chkVisible, 0) << folder;
    }
    form->cmdOK_Click();
    EXPECT_EQ(program.GameVisible[1], 0);
}

TEST_F(frmGamSetupTest, AClearedPathComesBackWithTheNextEdit) {
    Open();
    Browse("");
    TypePath("C:\\Games\\Arena");
    form->cmdOK_Click();
    EXPECT_EQ(program.GamePath[1], "C:\\Games\\Arena");
    Open();
    Browse("");
    Select("cb");
    Select("ar");
    EXPECT_EQ(form->txtPath, "");
}

TEST_F(frmGamSetupTest, CancelAndEscapeChangeNothing) {
    for (const bool byKey : {false, true}) {
        done.clear();
        Open();
        TypePath("C:\\a");
        TypeConfig("a");
        TypeName("a");
        Check(0);
        if (byKey)
            form->Form_KeyDown(27);
        else
            form->cmdCancel_Click();
        form->Form_Unload();
        EXPECT_EQ(done, (Texts{"close", "tree"}));
        EXPECT_EQ(program.GamePath[1], "C:\\Games\\Arena\\");
        EXPECT_EQ(program.GameConfig[1], "arena.cfg");
        EXPECT_EQ(program.GamePlayerName[1], "Visor");
        EXPECT_EQ(program.GameVisible[1], 1);
    }
    done.clear();
    Open();
    for (const int key : {0, 13, 26, 28, 32, -27})
        form->Form_KeyDown(key);
    EXPECT_EQ(done, Texts{});
}

TEST_F(frmGamSetupTest, ClosingRefreshesTheTreeAfterTheSettingsWereStored) {
    Open();
    Check(0);
    form->cmdOK_Click();
    EXPECT_EQ(program.GameVisible[1], 0);
    form->Form_Unload();
    EXPECT_EQ(done, (Texts{"close", "tree"}));
}

} // namespace
} // namespace quarn
