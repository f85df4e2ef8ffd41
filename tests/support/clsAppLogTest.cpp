#include "support/clsAppLog.h"

#include "core/Version.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace quarn {
namespace {

constexpr const char* LogPath = "C:\\Quarn\\Quarn.log";

class clsAppLogTest : public ::testing::Test {
  protected:
    FakeDesktop fake;
    clsAppLog log{fake.desktop, "C:\\Quarn\\"};

    const FakePrompts::Prompt& Shown(std::size_t index = 0) { return fake.prompts.shown.at(index); }
    std::size_t ShownCount() const { return fake.prompts.shown.size(); }
};

TEST_F(clsAppLogTest, KeepsItsFileNextToTheProgram) {
    EXPECT_EQ(log.DefaultLogFilename(), LogPath);
    EXPECT_EQ(fake.files.TotalWrites(), 0);
}

TEST_F(clsAppLogTest, WritesALineOfFiveFields) {
    fake.clock.SetNow({2005, 6, 21, 14, 3, 7}, 250);
    log.Log("frmMain", "mnuExtrasGameSetup_Click", 91, "Object variable not set");
    EXPECT_EQ(fake.files.Get(LogPath),
              "frmMain;mnuExtrasGameSetup_Click;06/21/05 14:03:07.250;91;Object variable not set\r\n");
}

TEST_F(clsAppLogTest, WritesTimesWithLeadingZeros) {
    const struct {
        CalendarTime time;
        int milliseconds;
        const char* text;
    } cases[] = {
        {{2026, 1, 2, 3, 4, 5}, 6, "01/02/26 03:04:05.006"},
        {{2026, 12, 31, 23, 59, 59}, 999, "12/31/26 23:59:59.999"},
        {{2000, 1, 1, 0, 0, 0}, 0, "01/01/00 00:00:00.000"},
        {{2100, 2, 28, 12, 0, 0}, 40, "02/28/00 12:00:00.040"},
    };
    for (const auto& c : cases) {
        fake.clock.SetNow(c.time, c.milliseconds);
        log.Log("m", "r", 0, "", false, false, true);
        EXPECT_EQ(fake.files.Get(LogPath), std::string("m;r;") + c.text + ";0;\r\n");
    }
}

TEST_F(clsAppLogTest, LeavesMissingFieldsEmpty) {
    log.Log("frmMain", "Form_Load");
    EXPECT_EQ(fake.files.Get(LogPath), "frmMain;Form_Load;11/21/26 08:05:00.000;0;\r\n");
    EXPECT_EQ(ShownCount(), 0U);
    EXPECT_TRUE(fake.shell.opened.empty());
}

TEST_F(clsAppLogTest, WritesFieldsUnchanged) {
    const std::string description = std::string("a;b\"c\r\nd\xFF") + '\0';
    log.Log("m;1", "r", -5, description);
    EXPECT_EQ(fake.files.Get(LogPath), "m;1;r;11/21/26 08:05:00.000;-5;" + description + "\r\n");
}

TEST_F(clsAppLogTest, AppendsToTheFileOfEarlierRuns) {
    fake.files.Put(LogPath, "earlier\r\n");
    log.Log("m", "a");
    log.Log("m", "b");
    EXPECT_EQ(fake.files.Get(LogPath),
              "earlier\r\nm;a;11/21/26 08:05:00.000;0;\r\nm;b;11/21/26 08:05:00.000;0;\r\n");
    EXPECT_EQ(fake.files.Reads(LogPath), 0);
}

TEST_F(clsAppLogTest, OverwritingKeepsOneLineInTheFileAndTheWholeRunInTheHistory) {
    fake.files.Put(LogPath, "earlier\r\n");
    log.Log("m", "a");
    log.Log("m", "b", 0, "", false, false, true);
    EXPECT_EQ(fake.files.Get(LogPath), "m;b;11/21/26 08:05:00.000;0;\r\n");
    EXPECT_EQ(log.HistoryLog(), "m;a;11/21/26 08:05:00.000;0;\r\nm;b;11/21/26 08:05:00.000;0;\r\n");
}

TEST_F(clsAppLogTest, CountsOnlyNumbersAboveZero) {
    for (const std::int32_t number : {0, -1, std::numeric_limits<std::int32_t>::min()})
        log.Log("m", "r", number);
    EXPECT_EQ(log.ErrorCount(), 0);
    for (const std::int32_t number : {1, 13, std::numeric_limits<std::int32_t>::max()})
        log.Log("m", "r", number);
    EXPECT_EQ(log.ErrorCount(), 3);
}

TEST_F(clsAppLogTest, ShowsTheErrorAndWhereToFindMore) {
    log.Log("frmMain", "Form_Load", 9, "Subscript out of range", true);
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown().kind, FakePrompts::Kind::Error);
    EXPECT_EQ(Shown().title, "Quarn - Error");
    EXPECT_EQ(Shown().text,
              "A error has occurred in frmMain in Form_Load\r\n"
              "Error #9: Subscript out of range\r\n"
              "\r\n"
              "Please close the program. You will then get the possibility to send an error report to the "
              "developer.\r\n"
              "Alternatively, you can also check the file Quarn.log for details.");
}

