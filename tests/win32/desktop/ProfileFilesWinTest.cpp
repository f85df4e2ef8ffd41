#include "win32/desktop/ProfileFilesWin.h"

#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/FilesWin.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class ProfileFilesWinTest : public ::testing::Test {
  protected:
    // The value of "Key" in section "General" of a file of this content.
    std::string Text(const std::string& content) {
        files.Write(path, content);
        return profiles.ReadText(path, "General", "Key", 255);
    }
    std::int32_t Integer(const std::string& content, std::int32_t missing) {
        files.Write(path, content);
        return profiles.ReadInteger(path, "General", "Key", missing);
    }

    TemporaryFolder folder;
    const std::string path = folder / "test.ini";
    FilesWin files;
    ProfileFilesWin profiles;
};

TEST_F(ProfileFilesWinTest, ReadsTexts) {
    const struct {
        const char* content;
        const char* text;
    } table[] = {
        {"[General]\r\nKey=value\r\n", "value"},
        {"[General]\nKey=value", "value"},
        {"[gEnErAl]\r\nkEY=value\r\n", "value"},
        {"[General]\r\n\t Key \t = \t value \t \r\n", "value"},
        {"[General]\r\nKey=two  words\r\n", "two  words"},
        {"[General]\r\nKey=\" value \"\r\n", " value "},
        {"[General]\r\nKey='value'\r\n", "value"},
        {"[General]\r\nKey=value;\r\n", "value;"},
        {"[General]\r\nKey=a=b\r\n", "a=b"},
        {"[General]\r\nKey=first\r\nKey=second\r\n", "first"},
        {"[General]\r\nKey=\xE4\xFF\x80\r\n", "\xE4\xFF\x80"},

        {"", ""},
        {"[Other]\r\nKey=value\r\n", ""},
        {"[General]\r\nOther=value\r\n", ""},
        {"Key=value\r\n[General]\r\n", ""},
        {"[General]\r\n[Other]\r\nKey=value\r\n", ""},
        {"[Generals]\r\nKey=value\r\n", ""},
        {"[General]\r\nKeys=value\r\n", ""},
        {"[General]\r\n;Key=value\r\n", ""},
        {"[General]\r\nKey=\r\n", ""},
        {"[General]\r\nKey\r\n", ""},
        {"[General]\r\nKey=\"value'\r\n", "\"value'"},
        {"[General]\r\nKey=value\"\r\n", "value\""},
    };
    for (const auto& line : table)
        EXPECT_EQ(Text(line.content), line.text) << line.content;
}

TEST_F(ProfileFilesWinTest, CutsATextToItsBuffer) {
    const std::string content = "[General]\r\nKey=" + std::string(300, 'x') + "\r\n";
    EXPECT_EQ(Text(content), std::string(254, 'x'));
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 2), "x");
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 1), "");
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 0), "");
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 1000), std::string(300, 'x'));
}

TEST_F(ProfileFilesWinTest, ReadsIntegers) {
    const struct {
        const char* value;
        std::int32_t number;
    } table[] = {
        {"0", 0},   {"42", 42},    {" 42 ", 42},       {"-7", -7},   {"2147483647", 2147483647},
        {"007", 7}, {"12abc", 12}, {"1.9", 1},         {"1,000", 1}, {"abc", 0},
        {"-", 0},   {"--1", 0},    {"4294967295", -1}, {"\"5\"", 5},
    };
    for (const auto& line : table)
        EXPECT_EQ(Integer(std::string("[General]\r\nKey=") + line.value + "\r\n", 99), line.number)
            << line.value;
    for (const char* content : {"", "[General]\r\n", "[Other]\r\nKey=1\r\n", "[General]\r\n;Key=1\r\n"})
        EXPECT_EQ(Integer(content, 99), 99) << content;
    EXPECT_EQ(Integer("", -5), -5);
}

TEST_F(ProfileFilesWinTest, AMissingFileGivesDefaults) {
    EXPECT_EQ(profiles.ReadText(folder / "none.ini", "General", "Key", 255), "");
    EXPECT_EQ(profiles.ReadInteger(folder / "none.ini", "General", "Key", 7), 7);
    EXPECT_FALSE(files.IsFile(folder / "none.ini"));
}

TEST_F(ProfileFilesWinTest, CreatesFileSectionAndKey) {
    EXPECT_TRUE(profiles.WriteText(path, "General", "Key", "value"));
    EXPECT_TRUE(profiles.WriteText(path, "General", "Other", ""));
    EXPECT_TRUE(profiles.WriteText(path, "Games", "Path1", "C:\\Games\\"));
    EXPECT_EQ(profiles.ReadText(path, "general", "KEY", 255), "value");
    EXPECT_EQ(profiles.ReadText(path, "Games", "Path1", 255), "C:\\Games\\");
}

TEST_F(ProfileFilesWinTest, ReplacesAValueInItsPlace) {
    files.Write(path, "; mine\r\n[General]\r\nFirst=1\r\nKey=old\r\nLast=3\r\n[Unknown]\r\nKey=kept\r\n");
    EXPECT_TRUE(profiles.WriteText(path, "General", "Key", "new"));
    EXPECT_EQ(files.Read(path),
              "; mine\r\n[General]\r\nFirst=1\r\nKey=new\r\nLast=3\r\n[Unknown]\r\nKey=kept\r\n");
}

TEST_F(ProfileFilesWinTest, SeesAFileThatWasMovedOverTheOldOne) {
    profiles.WriteText(path, "General", "Key", "old");
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 255), "old");
    files.Replace(path, "[General]\r\nKey=new\r\n");
    EXPECT_EQ(profiles.ReadText(path, "General", "Key", 255), "new");
}

TEST_F(ProfileFilesWinTest, ABareNameMeansTheCurrentFolder) {
    char before[MAX_PATH];
    GetCurrentDirectoryA(sizeof before, before);
    SetCurrentDirectoryA(folder.Path().c_str());
    EXPECT_TRUE(profiles.WriteText("bare.ini", "General", "Key", "here"));
    EXPECT_EQ(profiles.ReadText("bare.ini", "General", "Key", 255), "here");
    EXPECT_TRUE(files.IsFile(folder / "bare.ini"));
    SetCurrentDirectoryA(before);
}

TEST_F(ProfileFilesWinTest, TellsWhenItCannotWrite) {
    EXPECT_FALSE(profiles.WriteText(folder / "no folder\\test.ini", "General", "Key", "value"));
    EXPECT_FALSE(profiles.WriteText(folder.Path(), "General", "Key", "value"));
}

} // namespace
} // namespace quarn
