#include "core/modStringHelper.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using Parts = std::vector<std::string_view>;

TEST(modStringHelperSplitTest, ReturnsThePartsBetweenSeparators) {
    EXPECT_EQ(Split("a;bc;d", ';'), (Parts{"a", "bc", "d"}));
    EXPECT_EQ(Split("abc", ';'), (Parts{"abc"}));
    EXPECT_EQ(Split(std::string_view("a\0b", 3), '\0'), (Parts{"a", "b"}));
}

TEST(modStringHelperSplitTest, KeepsEmptyParts) {
    EXPECT_EQ(Split(";", ';'), (Parts{"", ""}));
    EXPECT_EQ(Split(";a", ';'), (Parts{"", "a"}));
    EXPECT_EQ(Split("a;", ';'), (Parts{"a", ""}));
    EXPECT_EQ(Split("a;;b", ';'), (Parts{"a", "", "b"}));
}

TEST(modStringHelperSplitTest, ReturnsNoPartsOfAnEmptyText) {
    EXPECT_TRUE(Split("", ';').empty());
}

TEST(modStringHelperReplaceAllTest, ReplacesFromLeftToRightWithoutOverlap) {
    const struct {
        const char* text;
        const char* what;
        const char* with;
        const char* expected;
    } cases[] = {
        {"a b c", " ", "%20", "a%20b%20c"},
        {"aaaaa", "aa", "b", "bba"},
        {"aaa", "a", "aa", "aaaaaa"}, // the replacement is not searched again
        {"EEOTOT", "EOT", "", "EOT"},
        {"abc", "abc", "", ""},
        {"abc", "abcd", "x", "abc"},
        {"abc", "B", "x", "abc"},
        {"abc", "", "x", "abc"},
        {"", "a", "x", ""},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        ReplaceAll(text, c.what, c.with);
        EXPECT_EQ(text, c.expected) << c.text << " " << c.what;
    }
}

TEST(modStringHelperReplaceAllTest, ReplacesAnyByte) {
    std::string text("a\0b\xFF", 4);
    ReplaceAll(text, std::string_view("\0", 1), "\xFF");
    EXPECT_EQ(text, "a\xFF"
                    "b\xFF");
}

TEST(modStringHelperReplaceAllTest, StaysLinearOnALongText) {
    std::string text(1'000'000, '$');
    ReplaceAll(text, "$", "ab");
    EXPECT_EQ(text.size(), 2'000'000U);
}

TEST(modStringHelperLowerCaseTest, MapsTheLettersOfTheWesternCodePage) {
    EXPECT_EQ(LowerCase("ABCXYZ"), "abcxyz");
    EXPECT_EQ(LowerCase("\xC0\xC4\xD6\xD8\xDC\xDE"), "\xE0\xE4\xF6\xF8\xFC\xFE");
    EXPECT_EQ(LowerCase("\x8A\x8C\x8E\x9F"), "\x9A\x9C\x9E\xFF");
}

TEST(modStringHelperLowerCaseTest, ChangesNoOtherCode) {
    for (const char* text :
         {"@[`{", "abcxyz", "0123456789", " \t\r\n\x01\x7F", "\x80\x81\x89\x8B\x8D\x8F\x90",
          "\x99\x9A\x9B\x9C\x9D\x9E", "\xA0\xAA\xB5\xBF", "\xD7\xDF\xF7", "\xE0\xFE\xFF"})
        EXPECT_EQ(LowerCase(text), text);
    EXPECT_EQ(LowerCase(std::string_view("A\0B", 3)), std::string("a\0b", 3));
}

TEST(modStringHelperLowerCaseTest, KeepsEveryCodeDistinctFromOthersLetters) {
    int changed = 0;
    for (int code = 0; code < 256; ++code) {
        const char lower = LowerCase(static_cast<char>(code));
        EXPECT_EQ(LowerCase(lower), lower) << code;
        changed += lower != static_cast<char>(code);
    }
    EXPECT_EQ(changed, 26 + 30 + 4);
}

} // namespace
} // namespace quarn
