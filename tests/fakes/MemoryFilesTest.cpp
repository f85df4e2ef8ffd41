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

TEST_F(MemoryFilesTest, MovesAndRemoves) {
    files.Put("b", "1");
    files.Move("b", "c");
    EXPECT_EQ(files.Paths(), std::vector<std::string>{"c"});
    files.Put("a", "2");
    files.Move("a", "c");
    EXPECT_EQ(files.Get("c"), "2");
    files.Remove("c");
    EXPECT_TRUE(files.Paths().empty());
}

TEST_F(MemoryFilesTest, WritesANewFileOnlyUnderAFreeName) {
    files.Put("taken", "1");
    files.PutFolder("folder");
    EXPECT_TRUE(files.WriteNew("free", "2"));
    EXPECT_EQ(files.Get("free"), "2");
    EXPECT_FALSE(files.WriteNew("taken", "2"));
    EXPECT_EQ(files.Get("taken"), "1");
    EXPECT_FALSE(files.WriteNew("folder", "2"));
    files.FailWrites("bad", ErrorNumber::DiskFull);
    EXPECT_EQ(ErrorOf([&] { files.WriteNew("bad", "2"); }), ErrorNumber::DiskFull);
    EXPECT_FALSE(files.Has("bad"));
}

TEST_F(MemoryFilesTest, TellsAMissingFileFromOneThatCannotBeRead) {
    files.Put("there", "content");
    files.PutFolder("folder");
    EXPECT_EQ(files.ReadIfThere("there"), "content");
    EXPECT_EQ(files.ReadIfThere("missing"), std::nullopt);
    EXPECT_EQ(ErrorOf([&] { files.ReadIfThere("folder"); }), ErrorNumber::PathFileAccessError);
    files.FailReads("there", ErrorNumber::DiskNotReady, 2);
    EXPECT_EQ(ErrorOf([&] { files.ReadIfThere("there"); }), ErrorNumber::DiskNotReady);
    EXPECT_EQ(ErrorOf([&] { files.Read("there"); }), ErrorNumber::DiskNotReady);
    EXPECT_EQ(files.Read("there"), "content");
}

TEST_F(MemoryFilesTest, AProtectedFileCanBeReadAndRemoved) {
    files.Put("a", "1");
    files.Put("b", "2");
    files.Protect("A");
    EXPECT_EQ(files.Read("a"), "1");
    EXPECT_EQ(ErrorOf([&] { files.Write("a", "3"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { files.Replace("a", "3"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { files.Move("b", "a"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(files.Get("a"), "1");
    files.Remove("a");
    files.Write("a", "4");
    EXPECT_EQ(files.Get("a"), "4");
}

TEST_F(MemoryFilesTest, NamesTheCauseOfAFailure) {
    files.Put("there", "old");
    files.PutFolder("C:\\Folder");
    EXPECT_EQ(ErrorOf([&] { files.Read("missing"); }), ErrorNumber::FileNotFound);
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
    EXPECT_EQ(ErrorOf([&] { files.Write("list", "much newer"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(files.Get("list"), "much ");
    EXPECT_EQ(ErrorOf([&] { files.Append("list", "!"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(files.Get("list"), "much ");
}

TEST_F(MemoryFilesTest, ADiskGetsTheSpaceOfAFileBack) {
    files.freeBytes = 10;
    files.Write("a", "12345");
    EXPECT_EQ(files.freeBytes, 5U);
    files.Write("a", "1234567890");
    EXPECT_EQ(files.freeBytes, 0U);
    files.Write("a", "12");
    EXPECT_EQ(files.freeBytes, 8U);
    files.Replace("a", "123");
    EXPECT_EQ(files.freeBytes, 7U);
    files.Write("b", "1234");
    files.Move("b", "a");
    EXPECT_EQ(files.freeBytes, 6U);
    files.Remove("a");
    EXPECT_EQ(files.freeBytes, 10U);
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

TEST_F(MemoryFilesTest, ReadingAMissingFileFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(files.Get("missing"), "No such file");
}

TEST(MemoryProfilesTest, GiveDefaultsForMissingAndUnreadableFiles) {
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

TEST(MemoryProfilesTest, WriteIntoTheFileAndReportFailures) {
    FakeDesktop fake;
    EXPECT_TRUE(fake.profiles.WriteText("x.ini", "A", "n", "1"));
    EXPECT_EQ(fake.files.Get("x.ini"), "[A]\r\nn=1\r\n");
    fake.files.FailWrites("x.ini", ErrorNumber::PermissionDenied);
    EXPECT_FALSE(fake.profiles.WriteText("x.ini", "A", "n", "2"));
    EXPECT_EQ(fake.files.Get("x.ini"), "[A]\r\nn=1\r\n");
}

TEST(MemoryProfiles, SeemToWriteOnAFullDisk) {
    FakeDesktop fake;
    fake.files.freeBytes = 12;
    EXPECT_TRUE(fake.profiles.WriteText("x.ini", "A", "n", "123456789"));
    EXPECT_EQ(fake.files.Get("x.ini"), "[A]\r\nn=12345");
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "n", 255), "123456789");
    fake.profiles.Forget("x.ini");
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "n", 255), "12345");
    EXPECT_TRUE(fake.profiles.WriteText("x.ini", "A", "n", "7"));
    fake.files.Put("x.ini", "[A]\r\nn=8\r\n");
    EXPECT_EQ(fake.profiles.ReadText("x.ini", "A", "n", 255), "8");
}

} // namespace
} // namespace quarn