TEST_F(clsAppLogTest, WritesTheEntryBeforeItShowsTheMessage) {
    std::string writtenByThen;
    fake.prompts.whileOpen = [&] { writtenByThen = fake.files.Get(LogPath); };
    log.Log("m", "r", 9, "text", true);
    EXPECT_EQ(writtenByThen, "m;r;11/21/26 08:05:00.000;9;text\r\n");
}

TEST_F(clsAppLogTest, ShowsAMessageUnderTheProgramsTitle) {
    log.ErrorMessage("The file is missing.");
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown().text, "The file is missing.");
    EXPECT_EQ(Shown().title, "Quarn - Error");
    EXPECT_FALSE(fake.files.Has(LogPath));
}

TEST_F(clsAppLogTest, OnlyLogsWhatHappensWhileAMessageIsOpen) {
    fake.prompts.whileOpen = [&] {
        log.Log("m", "inner", 6, "Overflow", true);
        log.ErrorMessage("also not shown");
    };
    log.Log("m", "outer", 9, "Subscript out of range", true);
    EXPECT_EQ(ShownCount(), 1U);
    EXPECT_EQ(log.ErrorCount(), 2);
    EXPECT_NE(fake.files.Get(LogPath).find("m;inner;"), std::string::npos);

    fake.prompts.whileOpen = nullptr;
    log.ErrorMessage("shown again");
    EXPECT_EQ(ShownCount(), 2U);
}

TEST_F(clsAppLogTest, TellsOnceThatEntriesCouldNotBeWritten) {
    fake.files.FailWrites(LogPath, ErrorNumber::PermissionDenied);
    log.Log("m", "lost", 0, "text");
    log.Log("m", "lost too", 0, "text", false, false, true);
    EXPECT_EQ(ShownCount(), 0U); // the caller may hold what events would change
    log.TellWriteFault();
    log.TellWriteFault();
    log.Log("m", "lost as well");
    log.TellWriteFault();
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown(0).text, "Error number 70 in class AppLog, Sub WriteLogEntry");
    EXPECT_EQ(log.ErrorCount(), 0);
    EXPECT_TRUE(log.HistoryLog().starts_with(
        "m;lost;11/21/26 08:05:00.000;0;text\r\nm;lost too;11/21/26 08:05:00.000;0;text\r\n"));

    fake.files.ClearFaults();
    log.Log("m", "kept");
    log.TellWriteFault();
    EXPECT_EQ(ShownCount(), 1U);
    EXPECT_EQ(fake.files.Get(LogPath), "m;kept;11/21/26 08:05:00.000;0;\r\n");
}

