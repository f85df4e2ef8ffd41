#include "win32/desktop/FilesWin.h"

#include "tests/fakes/Errors.h"
#include "tests/win32/harness/FakeSleep.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/Handles.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class FilesWinTest : public ::testing::Test {
  protected:
    // Another program's handle to a file, without any sharing.
    static FileHandle Lock(const std::string& path) {
        FileHandle handle(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_TRUE(handle);
        return handle;
    }

    static void Protect(const std::string& path) {
        EXPECT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    }

    FakeSleep sleep;
    TemporaryFolder folder;
    FilesWin files;
};

// About the time for which a file is waited for.
constexpr DWORD HalfASecond = 500;

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

TEST_F(FilesWinTest, ALogCanBeReadAndWrittenWhileAnotherProgramHasItOpen) {
    std::string content = "one;";
    files.Write(folder / "log", content);
    for (const DWORD access : {GENERIC_READ, DWORD{FILE_APPEND_DATA}, DWORD{GENERIC_WRITE}, DWORD{DELETE}}) {
        const FileHandle other(CreateFileA((folder / "log").c_str(), access,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                           nullptr));
        ASSERT_TRUE(other) << access;
        if (access != DELETE) { // appending allows no deletion meanwhile
            files.Append(folder / "log", "two;");
            content += "two;";
        }
        EXPECT_EQ(files.Read(folder / "log"), content) << access;
    }
    EXPECT_EQ(sleep.Milliseconds(), 0U) << "it waited for the other program";
}

