#include "base/OneBased.h"

#include "tests/fakes/Errors.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace quarn {
namespace {

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

TEST(OneBased, BeginsWithItsEmptySlotZero) {
    OneBased<std::string> list;
    EXPECT_EQ(list.HighestIndex(), 0);
    EXPECT_EQ(list[0], "");
    EXPECT_FALSE(list.Holds(0));
    EXPECT_FALSE(list.Holds(1));
}

TEST(OneBased, HasSlotsUpToItsHighestIndex) {
    OneBased<int> list(3);
    EXPECT_EQ(list.HighestIndex(), 3);
    for (std::int32_t index = 1; index <= 3; ++index)
        list[index] = index * 10;
    EXPECT_EQ(list[0], 0);
    EXPECT_EQ(list[1], 10);
    EXPECT_EQ(list[3], 30);
}

TEST(OneBased, HoldsTheIndexesItIsUsedWith) {
    const OneBased<int> list(3);
    for (const std::int32_t index : {1, 2, 3})
        EXPECT_TRUE(list.Holds(index)) << index;
    for (const std::int32_t index : {0, 4, -1, Lowest, Highest})
        EXPECT_FALSE(list.Holds(index)) << index;
}

TEST(OneBased, RefusesEveryOtherIndex) {
    OneBased<int> list(3);
    const OneBased<int>& constant = list;
    for (const std::int32_t index : {-1, 4, 5, Lowest, Highest}) {
        EXPECT_EQ(ErrorOf([&] { list[index] = 1; }), ErrorNumber::SubscriptOutOfRange) << index;
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(constant[index]); }), ErrorNumber::SubscriptOutOfRange);
    }
}

TEST(OneBased, ResettingEmptiesAndResizingKeepsWhatFits) {
    OneBased<int> list(2);
    list[1] = 10;
    list[2] = 20;
    list.Resize(3);
    EXPECT_EQ(list[1], 10);
    EXPECT_EQ(list[2], 20);
    EXPECT_EQ(list[3], 0);
    list.Resize(1);
    list.Resize(2);
    EXPECT_EQ(list[1], 10);
    EXPECT_EQ(list[2], 0);
    list.Reset(2);
    EXPECT_EQ(list[1], 0);
    list.Reset();
    EXPECT_EQ(list.HighestIndex(), 0);
}

TEST(OneBased, RefusesToShrinkBelowSlotZero) {
    OneBased<int> list(2);
    list[2] = 20;
    for (const std::int32_t highest : {-1, -2, Lowest}) {
        EXPECT_EQ(ErrorOf([&] { list.Resize(highest); }), ErrorNumber::SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([&] { OneBased<int> other(highest); }), ErrorNumber::SubscriptOutOfRange);
    }
    EXPECT_EQ(list[2], 20);
}

} // namespace
} // namespace quarn
