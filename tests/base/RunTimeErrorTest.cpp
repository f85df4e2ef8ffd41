#include "base/RunTimeError.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quarn {
namespace {

const std::string General = "Application-defined or object-defined error";

TEST(RunTimeErrorTest, HasTheNumberAndTextOfItsKind) {
    const RunTimeError error(ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(error.Kind(), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(error.Number(), 9);
    EXPECT_STREQ(error.what(), "Subscript out of range");
}

TEST(RunTimeErrorTest, NoTwoKindsHaveTheSameText) {
    constexpr std::int32_t HighestNumber = 65'535;
    std::set<std::string> texts;
    for (std::int32_t number = 0; number <= HighestNumber; ++number) {
        const std::string text = DescriptionOf(static_cast<ErrorNumber>(number));
        if (text != General) {
            EXPECT_TRUE(texts.insert(text).second) << number << ": " << text;
        }
    }
    EXPECT_FALSE(texts.empty());
}

TEST(RunTimeErrorTest, AnyOtherNumberHasTheGeneralText) {
    for (const std::int32_t number : {0, 1, 10, 65'535, -1})
        EXPECT_EQ(DescriptionOf(static_cast<ErrorNumber>(number)), General) << number;
}

} // namespace
} // namespace quarn
