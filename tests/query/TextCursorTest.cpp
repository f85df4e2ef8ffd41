#include "query/TextCursor.h"

#include "tests/fakes/ProgramTest.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using namespace std::string_view_literals;
using ::testing::IsEmpty;

class TextCursorTest : public ProgramTest {};

TEST_F(TextCursorTest, ExtractsUpToASeparatorSearchedFromTheSecondCharacterOn) {
    const struct {
        std::string_view text;
        std::string_view separator;
        std::string_view field;
        std::string_view rest;
    } cases[] = {
        {"a\\b", "\\", "a", "b"},      {"\\a\\b", "\\", "\\a", "b"}, {"\\\\", "\\", "\\", ""},
        {"a\\", "\\", "a", ""},        {"a\\\\b", "\\", "a", "\\b"}, {"a\0b"sv, "\0"sv, "a", "b"},
        {"a--b", "--", "a", "-b"}, // the rest of a longer separator stays
        {"--a--b", "--", "--a", "-b"}, {"---", "--", "-", "-"},      {"abc", "bc", "a", "c"},
    };
    for (const auto& c : cases) {
        TextCursor cursor(*program.AppLog, c.text);
        EXPECT_EQ(cursor.Extract(c.separator), c.field) << c.text;
        EXPECT_EQ(cursor.Rest(), c.rest) << c.text;
        EXPECT_FALSE(cursor.Failed()) << c.text;
    }
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(TextCursorTest, WithoutASeparatorItFailsAndDoesNotMove) {
    const struct {
        std::string_view text;
        std::string_view separator;
    } cases[] = {
        {"", "\\"},     {"a", "\\"},   {"\\", "\\"}, {"ab", "\\"},
        {"\\ab", "\\"}, {"a-b", "--"}, {"--", "--"}, {"ab-", "--"},
    };
    std::size_t failures = 0;
    for (const auto& c : cases) {
        TextCursor cursor(*program.AppLog, c.text);
        EXPECT_EQ(cursor.Extract(c.separator), "") << c.text;
        EXPECT_EQ(cursor.Rest(), c.text);
        EXPECT_TRUE(cursor.Failed()) << c.text;
        EXPECT_EQ(Logged(), std::vector<std::string>(++failures, "modCommonSubs;ExtractString;5"));
    }
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST_F(TextCursorTest, FailedRefersToTheLastFieldOnly) {
    TextCursor cursor(*program.AppLog, "a b");
    cursor.Extract("\n");
    EXPECT_TRUE(cursor.Failed());
    cursor.Extract(" ");
    EXPECT_FALSE(cursor.Failed());
}

TEST_F(TextCursorTest, AMissingEndOfItemsIsLoggedOnce) {
    TextCursor cursor(*program.AppLog, "a,b,cd");
    EXPECT_EQ(cursor.ExtractItem(","), "a");
    EXPECT_EQ(cursor.ExtractItem(","), "b");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(cursor.ExtractItem(","), "");
        EXPECT_TRUE(cursor.Failed());
        EXPECT_EQ(cursor.Rest(), "cd");
    }
    EXPECT_EQ(Logged().size(), 1U);
}

TEST_F(TextCursorTest, TakesAFixedNumberButDoesNotMovePastTheEnd) {
    const struct {
        std::string_view text;
        std::size_t count;
        std::string_view field;
        std::string_view rest;
    } cases[] = {
        {"abcdef", 4, "abcd", "ef"}, {"abcd", 4, "abcd", "abcd"}, {"abc", 4, "abc", "abc"}, {"", 1, "", ""},
        {"a", 1, "a", "a"},          {"ab", 0, "", "ab"},
    };
    for (const auto& c : cases) {
        TextCursor cursor(*program.AppLog, c.text);
        EXPECT_EQ(cursor.Take(c.count), c.field);
        EXPECT_EQ(cursor.Rest(), c.rest);
    }
}

TEST_F(TextCursorTest, DropsNoMoreThanThereIs) {
    TextCursor cursor(*program.AppLog, "abc");
    cursor.Drop(2);
    EXPECT_EQ(cursor.Rest(), "c");
    EXPECT_TRUE(cursor.StartsWith("c"));
    EXPECT_FALSE(cursor.StartsWith("cd"));
    cursor.Drop(5);
    EXPECT_EQ(cursor.Rest(), "");
    EXPECT_FALSE(cursor.StartsWith("c"));
}

} // namespace
} // namespace quarn
