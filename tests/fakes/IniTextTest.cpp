#include "tests/fakes/IniText.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

struct ValueCase {
    const char* behaviour;
    const char* text;
    const char* expected; // of key "Key" in section "General"; null: missing
};

class IniTextValueTest : public ::testing::TestWithParam<ValueCase> {};

TEST_P(IniTextValueTest, ReadsAsThePlatformDoes) {
    const auto value = IniValue(GetParam().text, "General", "Key");
    if (GetParam().expected == nullptr)
        EXPECT_EQ(value, std::nullopt);
    else
        EXPECT_EQ(value, GetParam().expected);
}

constexpr ValueCase PresentValues[] = {
    {"Plain", "[General]\r\nKey=value\r\n", "value"},
    {"LineFeedsOnly", "[General]\nKey=value\n", "value"},
    {"NoLineEnd", "[General]\r\nKey=value", "value"},
    {"OtherCase", "[GENERAL]\r\nkEY=value\r\n", "value"},
    {"BlanksAround", "  [General]  \r\n\t Key \t = \t value \t \r\n", "value"},
    {"BlanksInside", "[General]\r\nKey=two  words\r\n", "two  words"},
    {"DoubleQuotes", "[General]\r\nKey=\" value \"\r\n", " value "},
    {"SingleQuotes", "[General]\r\nKey='value'\r\n", "value"},
    {"OnePairOfQuotesOnly", "[General]\r\nKey=\"\"value\"\"\r\n", "\"value\""},
    {"TrailingSemicolonKept", "[General]\r\nKey=value;\r\n", "value;"},
    {"FurtherEqualSignsKept", "[General]\r\nKey=a=b=c\r\n", "a=b=c"},
    {"FirstOfEqualKeys", "[General]\r\nKey=first\r\nKey=second\r\n", "first"},
    {"AfterBlankLines", "\r\n\r\n[General]\r\n\r\nKey=value\r\n", "value"},
};

constexpr ValueCase OddValues[] = {
    {"EmptyFile", "", nullptr},
    {"NoSuchSection", "[Other]\r\nKey=value\r\n", nullptr},
    {"NoSuchKey", "[General]\r\nOther=value\r\n", nullptr},
    {"KeyBeforeEverySection", "Key=value\r\n[General]\r\n", nullptr},
    {"KeyInTheNextSection", "[General]\r\n[Other]\r\nKey=value\r\n", nullptr},
    {"SectionWithoutBracket", "[General\r\nKey=value\r\n", nullptr},
    {"LongerSectionName", "[Generals]\r\nKey=value\r\n", nullptr},
    {"LongerKeyName", "[General]\r\nKeys=value\r\n", nullptr},
    {"ShorterKeyName", "[General]\r\nKe=value\r\n", nullptr},
    {"CommentedOut", "[General]\r\n;Key=value\r\n", nullptr},
    {"CommentedOutBehindBlanks", "[General]\r\n  ;Key=value\r\n", nullptr},
    {"SecondOfEqualSections", "[General]\r\n[General]\r\nKey=value\r\n", nullptr},
    {"NoValue", "[General]\r\nKey=\r\n", ""},
    {"NoEqualSign", "[General]\r\nKey\r\n", ""},
    {"OneQuote", "[General]\r\nKey=\"\r\n", "\""},
    {"UnequalQuotes", "[General]\r\nKey=\"value'\r\n", "\"value'"},
    {"QuoteAtTheEndOnly", "[General]\r\nKey=value\"\r\n", "value\""},
    {"NoLineStructureAtAll", "\x01\x02[\x03=;]=", nullptr},
};

std::string NameOf(const ::testing::TestParamInfo<ValueCase>& info) {
    return info.param.behaviour;
}

INSTANTIATE_TEST_SUITE_P(Present, IniTextValueTest, ::testing::ValuesIn(PresentValues), NameOf);
INSTANTIATE_TEST_SUITE_P(Odd, IniTextValueTest, ::testing::ValuesIn(OddValues), NameOf);

TEST(IniTextTest, ChangesAValueInItsPlace) {
    EXPECT_EQ(WithIniValue("; mine\r\n[A]\r\nx = 1 \r\ny=2\r\n[B]\r\nx=3\r\n", "a", "X", "9"),
              "; mine\r\n[A]\r\nX=9\r\ny=2\r\n[B]\r\nx=3\r\n");
}

TEST(IniTextTest, AddsAKeyAfterTheLastLineOfItsSection) {
    EXPECT_EQ(WithIniValue("[A]\r\nx=1\r\n\r\n[B]\r\n", "A", "y", "2"), "[A]\r\nx=1\r\ny=2\r\n\r\n[B]\r\n");
    EXPECT_EQ(WithIniValue("[A]", "A", "y", "2"), "[A]\r\ny=2\r\n");
}

TEST(IniTextTest, AddsAMissingSectionAtTheEnd) {
    EXPECT_EQ(WithIniValue("", "A", "x", "1"), "[A]\r\nx=1\r\n");
    EXPECT_EQ(WithIniValue("[A]\r\nx=1", "B", "x", ""), "[A]\r\nx=1\r\n[B]\r\nx=\r\n");
}

TEST(IniTextTest, KeepsTheLineEndOfAChangedLine) {
    EXPECT_EQ(WithIniValue("[A]\nx=1\ny=2", "A", "x", "5"), "[A]\nx=5\ny=2");
    EXPECT_EQ(WithIniValue("[A]\nx=1\ny=2", "A", "y", "5"), "[A]\nx=1\ny=5");
}

TEST(IniTextTest, RemovesAKeyWithItsLine) {
    EXPECT_EQ(WithoutIniKey("[A]\r\nx=1\r\ny=2\r\n[B]\r\nx=3\r\n", "a", "X"), "[A]\r\ny=2\r\n[B]\r\nx=3\r\n");
    EXPECT_EQ(WithoutIniKey("[A]\r\nx=1", "A", "x"), "[A]\r\n");
    EXPECT_EQ(WithoutIniKey("[A]\r\nx=1\r\n", "A", "z"), "[A]\r\nx=1\r\n");
    EXPECT_EQ(WithoutIniKey("", "A", "x"), "");
}

TEST(IniTextTest, ReadsTheNumberAtTheBeginningOfAValue) {
    const struct {
        const char* value;
        std::int32_t number;
    } cases[] = {
        {"0", 0},           {"42", 42},
        {" 42 ", 42},       {"-7", -7},
        {"+7", 7},          {"2147483647", 2147483647},
        {"007", 7},         {"", 0},
        {"abc", 0},         {"12abc", 12},
        {"-", 0},           {"--1", 0},
        {"- 1", 0},         {"1.9", 1},
        {"1,000", 1},       {"2147483648", -2147483647 - 1},
        {"4294967295", -1}, {"4294967296", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(LeadingInteger(c.value), c.number) << c.value;
}

} // namespace
} // namespace quarn
