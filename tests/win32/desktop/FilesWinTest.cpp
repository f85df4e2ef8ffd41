#include "win32/desktop/FilesWin.h"

#include "tests/fakes/Errors.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/Handles.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class FilesWinTest : public ::testing::Test {
  protected:
    // Somebody else's handle to a file, letting nobody in.
    static FileHandle Lock(const std::string& path) {
        FileHandle handle(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(handle);
        return handle;
    }

    TemporaryFolder folder;
    FilesWin files;
};

const std::string AllBytes = [] {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes.push_back(static_cast<char>(i));
    return bytes + "\r\n\n\r\x1A" + bytes;
}();

TEST_F(FilesWinTest, KeepsEveryByte) {
    files.Write(folder / "a", AllBytes);
    EXPECT_EQ(files.Read(folder / "a"), AllBytes);
    files.Replace(folder / "a", AllBytes + AllBytes);
    EXPECT_EQ(files.Read(folder / "a"), AllBytes + AllBytes);
    files.Append(folder / "a", AllBytes);
    EXPECT_EQ(files.Read(folder / "a"), AllBytes + AllBytes + AllBytes);
}

TEST_F(FilesWinTest, ReadsAndWritesEmptyAndLargeFiles) {
    const std::string large(5'000'001, 'x');
    for (const std::string& content : {std::string(), large, std::string(65536, 'y')}) {
        files.Write(folder / "a", content);
        EXPECT_EQ(files.Read(folder / "a"), content);
        files.Replace(folder / "a", "between");
        files.Replace(folder / "a", content);
        EXPECT_EQ(files.Read(folder / "a"), content);
    }
}

TEST_F(FilesWinTest, WriteTruncatesAndAppendCreates) {
    files.Write(folder / "a", "a long text");
    files.Write(folder / "a", "short");
    EXPECT_EQ(files.Read(folder / "a"), "short");
    files.Append(folder / "new", "one;");
    files.Append(folder / "new", "two;");
    EXPECT_EQ(files.Read(folder / "new"), "one;two;");
}

TEST_F(FilesWinTest, ALogCanBeReadAndWrittenWhileSomebodyReadsIt) {
    files.Write(folder / "log", "one;");
    const FileHandle reader(CreateFileA((folder / "log").c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                        nullptr));
    ASSERT_TRUE(reader);
    files.Append(folder / "log", "two;");
    EXPECT_EQ(files.Read(folder / "log"), "one;two;");
}

TEST_F(FilesWinTest, ReplaceLeavesNothingBesideTheFile) {
    files.Replace(folder / "a", "first");
    files.Replace(folder / "a", "second");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, ReplaceClearsAwayTheLeftoverOfACrash) {
    files.Write(folder / "a.0.tmp", "longer than what comes");
    files.Replace(folder / "a", "new");
    EXPECT_EQ(files.Read(folder / "a"), "new");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, ReplacePassesOverWhatAnotherProgramWrites) {
    files.Write(folder / "a.0.tmp", "in work");
    FileHandle lock = Lock(folder / "a.0.tmp");
    files.Replace(folder / "a", "new");
    lock.Reset();
    EXPECT_EQ(files.Read(folder / "a"), "new");
    EXPECT_EQ(files.Read(folder / "a.0.tmp"), "in work");
    EXPECT_EQ(folder.EntryCount(), 2U);
}

