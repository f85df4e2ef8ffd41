#include "core/modMain.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"
#include "tests/fakes/WatchedProfiles.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;

constexpr const char* SettingsFile = "C:\\Quarn\\Quarn.ini";
constexpr const char* CopyFile = "C:\\Quarn\\Quarn.ini.new";

struct NumberSettingCase {
    const char* section;
    const char* key;
    std::int32_t ProgramState::*value;
    std::int32_t missing;
};

constexpr NumberSettingCase Numbers[] = {
    {"General", "MinToTray", &ProgramState::MinToTray, 1},
    {"General", "KeepOnTop", &ProgramState::KeepOnTop, 0},
    {"General", "RemWinPos", &ProgramState::RemWinPos, 0},
    {"General", "WinTop", &ProgramState::WinTop, 500},
    {"General", "WinLeft", &ProgramState::WinLeft, 500},
    {"General", "WinHeight", &ProgramState::WinHeight, 400},
    {"General", "WinWidth", &ProgramState::WinWidth, 400},
    {"General", "WinState", &ProgramState::WinState, 0},
    {"Selection", "LastGame", &ProgramState::LastGame, 1},
    {"Selection", "LastServer", &ProgramState::LastServer, 1},
    {"Selection", "LastSortColumn", &ProgramState::LastSortColumn, 1},
    {"Selection", "LastSortOrder", &ProgramState::LastSortOrder, 1},
    {"Filter", "Locked", &ProgramState::FilterLocked, 1},
    {"Filter", "Ping", &ProgramState::FilterPing, 1},
    {"Scanning", "PingTimeout", &ProgramState::PingTimeout, 1000},
    {"Favorites", "Number", &ProgramState::FavoritesNumber, 2},
    {"Launcher", "QuitAfterStart", &ProgramState::QuitAfterStart, 0},
};

class modMainSettingsTest : public ProgramTest {
  protected:
    void Load(const std::string& settings) {
        fake.files.Put(SettingsFile, settings);
        LoadSettings(program, fake.desktop);
    }
    std::string Saved() {
        SaveSettings(program, fake.desktop);
        return fake.files.Get(SettingsFile);
    }
    void ExpectDefaults() {
        for (const auto& number : Numbers)
            EXPECT_EQ(program.*number.value, number.missing) << number.key;
        for (std::int32_t folder = 1; folder <= MaxFavoritesFolders; ++folder)
            EXPECT_EQ(FavoriteName(program, folder), "");
        for (std::int32_t game = 1; game <= program.GameNum; ++game) {
            EXPECT_EQ(program.GamePath[game], "");
            EXPECT_EQ(program.GameConfig[game], "");
            EXPECT_EQ(program.GamePlayerName[game], "");
            EXPECT_EQ(program.GameVisible[game], 0);
        }
    }
};

constexpr const char* FirstSave =
    "[General]\r\nMinToTray=1\r\nKeepOnTop=0\r\nRemWinPos=0\r\nWinTop=500\r\n"
    "WinLeft=500\r\nWinHeight=400\r\nWinWidth=400\r\nWinState=0\r\n"
    "[Selection]\r\nLastGame=1\r\nLastServer=1\r\nLastSortColumn=1\r\n"
    "LastSortOrder=1\r\n"
    "[Filter]\r\nLocked=1\r\nPing=1\r\n"
    "[Scanning]\r\nPingTimeout=1000\r\n"
    "[Favorites]\r\nNumber=2\r\nName1=\r\nName2=\r\nName3=\r\nName4=\r\nName5=\r\n"
    "Name6=\r\nName7=\r\nName8=\r\nName9=\r\n"
    "[Launcher]\r\nQuitAfterStart=0\r\n";

TEST_F(modMainSettingsTest, AFirstRunHasTheDefaults) {
    ResetGames(program, 2);
    LoadSettings(program, fake.desktop);
    ExpectDefaults();
    EXPECT_EQ(fake.files.TotalWrites(), 0);
}

