#include "win32/NameLookUp.h"

#include "tests/win32/harness/Pumping.h"

#include <gtest/gtest.h>
#include <utility>

namespace quarn {
namespace {

// A label of a host name has at most 63 characters: this one fails without anybody being asked.
const std::string ImpossibleHost(64, 'x');

class NameLookUpTest : public ::testing::Test {
  protected:
    bool WaitForAnswer() {
        return PumpUntil([this] { return !answers.empty(); });
    }

    std::vector<std::pair<int, u_long>> answers; // error and address
    NameLookUp lookUp{
        [this](int error, in_addr address) { answers.emplace_back(error, ntohl(address.s_addr)); }};
};

using Answers = std::vector<std::pair<int, u_long>>;

TEST_F(NameLookUpTest, AnswersWithTheAddress) {
    EXPECT_EQ(lookUp.Start("localhost"), 0);
    EXPECT_TRUE(lookUp.Underway());
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(WaitForAnswer());
    EXPECT_EQ(answers, (Answers{{0, INADDR_LOOPBACK}}));
    EXPECT_FALSE(lookUp.Underway());
}

TEST_F(NameLookUpTest, AnswersWithTheError) {
    EXPECT_EQ(lookUp.Start(ImpossibleHost), 0);
    ASSERT_TRUE(WaitForAnswer());
    EXPECT_NE(answers[0].first, 0);
    EXPECT_FALSE(lookUp.Underway());
}

TEST_F(NameLookUpTest, AnotherStartTakesTheOldAnswersPlace) {
    lookUp.Start(ImpossibleHost);
    lookUp.Start("localhost");
    ASSERT_TRUE(WaitForAnswer());
    EXPECT_EQ(answers, (Answers{{0, INADDR_LOOPBACK}}));
}

TEST_F(NameLookUpTest, ACancelledOneDoesNotAnswer) {
    lookUp.Start(ImpossibleHost);
    lookUp.Cancel();
    EXPECT_FALSE(lookUp.Underway());
    lookUp.Cancel();

    bool otherAnswered = false;
    NameLookUp other([&](int, in_addr) { otherAnswered = true; });
    other.Start("localhost");
    ASSERT_TRUE(PumpUntil([&] { return otherAnswered; }));
    EXPECT_TRUE(answers.empty());
}

TEST_F(NameLookUpTest, AnAnswerMayStartTheNextOne) {
    std::vector<int> errors;
    NameLookUp* again = nullptr;
    NameLookUp chained([&](int error, in_addr) {
        errors.push_back(error);
        if (errors.size() == 1)
            again->Start("localhost");
    });
    again = &chained;
    chained.Start(ImpossibleHost);
    ASSERT_TRUE(PumpUntil([&] { return errors.size() == 2; }));
    EXPECT_NE(errors[0], 0);
    EXPECT_EQ(errors[1], 0);
}

} // namespace
} // namespace quarn