TEST_F(clsAppLogTest, TellsOfALaterFaultAgain) {
    for (const ErrorNumber fault : {ErrorNumber::PermissionDenied, ErrorNumber::DiskFull}) {
        fake.files.FailWrites(LogPath, fault);
        log.Log("m", "lost");
        fake.files.ClearFaults();
        log.TellWriteFault();
        log.Log("m", "kept");
    }
    ASSERT_EQ(ShownCount(), 2U);
    EXPECT_EQ(Shown(1).text, "Error number 61 in class AppLog, Sub WriteLogEntry");
}

TEST_F(clsAppLogTest, SaysNothingOfAFaultThatIsOver) {
    fake.files.FailWrites(LogPath, ErrorNumber::PermissionDenied);
    log.Log("m", "lost");
    fake.files.ClearFaults();
    log.Log("m", "kept");
    log.TellWriteFault();
    EXPECT_EQ(ShownCount(), 0U);
}

TEST_F(clsAppLogTest, TellsOfAFaultAfterTheMessageBoxThatIsOpen) {
    fake.files.FailWrites(LogPath, ErrorNumber::PermissionDenied);
    fake.prompts.whileOpen = [&] { log.TellWriteFault(); };
    log.Log("m", "lost", 9, "text", true);
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_TRUE(Shown(0).text.starts_with("A error has occurred in m in lost"));
    fake.prompts.whileOpen = nullptr;
    log.TellWriteFault();
    ASSERT_EQ(ShownCount(), 2U);
    EXPECT_EQ(Shown(1).text, "Error number 70 in class AppLog, Sub WriteLogEntry");
}

TEST_F(clsAppLogTest, ShowsTheErrorAlsoWhenItsEntryIsLost) {
    fake.files.freeBytes = 10;
    log.Log("m", "r", 9, "text", true);
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown(0).text.substr(0, 34), "A error has occurred in m in r\r\nEr");
    EXPECT_EQ(log.ErrorCount(), 1);
}

TEST_F(clsAppLogTest, WritesAnUncountedErrorLikeAnyOther) {
    log.LogUncounted("m", "r", 13, "Type mismatch");
    EXPECT_EQ(log.ErrorCount(), 0);
    EXPECT_EQ(fake.files.Get(LogPath), "m;r;11/21/26 08:05:00.000;13;Type mismatch\r\n");
    log.HandleAppErrors();
    EXPECT_EQ(ShownCount(), 0U);
}

TEST_F(clsAppLogTest, BoundsTheLinesOfOneRoutineAndNumber) {
    constexpr std::int32_t Most = clsAppLog::MostLinesOfAKind;
    for (std::int32_t i = 0; i < 3 * Most; ++i) {
        log.LogUncounted("m", "r", 13, "Type mismatch");
        log.Log("m", "r", 9, "Subscript out of range");
    }
    log.Log("m", "other", 13, "Type mismatch");
    const std::vector<std::string> lines = LoggedEntries(fake.files.Get(LogPath));
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(2 * Most + 1));
    EXPECT_EQ(lines.back(), "m;other;13");
    EXPECT_EQ(log.ErrorCount(), 3 * Most + 1); // all are counted
    EXPECT_EQ(log.HistoryLog(), fake.files.Get(LogPath));
    const std::string& text = log.HistoryLog();
    const std::string note = " (further entries like this are left out)\r\n";
    std::size_t notes = 0;
    for (std::size_t at = text.find(note); at != std::string::npos; at = text.find(note, at + 1))
        ++notes;
    EXPECT_EQ(notes, 2U);
}

class clsAppLogReportTest : public clsAppLogTest {
  protected:
    clsAppLogReportTest() {
        log.NotifyEmailAddress = "help@quarn.example";
        fake.system.windows = OsVersion{{5, 1, 2600}, std::string("Service Pack 2\0 junk", 20)};
        fake.system.shellLightWeight = DllVersion{6, 0, 2900};
        fake.system.directX = "4.09.00.0904";
        fake.system.language = "German (Germany)";
        fake.system.memory = MemoryStatus{1048575, 3145727, 1048576, 4294967296};
    }