TEST_F(modMainSettingsTest, AMissingFileOverridesWhatWasSetBefore) {
    ResetGames(program, 1);
    for (const auto& number : Numbers)
        program.*number.value = 77;
    FavoriteName(program, 9) = "old";
    program.GameVisible[1] = 1;
    program.GamePath[1] = "old";
    LoadSettings(program, fake.desktop);
    ExpectDefaults();
}

TEST_F(modMainSettingsTest, DamagedOrUnreadableFilesGiveTheDefaults) {
    ResetGames(program, 1);
    for (const char* text : {"", "\r\n", "[General]\r\n", "MinToTray=7\r\n", "[General\r\nMinToTray=7\r\n",
                             ";[General]\r\nMinToTray=7\r\n", "[Generals]\r\nMinToTray=7\r\n",
                             "[Games]\r\nPath0=x\r\nPath01=x\r\nPath=x\r\nPath 1=x\r\n",
                             "[Favorites]\r\nName=x\r\nName0=x\r\nName10=x\r\n", "\xFF\xFE[\1\2"}) {
        Load(text);
        ExpectDefaults();
    }
    fake.files.FailReads(SettingsFile, ErrorNumber::PermissionDenied);
    Load("[General]\r\nMinToTray=7\r\n");
    ExpectDefaults();
}

TEST_F(modMainSettingsTest, ReadsEachNumberFromItsOwnKey) {
    for (const auto& number : Numbers) {
        Load(std::string("[") + number.section + "]\r\n" + number.key + "=123\r\n");
        for (const auto& other : Numbers)
            EXPECT_EQ(program.*other.value, &other == &number ? 123 : other.missing)
                << number.key << " read into " << other.key;
    }
}

TEST_F(modMainSettingsTest, DoesNotCheckValues) {
    for (const auto& number : Numbers) {
        for (const std::int32_t value : {0, -1, 10, 70000, 2147483647, -2147483647 - 1}) {
            Load(std::string("[") + number.section + "]\r\n" + number.key + "=" + std::to_string(value));
            EXPECT_EQ(program.*number.value, value) << number.key;
        }
        Load(std::string("[") + number.section + "]\r\n" + number.key + "=12 and more");
        EXPECT_EQ(program.*number.value, 12) << number.key;
        Load(std::string("[") + number.section + "]\r\n" + number.key + "=nothing");
        EXPECT_EQ(program.*number.value, 0) << number.key;
    }
}

TEST_F(modMainSettingsTest, ReadsAllNineFolderNamesWhateverTheFolderCount) {
    Load("[Favorites]\r\nNumber=1\r\nName1=Clan\r\nName2=Friends\r\nName9=Last\r\n");
    EXPECT_EQ(program.FavoritesNumber, 1);
    EXPECT_EQ(FavoriteName(program, 1), "Clan");
    EXPECT_EQ(FavoriteName(program, 2), "Friends");
    EXPECT_EQ(FavoriteName(program, 9), "Last");
    EXPECT_EQ(FavoriteName(program, 0), "");
}

TEST_F(modMainSettingsTest, ReadsTheSetupOfEachGameByItsPosition) {
    ResetGames(program, 12);
    Load("[Games]\r\nPath1=C:\\Arena\r\nConfig1=mine.cfg\r\nName1=Me\r\nVisible1=1\r\n"
         "Path12=D:\\Twelve\r\nVisible12=2\r\nPath13=beyond\r\n[Favorites]\r\nName1=Clan\r\n");
    EXPECT_EQ(program.GamePath[1], "C:\\Arena");
    EXPECT_EQ(program.GameConfig[1], "mine.cfg");
    EXPECT_EQ(program.GamePlayerName[1], "Me");
    EXPECT_EQ(program.GameVisible[1], 1);
    EXPECT_EQ(program.GamePath[2], "");
    EXPECT_EQ(program.GamePath[12], "D:\\Twelve");
    EXPECT_EQ(program.GameVisible[12], 2);
    EXPECT_EQ(FavoriteName(program, 1), "Clan");
}

