#include "tools/gamenet/Text.h"

#include "tools/gamenet/Endpoint.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace quarn::gamenet {
namespace {

TEST(Text, stripsWhatAPlayerDoesNotSee) {
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
        EXPECT_EQ(withoutColours(raw), shown) << raw;
}

TEST(Text, escapesForOneLineOfTruth) {
    EXPECT_EQ(truthEscaped("plain [EU] #1"), "plain [EU] #1");
    EXPECT_EQ(truthEscaped("a\tb\n|\\\x7F\xFC"), "a\\x09b\\x0A\\x7C\\x5C\\x7F\\xFC");
}

TEST(Text, iniEscapesComeBackAsTheyWere) {
    const std::initializer_list<std::pair<std::string, std::string>> cases = {
        {"\xFF\xFF\xFF\xFFgetservers 68 full empty", "$255$255$255$255getservers 68 full empty"},
        {std::string("\xFF\xFF\0)\0\1\0\0\0", 9), "$255$255$0)$0$1$0$0$0"},
        {" both ends ", "$32both ends$32"},
        {"line\n", "line$10"},
        {"\n0", "$100"},
        {"a$b", "a$b"},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(iniEscaped(bytes), text);
        EXPECT_EQ(iniUnescaped(text), bytes);
    }
}

TEST(Text, iniEscapesRefuseWhatTheyCannotExpress) {
    for (const std::string& bytes : {std::string("\1") + "0", std::string("$255"), std::string("costs $1"),
                                     std::string("$"
                                                 "32")})
        EXPECT_THROW(iniEscaped(bytes), BadSetting) << truthEscaped(bytes);
}

TEST(Text, readsNumbersThatAreNumbers) {
    EXPECT_EQ(parseWhole("27960", 1, 65535), 27960);
    EXPECT_EQ(parseNumber("2.5", 0, 100), 2.5);
    for (const std::string text :
         {"", " 1", "1 ", "+1", "0x10", "1.5", "one", "65536", "-1", "99999999999999999999"})
        EXPECT_THROW(parseWhole(text, 0, 65535), BadSetting) << text;
    for (const std::string text : {"", "half", "1,5", "-0.1", "100.1", "nan", "inf", "5%"})
        EXPECT_THROW(parseNumber(text, 0, 100), BadSetting) << text;
}

TEST(Text, splitsListsAndRefusesHoles) {
    EXPECT_EQ(parseList(" a, b c ,d"), (std::vector<std::string>{"a", "b c", "d"}));
    for (const std::string text : {"", " ", ",", "a,", ",a", "a,,b"})
        EXPECT_THROW(parseList(text), BadSetting) << text;
}

TEST(Endpoint, readsLoopbackAddresses) {
    EXPECT_EQ(parseLoopbackEndpoint("127.1.2.3:27960"), (Endpoint{0x7F010203, 27960}));
    EXPECT_EQ(endpointText({0x7F010203, 27960}), "127.1.2.3:27960");
}

TEST(Endpoint, refusesEverythingElse) {
    for (const std::string text : {"",
                                   "127.0.0.1",
                                   "127.0.0.1:",
                                   "127.0.0.1:0",
                                   "127.0.0.1:65536",
                                   "127.0.0.1:x",
                                   "127.0.0:1",
                                   "127.0.0.0.1:1",
                                   "127.0.0.256:1",
                                   "127.0.0.-1:1",
                                   "127.0.0. 1:1",
                                   "localhost:1",
                                   "10.0.0.1:27960",
                                   "128.0.0.1:27960",
                                   "126.255.255.255:27960",
                                   "0.0.0.0:27960",
                                   "255.255.255.255:1",
                                   "::1:27960",
                                   "1270.0.0.1:1",
                                   "127.0.0.1:27960 "})
        EXPECT_THROW(parseLoopbackEndpoint(text), BadSetting) << text;
}

} // namespace
} // namespace quarn::gamenet