TEST_F(FilesWinTest, AReplacementThatFailsLeavesTheFileAsItWas) {
    files.Write(folder / "a", "old");
    FileHandle lock = Lock(folder / "a");
    EXPECT_EQ(ErrorOf([&] { files.Replace(folder / "a", "new"); }), ErrorNumber::PermissionDenied);
    lock.Reset();
    EXPECT_EQ(files.Read(folder / "a"), "old");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, ReplacingAFileThatIsBeingReadSucceedsOrFailsAsAWhole) {
    // Systems differ in whether they let a file be moved over an open one, whose reader allows it.
    files.Write(folder / "a", "old");
    const FileHandle reader(CreateFileA((folder / "a").c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    const ErrorNumber error = ErrorOf([&] { files.Replace(folder / "a", "new"); });
    EXPECT_EQ(files.Read(folder / "a"), error == NoError ? "new" : "old");
    EXPECT_EQ(folder.EntryCount(), 1U);
    char text[4] = "";
    DWORD got = 0;
    EXPECT_TRUE(ReadFile(reader.Get(), text, 3, &got, nullptr));
    EXPECT_STREQ(text, "old");
}

TEST_F(FilesWinTest, CopiesAndMovesOverExistingFiles) {
    files.Write(folder / "a", "content");
    files.Write(folder / "b", "old");
    files.Copy(folder / "a", folder / "b");
    EXPECT_EQ(files.Read(folder / "a"), "content");
    EXPECT_EQ(files.Read(folder / "b"), "content");
    files.Write(folder / "c", "old");
    files.Move(folder / "a", folder / "c");
    EXPECT_EQ(files.Read(folder / "c"), "content");
    EXPECT_FALSE(files.IsFile(folder / "a"));
}

TEST_F(FilesWinTest, ErrorsHaveTheNumbersOfTheirCauses) {
    files.Write(folder / "there", "x");
    files.Write(folder / "locked", "x");
    CreateDirectoryA((folder / "sub").c_str(), nullptr);
    const FileHandle lock = Lock(folder / "locked");
    const std::string missing = folder / "missing";
    const std::string nowhere = folder / "no folder\\file";
    const std::string sub = folder / "sub";
    const std::string locked = folder / "locked";
    const std::string there = folder / "there";
    const struct {
        const char* what;
        std::function<void()> action;
        ErrorNumber number;
    } table[] = {
        {"read missing", [&] { files.Read(missing); }, ErrorNumber::FileNotFound},
        {"read nowhere", [&] { files.Read(nowhere); }, ErrorNumber::PathNotFound},
        {"read folder", [&] { files.Read(sub); }, ErrorNumber::PathFileAccessError},
        {"read locked", [&] { files.Read(locked); }, ErrorNumber::PermissionDenied},
        {"write nowhere", [&] { files.Write(nowhere, "x"); }, ErrorNumber::PathNotFound},
        {"write folder", [&] { files.Write(sub, "x"); }, ErrorNumber::PathFileAccessError},
        {"write locked", [&] { files.Write(locked, "x"); }, ErrorNumber::PermissionDenied},
        {"append nowhere", [&] { files.Append(nowhere, "x"); }, ErrorNumber::PathNotFound},
        {"append folder", [&] { files.Append(sub, "x"); }, ErrorNumber::PathFileAccessError},
        {"append locked", [&] { files.Append(locked, "x"); }, ErrorNumber::PermissionDenied},
        {"replace nowhere", [&] { files.Replace(nowhere, "x"); }, ErrorNumber::PathNotFound},
        {"replace folder", [&] { files.Replace(sub, "x"); }, ErrorNumber::PathFileAccessError},
        {"replace locked", [&] { files.Replace(locked, "x"); }, ErrorNumber::PermissionDenied},
        {"copy missing", [&] { files.Copy(missing, there); }, ErrorNumber::FileNotFound},
        {"copy nowhere", [&] { files.Copy(there, nowhere); }, ErrorNumber::PathNotFound},
        {"copy locked", [&] { files.Copy(locked, missing); }, ErrorNumber::PermissionDenied},
        {"move missing", [&] { files.Move(missing, there); }, ErrorNumber::FileNotFound},
        {"move nowhere", [&] { files.Move(there, nowhere); }, ErrorNumber::PathNotFound},
        {"move over folder", [&] { files.Move(there, sub); }, ErrorNumber::PathFileAccessError},
        {"move over locked", [&] { files.Move(there, locked); }, ErrorNumber::PermissionDenied},
        {"remove missing", [&] { files.Remove(missing); }, ErrorNumber::FileNotFound},
        {"remove nowhere", [&] { files.Remove(nowhere); }, ErrorNumber::PathNotFound},
        {"remove folder", [&] { files.Remove(sub); }, ErrorNumber::PathFileAccessError},
        {"remove locked", [&] { files.Remove(locked); }, ErrorNumber::PermissionDenied},
    };
    for (const auto& line : table)
        EXPECT_EQ(ErrorOf(line.action), line.number) << line.what;
    EXPECT_EQ(files.Read(there), "x");
    EXPECT_EQ(folder.EntryCount(), 3U);
}

TEST_F(FilesWinTest, RemovesFiles) {
    files.Write(folder / "a", "x");
    files.Remove(folder / "a");
    EXPECT_EQ(folder.EntryCount(), 0U);
}

TEST_F(FilesWinTest, TellsFilesFromFoldersAndNothing) {
    files.Write(folder / "file", "");
    EXPECT_TRUE(files.IsFile(folder / "file"));
    EXPECT_TRUE(files.IsFile(folder / "FILE"));
    for (const std::string& path :
         {folder.Path(), folder.Path() + "\\", folder / "missing", folder / "no folder\\file", std::string(),
          folder / "fil?", folder / "*", std::string("Q:\\file"), std::string(3000, 'x')})
        EXPECT_FALSE(files.IsFile(path)) << path;
}

TEST_F(FilesWinTest, PatternsMatchNormalFilesOnly) {
    files.Write(folder / "servers-q3.dat", "");
    files.Write(folder / "hidden.cfg", "");
    files.Write(folder / "system.cfg", "");
    SetFileAttributesA((folder / "hidden.cfg").c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesA((folder / "system.cfg").c_str(), FILE_ATTRIBUTE_SYSTEM);
    CreateDirectoryA((folder / "aaa.dir").c_str(), nullptr);
    for (const char* pattern : {"*", "*.*", "*.dat", "servers-??.dat", "SERVERS*", "servers-q3.dat"})
        EXPECT_TRUE(files.AnyMatch(folder / pattern)) << pattern;
    for (const char* pattern : {"*.dir", "aaa*", "*.cfg", "servers-?.dat", "*.txt", "no folder\\*", "?"})
        EXPECT_FALSE(files.AnyMatch(folder / pattern)) << pattern;
    EXPECT_FALSE(files.AnyMatch(""));
}

TEST_F(FilesWinTest, KnowsTheProgramsFolder) {
    const std::string own = files.ProgramFolder();
    ASSERT_FALSE(own.empty());
    EXPECT_EQ(own.back(), '\\');
    EXPECT_TRUE(files.IsFile(own + "quarn_win32_tests.exe"));
}

} // namespace
} // namespace quarn
