#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace quarn::gamenet {
namespace {

TEST(Text, StripsWhatAPlayerDoesNotSee) {
    const std::initializer_list<std::pair<std::string, std::string>> cases = {
        {"^1Big^7 \"Boss\"", "Big Boss"},
        {"^xFF00FFPink", "Pink"},
        {"^XFF00FFPink", "Pink"},
        {"^xFF", ""},
        {"^Nx^by", "xy"},
        {"^Zed", "^Zed"},
        {"^^1a", "^a"},
        {"end^", "end^"},
        {"\"\"", ""},
        {"", ""},
    };
    for (const auto& [raw, shown] : cases)
        EXPECT_EQ(WithoutColours(raw), shown) << raw;
}

TEST(Text, EscapesForOneLineOfTruth) {
    EXPECT_EQ(TruthEscaped("plain [EU] #1"), "plain [EU] #1");
    EXPECT_EQ(TruthEscaped("a\tb\n|\\\x7F\xFC"), "a\\x09b\\x0A\\x7C\\x5C\\x7F\\xFC");
}

TEST(Text, IniEscapesComeBackAsTheyWere) {
    const std::initializer_list<std::pair<std::string, std::string>> cases = {
        {"\xFF\xFF\xFF\xFFgetservers 68 full empty", "$255$255$255$255getservers 68 full empty"},
        {std::string("\xFF\xFF\0)\0\1\0\0\0", 9), "$255$255$0)$0$1$0$0$0"},
        {" both ends ", "$32both ends$32"},
        {"line\n", "line$10"},
        {"\n0", "$100"},
        {"a$b", "a$b"},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(IniEscaped(bytes), text);
        EXPECT_EQ(IniUnescaped(text), bytes);
    }
}

TEST(Text, IniEscapesRefuseWhatTheyCannotExpress) {
    for (const std::string& bytes : {std::string("\1") + "0", std::string("$255"), std::string("costs $1"),
                                     std::string("$"
                                                 "32")})
        EXPECT_THROW(IniEscaped(bytes), BadSetting) << TruthEscaped(bytes);
}

TEST(Text, ReadsNumbersThatAreNumbers) {
    EXPECT_EQ(ParseWhole("27960", 1, 65535), 27960);
    EXPECT_EQ(ParseNumber("2.5", 0, 100), 2.5);
    for (const std::string text :
         {"", " 1", "1 ", "+1", "0x10", "1.5", "one", "65536", "-1", "99999999999999999999"})
        EXPECT_THROW(ParseWhole(text, 0, 65535), BadSetting) << text;
    for (const std::string text : {"", "half", "1,5", "-0.1", "100.1", "nan", "inf", "5%"})
        EXPECT_THROW(ParseNumber(text, 0, 100), BadSetting) << text;
}

TEST(Text, SplitsListsAndRefusesHoles) {
    EXPECT_EQ(ParseList(" a, b c ,d"), (std::vector<std::string>{"a", "b c", "d"}));
    for (const std::string text : {"", " ", ",", "a,", ",a", "a,,b"})
        EXPECT_THROW(ParseList(text), BadSetting) << text;
}

} // namespace
} // namespace quarn::gamenet