TEST_F(FilesWinTest, ReplaceLeavesNoTemporaryFile) {
    files.Replace(folder / "a", "first");
    files.Replace(folder / "a", "second");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, ReplaceOverwritesTheTemporaryFileOfACrash) {
    files.Write(folder / "a.0.tmp", "longer than what comes");
    files.Replace(folder / "a", "new");
    EXPECT_EQ(files.Read(folder / "a"), "new");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, ReplaceSkipsATemporaryFileInUse) {
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
    // Systems differ in whether a file can be moved over an open one whose reader allows it.
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

TEST_F(FilesWinTest, MovesOverExistingFiles) {
    files.Write(folder / "a", "content");
    files.Write(folder / "c", "old");
    files.Move(folder / "a", folder / "c");
    EXPECT_EQ(files.Read(folder / "c"), "content");
    EXPECT_FALSE(files.IsFile(folder / "a"));
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, WritesANewFileOnlyUnderAFreeName) {
    EXPECT_TRUE(files.WriteNew(folder / "new", AllBytes));
    EXPECT_EQ(files.Read(folder / "new"), AllBytes);
    EXPECT_FALSE(files.WriteNew(folder / "new", "other"));
    EXPECT_EQ(files.Read(folder / "new"), AllBytes);
    CreateDirectoryA((folder / "sub").c_str(), nullptr);
    EXPECT_FALSE(files.WriteNew(folder / "sub", "other"));
    EXPECT_EQ(ErrorOf([&] { files.WriteNew(folder / "no folder\\new", "x"); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(folder.EntryCount(), 2U);
}

// Another program takes the name while the file is being written.
TEST_F(FilesWinTest, AWriterOfANewFileReplacesNoneThatAppearsMeanwhile) {
    static std::string name;
    name = folder / "new";
    const ReplacedImport flush(
        &FlushFileBuffers, +[](HANDLE) WINAPI -> BOOL {
            FilesWin().Write(name, "the other program's");
            return TRUE;
        });
    EXPECT_FALSE(files.WriteNew(name, "content"));
    EXPECT_EQ(files.Read(name), "the other program's");
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, FlushesAFileBeforeItTakesItsPlace) {
    static int flushes;
    flushes = 0;
    const ReplacedImport flush(
        &FlushFileBuffers, +[](HANDLE) WINAPI -> BOOL {
            SetLastError(ERROR_DISK_FULL);
            return ++flushes % 2 == 0;
        });
    const std::string path = folder / "a";
    files.Write(folder / "b", "new");
    const std::function<void()> actions[] = {[&] { files.Replace(path, "new"); },
                                             [&] { files.Move(folder / "b", path); },
                                             [&] { files.WriteNew(folder / "c", "new"); }};
    int expected = 0;
    for (const auto& action : actions) {
        files.Write(path, "old");
        EXPECT_EQ(ErrorOf(action), ErrorNumber::DiskFull);
        EXPECT_EQ(files.Read(path), "old");
        EXPECT_FALSE(files.IsFile(folder / "c"));
        EXPECT_EQ(ErrorOf(action), NoError);
        EXPECT_EQ(flushes, expected += 2);
    }
    EXPECT_EQ(files.Read(folder / "c"), "new");
}

TEST_F(FilesWinTest, AWriteProtectedFileIsNotReplaced) {
    const std::string path = folder / "a";
    files.Write(path, "old");
    files.Write(folder / "b", "new");
    Protect(path);
    EXPECT_EQ(ErrorOf([&] { files.Replace(path, "new"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { files.Move(folder / "b", path); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(files.Read(path), "old");
    EXPECT_TRUE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(folder.EntryCount(), 2U);
    EXPECT_EQ(sleep.Milliseconds(), 0U);
    files.Remove(path);
    EXPECT_EQ(folder.EntryCount(), 1U);
}

TEST_F(FilesWinTest, TellsAMissingFileFromOneThatCannotBeRead) {
    files.Write(folder / "there", "content");
    CreateDirectoryA((folder / "sub").c_str(), nullptr);
    EXPECT_EQ(files.ReadIfThere(folder / "there"), "content");
    EXPECT_EQ(files.ReadIfThere(folder / "missing"), std::nullopt);
    EXPECT_EQ(files.ReadIfThere(folder / "no?name"), std::nullopt);
    EXPECT_EQ(files.ReadIfThere("a file that is not in the current folder"), std::nullopt);
    for (const std::string& path :
         {folder / "no folder\\file", std::string("Q:\\file"), std::string("Q:\\folder\\file")})
        EXPECT_EQ(ErrorOf([&] { files.ReadIfThere(path); }), ErrorNumber::PathNotFound) << path;
    EXPECT_EQ(ErrorOf([&] { files.ReadIfThere(folder / "sub"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(sleep.Milliseconds(), 0U);
}

struct FileAction {
    const char* name;
    std::function<void(FilesWin&, const std::string& path, const std::string& other)> run;
    bool waitsAgain = true; // when it waited in vain before
};

const FileAction Actions[] = {
    {"read", [](FilesWin& f, const std::string& path, const std::string&) { f.Read(path); }},
    {"replace", [](FilesWin& f, const std::string& path, const std::string&) { f.Replace(path, "new"); }},
    {"move to", [](FilesWin& f, const std::string& path, const std::string& other) { f.Move(other, path); }},
    {"move from",
     [](FilesWin& f, const std::string& path, const std::string& other) { f.Move(path, other); }},
    {"remove", [](FilesWin& f, const std::string& path, const std::string&) { f.Remove(path); }},
    {"write", [](FilesWin& f, const std::string& path, const std::string&) { f.Write(path, "new"); }, false},
    {"append", [](FilesWin& f, const std::string& path, const std::string&) { f.Append(path, "new"); },
     false},
};

TEST_F(FilesWinTest, WaitsForAFileThatAnotherProgramHoldsForAMoment) {
    for (const FileAction& action : Actions) {
        files.Write(folder / "a", "old");
        files.Write(folder / "b", "other");
        FileHandle lock = Lock(folder / "a");
        const DWORD before = sleep.Milliseconds();
        sleep.After(100, [&] { lock.Reset(); });
        EXPECT_EQ(ErrorOf([&] { action.run(files, folder / "a", folder / "b"); }), NoError) << action.name;
        EXPECT_EQ(sleep.Milliseconds() - before, 100U) << action.name;
        EXPECT_FALSE(files.IsFile(folder / "a.0.tmp")) << action.name;
    }
}

TEST_F(FilesWinTest, TellsTheErrorOfAFileThatStaysHeld) {
    for (const FileAction& action : Actions) {
        FilesWin own;
        FileHandle lock;
        const auto failAndSleep = [&] {
            own.Write(folder / "b", "other");
            const DWORD before = sleep.Milliseconds();
            EXPECT_EQ(ErrorOf([&] { action.run(own, folder / "a", folder / "b"); }),
                      ErrorNumber::PermissionDenied)
                << action.name;
            return sleep.Milliseconds() - before;
        };
        files.Write(folder / "a", "old");
        lock = Lock(folder / "a");
        EXPECT_EQ(failAndSleep(), HalfASecond) << action.name;
        EXPECT_EQ(failAndSleep(), action.waitsAgain ? HalfASecond : 0) << action.name;
        lock.Reset();
        EXPECT_EQ(own.Read(folder / "a"), "old") << action.name;
        EXPECT_EQ(folder.EntryCount(), 2U) << action.name;

        action.run(own, folder / "a", folder / "b");
        lock = Lock(folder / "a");
        EXPECT_EQ(failAndSleep(), HalfASecond) << action.name;
        lock.Reset();
    }
}

// Else every line of a log in a folder without rights would cost half a second.
TEST_F(FilesWinTest, WaitsOnceForALogThatCannotBeWritten) {
    FileHandle lock = Lock(folder / "log");
    EXPECT_EQ(ErrorOf([&] { files.Write(folder / "log", "start"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(sleep.Milliseconds(), HalfASecond);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(ErrorOf([&] { files.Append(folder / "log", "entry"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(sleep.Milliseconds(), HalfASecond);
    EXPECT_EQ(ErrorOf([&] { files.Read(folder / "log"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(sleep.Milliseconds(), 2 * HalfASecond);

    lock.Reset();
    files.Append(folder / "log", "entry");
    lock = Lock(folder / "log");
    sleep.After(100, [&] { lock.Reset(); });
    files.Append(folder / "log", ";entry");
    EXPECT_EQ(sleep.Milliseconds(), 2 * HalfASecond + 100);
    EXPECT_EQ(files.Read(folder / "log"), "entry;entry");
}

// Each of these errors comes from a call in the middle of the operation.
TEST_F(FilesWinTest, WaitsAlsoForALockedRangeAndForAMoveThatIsDenied) {
    static int failures;
    files.Write(folder / "a", "content");
    const auto read = +[](HANDLE, void*, DWORD, DWORD* got, OVERLAPPED*) WINAPI -> BOOL {
        *got = 0;
        SetLastError(ERROR_LOCK_VIOLATION);
        return failures-- <= 0;
    };
    const auto move = +[](const char*, const char*, DWORD) WINAPI -> BOOL {
        SetLastError(ERROR_ACCESS_DENIED);
        return failures-- <= 0;
    };
    {
        failures = 3;
        const ReplacedImport replaced(&ReadFile, read);
        EXPECT_EQ(files.Read(folder / "a"), "");
        EXPECT_EQ(sleep.Milliseconds(), 60U);
    }
    const ReplacedImport replaced(&MoveFileExA, move);
    failures = 2;
    files.Replace(folder / "a", "new");
    EXPECT_EQ(sleep.Milliseconds(), 100U);
    failures = 1000;
    EXPECT_EQ(ErrorOf([&] { files.Replace(folder / "a", "new"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(sleep.Milliseconds(), 100U + HalfASecond);
}

// The test denies access itself, because an account with all rights is denied nothing.
TEST_F(FilesWinTest, WaitsForADenialThatMayPassButNotForAWriteProtectedFile) {
    files.Write(folder / "a", "content");
    const ReplacedImport denied(
        &CreateFileA,
        +[](const char*, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) WINAPI -> HANDLE {
            SetLastError(ERROR_ACCESS_DENIED);
            return INVALID_HANDLE_VALUE;
        });
    EXPECT_EQ(ErrorOf([&] { files.Read(folder / "a"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(sleep.Milliseconds(), HalfASecond);
    Protect(folder / "a");
    EXPECT_EQ(ErrorOf([&] { files.Read(folder / "a"); }), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(sleep.Milliseconds(), HalfASecond);
    SetFileAttributesA((folder / "a").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FilesWinTest, DoesNotWaitWhereWaitingDoesNotHelp) {
    CreateDirectoryA((folder / "sub").c_str(), nullptr);
    files.Write(folder / "other", "x");
    for (const FileAction& action : Actions) {
        for (const std::string& path : {folder / "sub", folder / "no folder\\file", std::string("Q:\\file")})
            EXPECT_NE(ErrorOf([&] { action.run(files, path, folder / "other"); }), NoError)
                << action.name << ' ' << path;
    }
    EXPECT_EQ(sleep.Milliseconds(), 0U);
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

TEST_F(FilesWinTest, DistinguishesFilesFromFoldersAndMissingPaths) {
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
