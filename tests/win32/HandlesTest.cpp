#include "win32/Handles.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace quarn {
namespace {

std::vector<int> freed;

struct NumberKind {
    using Type = int;
    static Type Empty() noexcept { return -1; }
    static void Free(Type number) noexcept { freed.push_back(number); }
};
using Number = UniqueHandle<NumberKind>;

class HandlesTest : public ::testing::Test {
  protected:
    HandlesTest() { freed.clear(); }
};

TEST_F(HandlesTest, FreesOnceAtTheEnd) {
    {
        const Number number(5);
        EXPECT_TRUE(number);
        EXPECT_EQ(number.Get(), 5);
    }
    EXPECT_EQ(freed, std::vector<int>{5});
}

TEST_F(HandlesTest, AnEmptyOneFreesNothing) {
    {
        const Number number;
        EXPECT_FALSE(number);
    }
    EXPECT_TRUE(freed.empty());
}

TEST_F(HandlesTest, AMovedOneFreesNothing) {
    Number first(5);
    {
        Number second(std::move(first));
        first = std::move(second);
        EXPECT_TRUE(freed.empty());
    }
    EXPECT_EQ(first.Get(), 5);
}

TEST_F(HandlesTest, AssigningANewOneFreesTheOldOne) {
    Number number(5);
    number.Reset(6);
    EXPECT_EQ(freed, std::vector<int>{5});
    *number.Receive() = 7;
    EXPECT_EQ(freed, (std::vector<int>{5, 6}));
    number = Number(8);
    EXPECT_EQ(freed, (std::vector<int>{5, 6, 7}));
}

TEST_F(HandlesTest, AReleasedOneIsNotFreed) {
    {
        Number number(5);
        EXPECT_EQ(number.Release(), 5);
        EXPECT_FALSE(number);
    }
    EXPECT_TRUE(freed.empty());
}

} // namespace
} // namespace quarn