TEST_F(modMainSettingsTest, CutsTextsTo254Characters) {
    ResetGames(program, 1);
    const std::string longText(300, 'x');
    Load("[Games]\r\nPath1=" + longText + "\r\nConfig1=" + longText + "\r\nName1=" + longText +
         "\r\n[Favorites]\r\nName1=" + longText + "\r\n");
    for (const std::string& text :
         {program.GamePath[1], program.GameConfig[1], program.GamePlayerName[1], FavoriteName(program, 1)})
        EXPECT_EQ(text, std::string(254, 'x'));
}

TEST_F(modMainSettingsTest, TheFirstSaveWritesEveryKeyInItsOrder) {
    EXPECT_EQ(Saved(), FirstSave);
}

TEST_F(modMainSettingsTest, ReadsItsKeysInTheOrderInWhichItWritesThem) {
    ResetGames(program, 2);
    std::vector<std::string> written;
    std::istringstream lines(Saved());
    std::string section;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('['))
            section = line.substr(1, line.find(']') - 1);
        else
            written.push_back(section + "/" + line.substr(0, line.find('=')));
    }
    const WatchedProfiles watched(fake.desktop);
    LoadSettings(program, watched.desktop);
    std::erase_if(watched.keysRead, [](const std::string& key) { return key.starts_with("Extras/"); });
    EXPECT_EQ(watched.keysRead, written);
}

TEST_F(modMainSettingsTest, WritesTheGamesLast) {
    ResetGames(program, 2);
    program.GamePath[1] = "C:\\Arena";
    program.GameConfig[1] = "mine.cfg";
    program.GamePlayerName[1] = "Me; myself";
    program.GameVisible[1] = 1;
    EXPECT_EQ(Saved(),
              std::string(FirstSave) +
                  "[Games]\r\nPath1=C:\\Arena\r\nConfig1=mine.cfg\r\nName1=Me; myself\r\nVisible1=1\r\n"
                  "Path2=\r\nConfig2=\r\nName2=\r\nVisible2=0\r\n");
}

TEST_F(modMainSettingsTest, WritesNumbersAsPlainDecimalText) {
    program.WinTop = -2147483647 - 1;
    program.WinLeft = 2147483647;
    program.FavoritesNumber = 0;
    const std::string saved = Saved();
    for (const char* line : {"\r\nWinTop=-2147483648\r\n", "\r\nWinLeft=2147483647\r\n", "\r\nNumber=0\r\n"})
        EXPECT_NE(saved.find(line), std::string::npos) << line;
}

TEST_F(modMainSettingsTest, ChangesValuesInPlaceAndKeepsAllOtherLines) {
    ResetGames(program, 3);
    fake.files.Put(SettingsFile, "; a remark\r\n[Launcher]\r\nQuitAfterStart=2\r\n[Mine]\r\nx=1\r\n"
                                 "[games]\r\nPath4=D:\\Four\r\npath1=old\r\n");
    program.GamePath[1] = "C:\\New";
    const std::string saved = Saved();
    EXPECT_TRUE(saved.starts_with("; a remark\r\n[Launcher]\r\nQuitAfterStart=0\r\n[Mine]\r\nx=1\r\n"
                                  "[games]\r\nPath4=D:\\Four\r\nPath1=C:\\New\r\nConfig1=\r\n"))
        << saved;
    EXPECT_EQ(saved.find("Path4"), saved.rfind("Path4"));
    EXPECT_EQ(saved.find("[Games]"), std::string::npos);
}

