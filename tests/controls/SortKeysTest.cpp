#include "controls/SortKeys.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

std::vector<std::uint32_t> Sorted(const Texts& texts, SortOrder order) {
    SortKeys keys;
    for (const std::string& text : texts)
        keys.Add(text);
    EXPECT_EQ(keys.Count(), static_cast<std::int32_t>(texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(keys.Key(i), texts[i]);
    return keys.Sorted(order);
}

// The expected order, found in the simplest way.
std::vector<std::uint32_t> Expected(const Texts& texts, SortOrder order) {
    std::vector<std::uint32_t> numbers(texts.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    std::stable_sort(numbers.begin(), numbers.end(), [&](std::uint32_t a, std::uint32_t b) {
        return order == SortOrder::Ascending ? texts[a] < texts[b] : texts[b] < texts[a];
    });
    return numbers;
}

void ExpectOrdered(const Texts& texts) {
    for (const SortOrder order : {SortOrder::Ascending, SortOrder::Descending})
        EXPECT_EQ(Sorted(texts, order), Expected(texts, order));
}

TEST(SortKeysTest, KeepTheOrderOfEqualKeysInBothDirections) {
    EXPECT_THAT(Sorted({"b", "a", "b", "a"}, SortOrder::Ascending), ElementsAre(1, 3, 0, 2));
    EXPECT_THAT(Sorted({"b", "a", "b", "a"}, SortOrder::Descending), ElementsAre(0, 2, 1, 3));
}

TEST(SortKeysTest, CanBeNoneOrOne) {
    EXPECT_THAT(Sorted({}, SortOrder::Ascending), IsEmpty());
    EXPECT_THAT(Sorted({""}, SortOrder::Descending), ElementsAre(0));
}

TEST(SortKeysTest, CompareAsUnsignedBytesToTheirLastOne) {
    const std::string stretch(16, 'x');
    const std::string zeros(16, '\0');
    const std::string alike(16 * 9, 'y');
    ExpectOrdered({"\xE4", "z", "", "&9", "0", "\x7F", "\x80"});
    ExpectOrdered({"a\0b"s, "a", "a\0"s, "a\0\0"s, "", "\0"s});
    ExpectOrdered({stretch + "b", stretch, stretch + "a", stretch + "\0"s, stretch + zeros, stretch + stretch,
                   stretch + zeros + "\0"s, stretch.substr(1)});
    ExpectOrdered({zeros, zeros + zeros, zeros.substr(1), "", zeros + "\0"s});
    ExpectOrdered({alike + "b", alike, alike + "a", alike + "c", alike + "a", "y", alike + "b"});
    ExpectOrdered({stretch, stretch, stretch});
}

// With two different letters, many keys are equal up to the boundaries of what is compared at once.
TEST(SortKeysTest, HaveTheOrderOfAPlainSort) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 300; ++round) {
        Texts texts(random() % 60);
        const std::size_t longest = 1 + random() % 200;
        const std::string beginning(random() % 40, '0');
        for (std::string& text : texts) {
            text = beginning;
            for (std::size_t left = random() % longest; left > 0; --left)
                text += random() % 12 == 0 ? '\0' : 'a';
        }
        ExpectOrdered(texts);
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace quarn
