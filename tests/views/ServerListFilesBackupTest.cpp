#include "tests/views/ListFileTest.h"

#include "tests/fakes/Errors.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ServerListFilesBackupTest : public ListFileTest {};

TEST_F(ServerListFilesBackupTest, LeavesTheOldFileWhenTheNewOneCannotBeWritten) {
    fake.files.Put(ListPath, "the old list");
    fake.files.freeBytes = 10;
    EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(fake.files.Get(ListPath), "the old list");
    fake.files.ClearFaults();
    fake.files.FailWrites(ListPath, ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(fake.files.Get(ListPath), "the old list");
    EXPECT_EQ(program.AppLog->HistoryLog(), "");
}

TEST_F(ServerListFilesBackupTest, KeepsADamagedFileUnderAnotherName) {
    Load("damaged");
    EXPECT_FALSE(fake.files.Has(BackupPath));
    EXPECT_EQ(Saved(), " 0\r\n");
    EXPECT_EQ(fake.files.Get(BackupPath), "damaged");

    Saved(); // once is enough
    EXPECT_EQ(fake.files.Writes(BackupPath), 1);
}

TEST_F(ServerListFilesBackupTest, NeverOverwritesABackup) {
    for (int i = 1; i <= 12; ++i) {
        Load("damage " + std::to_string(i));
        Saved();
    }
    EXPECT_EQ(fake.files.Get(BackupPath), "damage 1");
    for (int i = 2; i <= 12; ++i)
        EXPECT_EQ(fake.files.Get("C:\\Quarn\\servers-q3." + std::to_string(i) + ".bak"),
                  "damage " + std::to_string(i));
}

TEST_F(ServerListFilesBackupTest, TakesTheFirstNameForABackupThatIsFree) {
    fake.files.Put(BackupPath, "the first");
    fake.files.PutFolder("C:\\Quarn\\servers-q3.2.bak");
    fake.files.Put("C:\\Quarn\\servers-q3.4.bak", "the fourth");
    Load("damaged");
    Saved();
    EXPECT_EQ(fake.files.Get(BackupPath), "the first");
    EXPECT_EQ(fake.files.Get("C:\\Quarn\\servers-q3.3.bak"), "damaged");
    EXPECT_EQ(fake.files.Get("C:\\Quarn\\servers-q3.4.bak"), "the fourth");
}

TEST_F(ServerListFilesBackupTest, KeepsEveryListThatASeparatorInANameDamages) {
    ServerRecord server = FullRecord();
    server.Name = "a;b";
    std::vector<std::string> written;
    for (const char* backup : {"servers-q3.bak", "servers-q3.2.bak", "servers-q3.3.bak"}) {
        server.Ping += 1; // a list that differs from the last one
        const std::string content = SavedAlone(server);
        files.LoadServerList("q3");
        EXPECT_THAT(Addresses(), IsEmpty());
        Saved();
        EXPECT_EQ(fake.files.Get("C:\\Quarn\\"s + backup), content);
    }
}

TEST_F(ServerListFilesBackupTest, KeepsOnlyTheFileOfTheListThatWasDamaged) {
    Load("damaged");
    files.SaveServerList("fav1");
    EXPECT_FALSE(fake.files.Has(BackupPath));
    EXPECT_FALSE(fake.files.Has("C:\\Quarn\\servers-fav1.bak"));
}

TEST_F(ServerListFilesBackupTest, KeepsNoCopyOfAFileThatIsMissingOrWhole) {
    files.LoadServerList("q3");
    Saved();
    Load("damaged");
    Load(" 0\r\n"); // repaired meanwhile
    Saved();
    EXPECT_FALSE(fake.files.Has(BackupPath));
}

TEST_F(ServerListFilesBackupTest, SavesWhereADamagedFileWasRemovedMeanwhile) {
    Load("damaged");
    fake.files.Remove(ListPath);
    EXPECT_EQ(Saved(), " 0\r\n");
    EXPECT_FALSE(fake.files.Has(BackupPath));
}

TEST_F(ServerListFilesBackupTest, ReplacesNothingThatItCannotKeep) {
    Load("damaged");
    fake.files.FailWrites(BackupPath, ErrorNumber::DiskFull);
    EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(fake.files.Get(ListPath), "damaged");
    fake.files.ClearFaults();
    Saved();
    EXPECT_EQ(fake.files.Get(BackupPath), "damaged");
}

// What reading a file reports when the file may well be there.
constexpr ErrorNumber Unreadable[] = {ErrorNumber::PermissionDenied,   ErrorNumber::PathFileAccessError,
                                      ErrorNumber::PathNotFound,       ErrorNumber::DeviceIOError,
                                      ErrorNumber::DeviceUnavailable,  ErrorNumber::DiskNotReady,
                                      ErrorNumber::InputPastEndOfFile, ErrorNumber::OutOfMemory};

TEST_F(ServerListFilesBackupTest, NeverReplacesAFileThatItCouldNotReadByAnEmptyList) {
    const std::string whole = " 1\r\n" + Entry + "\r\n";
    for (const ErrorNumber error : Unreadable) {
        fake.files.Put(ListPath, whole);
        fake.files.FailReads(ListPath, error);
        files.LoadServerList("q3");
        EXPECT_THAT(Addresses(), IsEmpty());
        EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), error);
        fake.files.ClearFaults(); // the file is back before the list is saved
        EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), error);
        EXPECT_EQ(fake.files.Get(ListPath), whole);
        EXPECT_THAT(fake.files.Paths(), ElementsAre(ListPath));

        files.LoadServerList("q3");
        EXPECT_THAT(Addresses(), ElementsAre("192.0.2.7"));
        program.Servers.Reset();
        EXPECT_EQ(Saved(), " 0\r\n"); // the user's own doing
    }
}