TEST_F(modMainSettingsTest, SavedSettingsAreReadBack) {
    ResetGames(program, 2);
    std::int32_t next = 10;
    for (const auto& number : Numbers)
        program.*number.value = ++next;
    for (std::int32_t folder = 1; folder <= MaxFavoritesFolders; ++folder)
        FavoriteName(program, folder) = "Folder " + std::to_string(folder);
    for (std::int32_t game = 1; game <= 2; ++game) {
        program.GamePath[game] = "C:\\Game" + std::to_string(game);
        program.GameConfig[game] = "\xE4=;[x]";
        program.GamePlayerName[game] = "Player";
        program.GameVisible[game] = game;
    }
    SaveSettings(program, fake.desktop);

    ProgramState again;
    again.AppPath = program.AppPath;
    again.GameNum = 2;
    for (auto* texts : {&again.GamePath, &again.GameConfig, &again.GamePlayerName})
        texts->Reset(2);
    again.GameVisible.Reset(2);
    LoadSettings(again, fake.desktop);
    for (const auto& number : Numbers)
        EXPECT_EQ(again.*number.value, program.*number.value) << number.key;
    EXPECT_EQ(again.FavoriteNames, program.FavoriteNames);
    for (std::int32_t game = 1; game <= 2; ++game) {
        EXPECT_EQ(again.GamePath[game], program.GamePath[game]);
        EXPECT_EQ(again.GameConfig[game], "\xE4=;[x]");
        EXPECT_EQ(again.GamePlayerName[game], "Player");
        EXPECT_EQ(again.GameVisible[game], game);
    }
}

TEST_F(modMainSettingsTest, ReplaceTheFileInOneStep) {
    fake.files.Put(SettingsFile, "[General]\r\nWinTop=1\r\n");
    SaveSettings(program, fake.desktop);
    EXPECT_EQ(fake.files.Writes(SettingsFile), 1);
    EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile});
}

TEST_F(modMainSettingsTest, AFirstSaveOverwritesTheTemporaryFileOfACrash) {
    fake.files.Put(CopyFile, "[Left]\r\nover=1\r\n");
    EXPECT_EQ(Saved(), FirstSave);
    EXPECT_FALSE(fake.files.Has(CopyFile));
}

TEST_F(modMainSettingsTest, AFailedSaveKeepsTheOldFileWithoutAMessage) {
    const std::string before = "[General]\r\nWinTop=1\r\n";
    const std::string log = "C:\\Quarn\\Quarn.log";
    const auto expectUnchanged = [&] {
        SaveSettings(program, fake.desktop);
        EXPECT_EQ(fake.files.Get(SettingsFile), before);
        EXPECT_TRUE(fake.prompts.shown.empty());
        EXPECT_FALSE(fake.files.Has(log));
    };
    fake.files.Put(SettingsFile, before);

    fake.files.FailReads(SettingsFile, ErrorNumber::PermissionDenied);
    expectUnchanged();
    fake.files.ClearFaults();

    fake.files.FailWrites(CopyFile, ErrorNumber::PermissionDenied);
    expectUnchanged();
    fake.files.ClearFaults();

    fake.files.FailWrites(SettingsFile, ErrorNumber::PermissionDenied);
    expectUnchanged();
    EXPECT_FALSE(fake.files.Has(CopyFile));
    fake.files.ClearFaults();
}

TEST_F(modMainSettingsTest, AFullDiskLeavesTheOldSettingsOrTheWholeNewOnes) {
    const std::string before = Saved() + "[Mine]\r\nkey=value\r\n";
    program.WinTop = 123;
    program.QuitAfterStart = 2;
    FavoriteName(program, 9) = "Nine";
    fake.files.Put(SettingsFile, before);
    const std::string after = Saved();
    std::size_t free = 0;
    for (std::string saved = before; saved != after; free += free < 2 * after.size() ? 1 : 1000) {
        fake.files.Put(SettingsFile, before);
        fake.files.freeBytes = free;
        saved = Saved();
        EXPECT_TRUE(saved == before || saved == after) << free << '\n' << saved;
        EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile}) << free;
        ASSERT_LT(free, 1'000'000U);
    }
    EXPECT_GT(free, after.size());
}

