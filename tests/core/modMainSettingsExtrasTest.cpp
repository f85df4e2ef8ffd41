#include "core/modMain.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/WatchedProfiles.h"

#include <gtest/gtest.h>

#include <string>

namespace quarn {
namespace {

constexpr const char* SettingsFile = "C:\\Quarn\\Quarn.ini";

struct Extra {
    const char* key;
    std::int32_t ProgramState::*value;
    std::int32_t missing;
    std::int32_t highest;
};

constexpr Extra Extras[] = {
    {"Simultaneous", &ProgramState::Simultaneous, 1, 64},
    {"SaveListAtExit", &ProgramState::SaveListAtExit, 0, 1},
    {"ListOnce", &ProgramState::ListOnce, 0, 1},
    {"NaturalSort", &ProgramState::NaturalSort, 0, 1},
    {"KeepSorted", &ProgramState::KeepSorted, 0, 1},
    {"ShowAtStart", &ProgramState::ShowAtStart, 0, 1},
    {"SearchBox", &ProgramState::SearchBox, 0, 1},
    {"AskMasterFirst", &ProgramState::AskMasterFirst, 0, 1},
    {"AskPassword", &ProgramState::AskPassword, 0, 1},
};

class modMainSettingsExtrasTest : public ProgramTest {
  protected:
    void Load(const std::string& settings) {
        fake.files.Put(SettingsFile, settings);
        LoadSettings(program, fake.desktop);
    }
    std::string Saved() {
        SaveSettings(program, fake.desktop);
        return fake.files.Get(SettingsFile);
    }
};

TEST_F(modMainSettingsExtrasTest, AreOffAndNotInTheFileByDefault) {
    Load("");
    for (const Extra& extra : Extras)
        EXPECT_EQ(program.*extra.value, extra.missing) << extra.key;
    EXPECT_EQ(Saved().find("[Extras]"), std::string::npos);
}

TEST_F(modMainSettingsExtrasTest, AreReadFromTheirOwnKeys) {
    for (const Extra& extra : Extras) {
        Load(std::string("[Extras]\r\n") + extra.key + "=" + std::to_string(extra.highest) + "\r\n");
        for (const Extra& other : Extras)
            EXPECT_EQ(program.*other.value, &other == &extra ? extra.highest : other.missing)
                << extra.key << ' ' << other.key;
    }
}

TEST_F(modMainSettingsExtrasTest, OtherValuesCountAsTheNearest) {
    const struct {
        const char* text;
        std::int32_t atOnce;
        std::int32_t onOrOff;
    } cases[] = {
        {"-5", 1, 0},          {"0", 1, 0},           {"1", 1, 1},     {"", 1, 0},
        {"abc", 1, 0},         {" 7x", 7, 1},         {"64", 64, 1},   {"65", 64, 1},
        {"1000", 64, 1},       {"8", 8, 1},           {"\"8\"", 8, 1}, {"2,5", 2, 1},
        {"2147483647", 64, 1}, {"-2147483648", 1, 0}, {"0x10", 1, 0},
    };
    for (const auto& c : cases) {
        Load(std::string("[Extras]\r\nSimultaneous=") + c.text + "\r\nNaturalSort=" + c.text + "\r\n");
        EXPECT_EQ(program.Simultaneous, c.atOnce) << c.text;
        EXPECT_EQ(program.NaturalSort, c.onOrOff) << c.text;
    }
}

TEST_F(modMainSettingsExtrasTest, AreWrittenOnlyWhileTheyDifferFromTheirDefaults) {
    Load("");
    const std::string off = Saved();
    for (const Extra& extra : Extras) {
        program.*extra.value = extra.highest;
        EXPECT_EQ(Saved(), off + "[Extras]\r\n" + extra.key + "=" + std::to_string(extra.highest) + "\r\n");
        program.*extra.value = extra.missing;
        EXPECT_EQ(Saved(), off + "[Extras]\r\n");
        fake.files.Put(SettingsFile, off);
    }
}

TEST_F(modMainSettingsExtrasTest, ColumnWidthsAreWrittenOnlyIfThereAreAny) {
    Load("");
    EXPECT_EQ(program.ColumnWidths, "");
    program.ColumnWidths = "0,3333";
    EXPECT_TRUE(Saved().ends_with("[Extras]\r\nColumnWidths=0,3333\r\n"));
    Load("[Extras]\r\nColumnWidths=0,3333\r\n");
    EXPECT_EQ(program.ColumnWidths, "0,3333");
    program.ColumnWidths.clear();
    EXPECT_EQ(Saved().find("ColumnWidths"), std::string::npos);
}

TEST_F(modMainSettingsExtrasTest, AFailureLeavesTheFileAsItWas) {
    const std::string before = "[Extras]\r\nListOnce=1\r\nSimultaneous=8\r\n";
    WatchedProfiles failing(fake.desktop);
    for (const std::int32_t atOnce : {1, 9}) { // the key is removed, or written
        Load(before);
        program.Simultaneous = atOnce;
        program.ListOnce = 0;
        failing.failingKey = "Simultaneous";
        SaveSettings(program, failing.desktop);
        EXPECT_EQ(fake.files.Get(SettingsFile), before);
        EXPECT_FALSE(fake.files.Has(SettingsFile + std::string(".new")));
        failing.failingKey.clear();
        SaveSettings(program, failing.desktop);
        EXPECT_NE(fake.files.Get(SettingsFile), before);
    }
}

TEST_F(modMainSettingsExtrasTest, GivesUpOnAKeyWithoutEnd) {
    std::string settings = "[Extras]\r\n";
    for (int line = 0; line < 150; ++line)
        settings += "ListOnce=1\r\n";
    Load(settings);
    program.ListOnce = 0;
    const std::string before = fake.files.Get(SettingsFile);
    EXPECT_EQ(Saved(), before) << "the settings could not be saved as they are";
}

TEST_F(modMainSettingsExtrasTest, KeepOtherLinesOfTheirSection) {
    Load("[Extras]\r\n; mine\r\nOther=3\r\nSimultaneous=8\r\nListOnce=0\r\nlistonce=1\r\n");
    program.Simultaneous = 1;
    EXPECT_TRUE(Saved().starts_with("[Extras]\r\n; mine\r\nOther=3\r\n[General]\r\n"));
    EXPECT_EQ(program.ListOnce, 0) << "of two keys the first counts";
}

} // namespace
} // namespace quarn
