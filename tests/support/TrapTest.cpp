#include "support/Trap.h"

#include "tests/fakes/FakeDesktop.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>

namespace quarn {
namespace {

class TrapTest : public ::testing::Test {
  protected:
    template<class Body>
    std::string EntryOf(Body&& body, OnError onError = OnError::Log) {
        EXPECT_FALSE(Trapped(log, "modX", "Routine", onError, body));
        return log.HistoryLog();
    }

    FakeDesktop fake;
    clsAppLog log{fake.desktop, "C:\\Quarn\\"};
};

TEST_F(TrapTest, ABodyThatEndsWellLogsNothing) {
    bool ran = false;
    EXPECT_TRUE(Trapped(log, "modX", "Routine", OnError::LogAndShow, [&] { ran = true; }));
    EXPECT_TRUE(ran);
    EXPECT_EQ(log.HistoryLog(), "");
    EXPECT_EQ(log.ErrorCount(), 0);
}

TEST_F(TrapTest, LogsARunTimeErrorUnderTheRoutinesName) {
    const std::string entry = EntryOf([] { throw RunTimeError(ErrorNumber::SubscriptOutOfRange); });
    EXPECT_EQ(entry, "modX;Routine;11/21/26 08:05:00.000;9;Subscript out of range\r\n");
    EXPECT_EQ(log.ErrorCount(), 1);
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(TrapTest, AppendsToTheLogAndMailsNothing) {
    log.Log("modX", "Before");
    const std::string history =
        EntryOf([] { throw RunTimeError(ErrorNumber::Overflow); }, OnError::LogAndShow);
    EXPECT_EQ(fake.files.Get(log.DefaultLogFilename()), history);
    EXPECT_TRUE(fake.shell.opened.empty());
}

TEST_F(TrapTest, ShowsTheErrorOnlyWhereTheUserIsToSeeIt) {
    EntryOf([] { throw RunTimeError(ErrorNumber::Overflow); }, OnError::LogAndShow);
    ASSERT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_EQ(fake.prompts.shown[0].text.substr(0, 64),
              "A error has occurred in modX in Routine\r\nError #6: Overflow\r\n\r\nP");
}

TEST_F(TrapTest, CallsMemoryThatRanOutByItsNumber) {
    EXPECT_EQ(EntryOf([] { throw std::bad_alloc(); }),
              "modX;Routine;11/21/26 08:05:00.000;7;Out of memory\r\n");
}

TEST_F(TrapTest, CatchesWhateverElseIsThrown) {
    EXPECT_EQ(EntryOf([] { throw std::logic_error("unforeseen"); }),
              "modX;Routine;11/21/26 08:05:00.000;51;Internal error\r\n");
    EXPECT_FALSE(Trapped(log, "modX", "Routine", OnError::Log, [] { throw 42; }));
    EXPECT_EQ(log.ErrorCount(), 2);
}

} // namespace
} // namespace quarn