// The system's calls report success although they cut the file.
TEST_F(modMainSettingsTest, ADiskThatBecomesFullMeanwhileLeavesTheOldSettings) {
    const std::string before = "[General]\r\nWinTop=1\r\n";
    fake.files.Put(SettingsFile, before);
    int writes = 0;
    fake.profiles.beforeWrite = [&] { ++writes; };
    const std::string after = Saved();
    for (int fullAt = 1; fullAt <= writes; ++fullAt) {
        int left = fullAt;
        fake.profiles.beforeWrite = [&] {
            if (--left == 0)
                fake.files.freeBytes = 0;
        };
        fake.files.Put(SettingsFile, before);
        EXPECT_EQ(Saved(), before) << fullAt;
        EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile}) << fullAt;
        fake.files.ClearFaults();
    }
    fake.profiles.beforeWrite = nullptr;
    EXPECT_EQ(Saved(), after);
    EXPECT_GT(writes, 20);
}

TEST_F(modMainSettingsTest, AFirstSaveOnAFullDiskLeavesNoFile) {
    for (const std::size_t free : {0U, 10U, 100U, 1000U}) {
        fake.files.freeBytes = free;
        SaveSettings(program, fake.desktop);
        EXPECT_TRUE(fake.files.Paths().empty()) << free;
    }
}

TEST_F(modMainSettingsTest, AWriteProtectedFileStaysUntilItIsUnprotected) {
    const std::string before = "[General]\r\nWinTop=1\r\n";
    fake.files.Put(SettingsFile, before);
    fake.files.Protect(SettingsFile);
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(Saved(), before);
        EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile});
    }
    fake.files.Unprotect(SettingsFile);
    EXPECT_TRUE(Saved().starts_with("[General]\r\nWinTop=500\r\n"));
}

TEST_F(modMainSettingsTest, AWriteProtectedLeftoverIsRemoved) {
    fake.files.Put(SettingsFile, "[General]\r\nWinTop=1\r\n");
    fake.files.Put(CopyFile, "[Left]\r\nover=1\r\n");
    fake.files.Protect(CopyFile);
    EXPECT_TRUE(Saved().starts_with("[General]\r\nWinTop=500\r\n"));
    EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile});

    fake.files.Put(CopyFile, "[Left]\r\nover=1\r\n");
    fake.files.Protect(CopyFile);
    fake.files.Protect(SettingsFile);
    SaveSettings(program, fake.desktop);
    EXPECT_EQ(fake.files.Paths(), std::vector<std::string>{SettingsFile});
}

TEST_F(modMainSettingsTest, AFileThatCouldNotBeReadAtTheStartIsNotReplacedByDefaults) {
    const std::string before = "[General]\r\nWinTop=1\r\n";
    for (const ErrorNumber error : {ErrorNumber::PermissionDenied, ErrorNumber::PathNotFound,
                                    ErrorNumber::DiskNotReady, ErrorNumber::DeviceIOError}) {
        fake.files.FailReads(SettingsFile, error);
        Load(before);
        ExpectDefaults();
        fake.files.ClearFaults();
        EXPECT_EQ(Saved(), before) << static_cast<int>(error);
        EXPECT_EQ(fake.files.TotalWrites(), 0);
    }
    Load(before);
    program.WinTop = 2;
    EXPECT_TRUE(Saved().starts_with("[General]\r\nWinTop=2\r\n"));
}

// The profile calls do not give every text back as it was written. No text may keep the others from being
// saved.
TEST_F(modMainSettingsTest, NoTextKeepsTheSettingsFromBeingSaved) {
    ResetGames(program, 1);
    for (const std::string& text :
         {" blanks "s, "\"quoted\""s, "'quoted'"s, "\""s, "'"s, "\"\"\""s, " \" ' "s, "a\"b'c"s, ";"s, "["s,
          "="s, "a\r\nb"s, "\r\n"s, "\t"s, "\xFF\x80"s, std::string(254, 'x'), std::string(300, 'x'),
          std::string(1000, ' ') + "x"}) {
        fake.files.Put(SettingsFile, "");
        program.GamePath[1] = program.GameConfig[1] = FavoriteName(program, 3) = text;
        EXPECT_NE(Saved().find("WinTop=500"), std::string::npos) << text;
    }
}

} // namespace
} // namespace quarn
