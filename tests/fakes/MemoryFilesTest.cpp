#include "tests/fakes/Errors.h"
#include "tests/fakes/FakeDesktop.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

class MemoryFilesTest : public ::testing::Test {
  protected:
    MemoryFiles files;
};

TEST_F(MemoryFilesTest, KeepsBytesUnderPathsWithoutCase) {
    files.Write("C:\\Quarn\\List.dat", std::string("a\0b", 3));
    EXPECT_EQ(files.Read("c:/QUARN/list.DAT"), std::string("a\0b", 3));
    files.Append("c:\\quarn\\list.dat", "c");
    EXPECT_EQ(files.Get("C:\\Quarn\\List.dat"), std::string("a\0bc", 4));
    EXPECT_EQ(files.Paths(), std::vector<std::string>{"C:\\Quarn\\List.dat"});
    EXPECT_EQ(files.Writes("C:\\QUARN\\LIST.DAT"), 2);
    EXPECT_EQ(files.Reads("C:\\Quarn\\List.dat"), 1);
}

TEST_F(MemoryFilesTest, CopiesMovesAndRemoves) {
    files.Put("a", "1");
    files.Copy("a", "b");
    files.Move("b", "c");
    EXPECT_EQ(files.Paths(), (std::vector<std::string>{"a", "c"}));
    files.Put("a", "2");
    files.Move("a", "c");
    EXPECT_EQ(files.Get("c"), "2");
    files.Remove("c");
    EXPECT_TRUE(files.Paths().empty());
}

TEST_F(MemoryFilesTest, NamesTheCauseOfAFailure) {
    files.Put("there", "old");
    files.PutFolder("C:\\Folder");
    EXPECT_EQ(ErrorOf([&] { files.Read("missing"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { files.Copy("missing", "there"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { files.Move("missing", "there"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { files.Remove("missing"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { files.Read("C:\\Folder"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { files.Write("C:\\Folder\\", ""); }), ErrorNumber::PathFileAccessError);
    files.FailReads("there", ErrorNumber::PermissionDenied);
    files.FailWrites("there", ErrorNumber::DeviceIOError);
    EXPECT_EQ(ErrorOf([&] { files.Read("THERE"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { files.Write("there", "new"); }), ErrorNumber::DeviceIOError);
    EXPECT_EQ(ErrorOf([&] { files.Append("there", "new"); }), ErrorNumber::DeviceIOError);
    EXPECT_EQ(ErrorOf([&] { files.Replace("there", "new"); }), ErrorNumber::DeviceIOError);
    EXPECT_EQ(files.Get("there"), "old");
    files.ClearFaults();
    EXPECT_EQ(files.Read("there"), "old");
}

TEST_F(MemoryFilesTest, AFullDiskLeavesAPlainWriteHalfDoneAndAReplacementUndone) {
    files.Put("list", "old");
    files.freeBytes = 2;
    EXPECT_EQ(ErrorOf([&] { files.Replace("list", "newer"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(files.Get("list"), "old");
    EXPECT_EQ(ErrorOf([&] { files.Write("list", "newer"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(files.Get("list"), "ne");
    EXPECT_EQ(ErrorOf([&] { files.Append("list", "!"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(files.Get("list"), "ne");
}

TEST_F(MemoryFilesTest, MatchesPatternsInTheLastComponent) {
    files.Put("C:\\Quarn\\servers-q3.dat", "");
    files.Put("C:\\Quarn\\Readme", "");
    files.PutFolder("C:\\Quarn\\folder.dat");
    for (const char* pattern : {"C:\\Quarn\\*", "C:\\Quarn\\*.*", "c:\\quarn\\SERVERS-??.dat",
                                "C:\\Quarn\\servers*.dat", "C:\\Quarn\\*3.d*", "C:\\Quarn\\Readm?"})
        EXPECT_TRUE(files.AnyMatch(pattern)) << pattern;
    for (const char* pattern : {"", "*", "C:\\*", "C:\\Quarn\\f*", "C:\\Quarn\\servers-?.dat",
                                "C:\\Quarn\\*.dat?", "C:\\Quarn\\?eadme?", "C:\\*\\Readme", "D:\\Quarn\\*"})
        EXPECT_FALSE(files.AnyMatch(pattern)) << pattern;
}

TEST_F(MemoryFilesTest, AskingForAFileThatIsNotThereFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(files.Get("missing"), "No such file");
}

TEST(MemoryProfiles, GiveDefaultsForWhatIsMissingOrUnreadable) {
    FakeDesktop fake;
    EXPECT_EQ(fake.profiles.ReadInteger("x.ini", "A", "n", 7), 7);
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "t", 255), "");
    fake.files.Put("x.ini", "[A]\r\nn=\r\nt=text\r\n");
    EXPECT_EQ(fake.profiles.ReadInteger("x.ini", "A", "n", 7), 0);
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "t", 255), "text");
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "t", 3), "te");
    fake.files.FailReads("x.ini", ErrorNumber::PermissionDenied);
    EXPECT_EQ(fake.profiles.ReadInteger("x.ini", "A", "n", 7), 7);
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "t", 255), "");
}

TEST(MemoryProfiles, WriteIntoTheFileAndTellWhenTheyCannot) {
    FakeDesktop fake;
    EXPECT_TRUE(fake.profiles.WriteText("x.ini", "A", "n", "1"));
    EXPECT_EQ(fake.files.Get("x.ini"), "[A]\r\nn=1\r\n");
    fake.files.FailWrites("x.ini", ErrorNumber::PermissionDenied);
    EXPECT_FALSE(fake.profiles.WriteText("x.ini", "A", "n", "2"));
    EXPECT_EQ(fake.files.Get("x.ini"), "[A]\r\nn=1\r\n");
}

} // namespace
} // namespace quarn