    std::string MailOpened() {
        log.Log("m", "r", 0, "text", false, true);
        EXPECT_EQ(fake.shell.opened.size(), 1U);
        return fake.shell.opened.at(0).file;
    }
};

TEST_F(clsAppLogReportTest, PassesTheWholeReportToTheMailProgram) {
    log.Log("m", "first", 13, "a&b");
    const std::string subject = std::string("Error log from Quarn ") + VersionText;
    EXPECT_EQ(MailOpened(), "MailTo:help@quarn.example&Subject=" + subject +
                                "&Body=User%20comments:%20%0D%0A%0D%0A"
                                "Time:%2011/21/26%2008:05:00%0D%0A"
                                "OS%20Version:%205.1.2600%20Service%20Pack%202%0D%0A"
                                "IE%20Version:%206.0.2900%0D%0A"
                                "DirectX%20Version:%204.09.00.0904%0D%0A"
                                "OS%20Language:%20German%20(Germany)%0D%0A"
                                "Memory:%201/3%20physical,%202/4097%20virtual%0D%0A%0D%0A"
                                "Log:%0D%0A"
                                "m;first;11/21/26%2008:05:00.000;13;a%26b%0D%0A"
                                "m;r;11/21/26%2008:05:00.000;0;text%0D%0A");
}

TEST_F(clsAppLogReportTest, ALongLogLosesItsOldestLines) {
    for (int i = 1; i <= 500; ++i)
        log.Log("module", "routine" + std::to_string(i % 5), 13, "description & number " + std::to_string(i));
    const std::string link = MailOpened();
    EXPECT_LE(link.size(), 2000U);
    EXPECT_GT(link.size(), 1850U);
    EXPECT_NE(link.find("Memory:%201/3%20physical,%202/4097%20virtual%0D%0A%0D%0A"
                        "Log:%0D%0A(The%20newest%20"),
              std::string::npos);
    EXPECT_NE(link.find("%20of%20501%20lines,"), std::string::npos);
    EXPECT_NE(link.find("number%20500%0D%0Am;r;"), std::string::npos);
    EXPECT_EQ(link.find("number%201%0D"), std::string::npos);
}

TEST_F(clsAppLogReportTest, OpensTheLinkOnItsOwn) {
    MailOpened();
    const Shell::Request& request = fake.shell.opened.at(0);
    EXPECT_EQ(request.verb, "Open");
    EXPECT_EQ(request.parameters, "");
    EXPECT_EQ(request.folder, "");
    EXPECT_FALSE(request.ownedByWindow);
    EXPECT_EQ(request.show, ShowState::Normal);
}

TEST_F(clsAppLogReportTest, ShowsTheMessageBeforeItStartsTheMailProgram) {
    std::size_t openedByThen = 1;
    fake.prompts.whileOpen = [&] { openedByThen = fake.shell.opened.size(); };
    log.Log("m", "r", 9, "text", true, true);
    EXPECT_EQ(ShownCount(), 1U);
    EXPECT_EQ(openedByThen, 0U);
    EXPECT_EQ(fake.shell.opened.size(), 1U);
}

TEST_F(clsAppLogReportTest, LeavesUnavailableFactsEmpty) {
    fake.system.windows.reset();
    fake.system.shellLightWeight.reset();
    fake.system.directX.reset();
    fake.system.language.reset();
    fake.system.memory.reset();
    EXPECT_NE(MailOpened().find("OS%20Version:%20%0D%0A"
                                "IE%20Version:%20%0D%0A"
                                "DirectX%20Version:%20%0D%0A"
                                "OS%20Language:%20%0D%0A"
                                "Memory:%20%0D%0A%0D%0ALog:"),
              std::string::npos);
    EXPECT_EQ(ShownCount(), 0U);
    EXPECT_EQ(log.ErrorCount(), 0);
}