TEST_F(ServerListFilesBackupTest, KeepsAFileThatItCouldNotReadWhenServersReplaceIt) {
    fake.files.Put(ListPath, "of the good days");
    fake.files.FailReads(ListPath, ErrorNumber::PermissionDenied);
    files.LoadServerList("q3");
    program.Servers.Reset(1);
    EXPECT_EQ(ErrorOf([&] { files.SaveServerList("q3"); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(fake.files.Get(ListPath), "of the good days");
    fake.files.ClearFaults();
    EXPECT_EQ(Saved(), " 1\r\n;0;;;0;0;0;;;0;;;\r\n");
    EXPECT_EQ(fake.files.Get(BackupPath), "of the good days");
}

TEST_F(ServerListFilesBackupTest, TellsWhetherTheLastLoadCouldNotReadTheFile) {
    files.LoadServerList("q3");
    files.RequireRead("q3"); // there is none
    Load("damaged");
    files.RequireRead("q3"); // will be kept under another name
    fake.files.FailReads(ListPath, ErrorNumber::DiskNotReady);
    files.LoadServerList("q3");
    EXPECT_EQ(ErrorOf([&] { files.RequireRead("q3"); }), ErrorNumber::DiskNotReady);
    files.RequireRead("fav1");
    fake.files.ClearFaults();
    Load(" 0\r\n");
    files.RequireRead("q3");
}

TEST_F(ServerListFilesBackupTest, AnEmptyListThatCannotBeSavedIsLeftWithAnEntryInTheLog) {
    program.Servers.Reset();
    fake.files.FailWrites(ListPath, ErrorNumber::PathFileAccessError);
    files.SaveBeforeLeaving("q3");
    EXPECT_THAT(program.AppLog->HistoryLog(), ::testing::HasSubstr("frmMain;SetGameFilter;"));
    EXPECT_THAT(program.AppLog->HistoryLog(), ::testing::EndsWith(";75;Path/File access error\r\n"));
    EXPECT_THAT(fake.prompts.shown, IsEmpty());

    program.Servers.Reset(1);
    EXPECT_EQ(ErrorOf([&] { files.SaveBeforeLeaving("q3"); }), ErrorNumber::PathFileAccessError);
    fake.files.ClearFaults();
    files.SaveBeforeLeaving("q3");
    EXPECT_EQ(fake.files.Get(ListPath), " 1\r\n;0;;;0;0;0;;;0;;;\r\n");
}

} // namespace
} // namespace quarn