TEST_F(clsAppLogReportTest, ShowsThatTheMailProgramCouldNotBeStarted) {
    fake.shell.openFault = ErrorNumber::InvalidProcedureCall;
    log.Log("m", "r", 0, "text", false, true);
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown().text, "Error number 5 in class AppLog, Sub EmailError");
}

TEST_F(clsAppLogReportTest, NamesTheSystemWithItsServicePack) {
    EXPECT_EQ(log.GetOSVersion(), "5.1.2600 Service Pack 2");
    fake.system.windows = OsVersion{{10, 0, 22631}, ""};
    EXPECT_EQ(log.GetOSVersion(), "10.0.22631 ");
    fake.system.windows = OsVersion{{4, 10, 0}, std::string("\0junk", 5)};
    EXPECT_EQ(log.GetOSVersion(), "4.10.0 ");
    fake.system.windows.reset();
    EXPECT_EQ(log.GetOSVersion(), "");
}

TEST_F(clsAppLogReportTest, AsksNothingAtTheEndOfARunWithoutErrors) {
    log.Log("m", "r", 0, "information");
    log.HandleAppErrors();
    EXPECT_EQ(ShownCount(), 0U);
}

TEST_F(clsAppLogReportTest, OffersAReportAtTheEndOfARunWithErrors) {
    log.Log("m", "r", 13);
    log.Log("m", "r", 6);
    fake.prompts.yesNoAnswers = {true};
    log.HandleAppErrors();
    ASSERT_EQ(ShownCount(), 1U);
    EXPECT_EQ(Shown().kind, FakePrompts::Kind::YesNo);
    EXPECT_EQ(Shown().title, "Send error log?");
    EXPECT_EQ(Shown().text, "Quarn generated 2 error(s) during runtime. A log has been created.\r\n"
                            "Would you like to send an error report to the application developer?");
    ASSERT_EQ(fake.shell.opened.size(), 1U);
    EXPECT_EQ(fake.files.Get(LogPath),
              "m;r;11/21/26 08:05:00.000;13;\r\nm;r;11/21/26 08:05:00.000;6;\r\n"
              "clsAppLog;HandleAppErrors;11/21/26 08:05:00.000;0;Generating error report\r\n");
    EXPECT_TRUE(fake.shell.opened[0].file.ends_with("Generating%20error%20report%0D%0A"));
    EXPECT_EQ(log.ErrorCount(), 2);
}

TEST_F(clsAppLogReportTest, SendsNothingWithoutTheUsersConsent) {
    log.Log("m", "r", 13);
    const std::string before = fake.files.Get(LogPath);
    fake.prompts.yesNoAnswers = {false};
    log.HandleAppErrors();
    EXPECT_TRUE(fake.shell.opened.empty());
    EXPECT_EQ(fake.files.Get(LogPath), before);
}

TEST_F(clsAppLogReportTest, ShowsNoMessageInAdditionToTheQuestion) {
    log.Log("m", "r", 13);
    fake.prompts.yesNoAnswers = {false};
    fake.prompts.whileOpen = [&] { log.Log("m", "inner", 6, "Overflow", true); };
    log.HandleAppErrors();
    EXPECT_EQ(ShownCount(), 1U);
    EXPECT_EQ(log.ErrorCount(), 2);
}

// While any message box of the program is open, an error is logged and shows no second message box.
TEST_F(clsAppLogTest, ShowsNoErrorOnTopOfAQuestion) {
    fake.prompts.textAnswers = {"Friends"};
    fake.prompts.whileOpen = [&] { log.Log("m", "meanwhile", 6, "Overflow", true); };
    EXPECT_EQ(fake.desktop.prompts.AskText("Enter a new name:", "Change name"), "Friends");
    EXPECT_EQ(ShownCount(), 1U);
    EXPECT_EQ(log.ErrorCount(), 1);

    fake.prompts.whileOpen = nullptr;
    log.Log("m", "afterwards", 6, "Overflow", true);
    EXPECT_EQ(ShownCount(), 2U);
}

} // namespace
} // namespace quarn
