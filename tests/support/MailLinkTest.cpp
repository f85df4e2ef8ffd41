#include "support/MailLink.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(MailLinkTest, JoinsItsPartsByAmpersands) {
    EXPECT_EQ(MailLink("help@quarn.example", "Some subject", "Body"),
              "MailTo:help@quarn.example&Subject=Some subject&Body=Body");
}

TEST(MailLinkTest, LeavesOutWhatIsEmpty) {
    EXPECT_EQ(MailLink("a@b", "", "Body"), "MailTo:a@b&Body=Body");
    EXPECT_EQ(MailLink("a@b", "Subject", ""), "MailTo:a@b&Subject=Subject");
    EXPECT_EQ(MailLink("", "", ""), "MailTo:");
}

TEST(MailLinkTest, EscapesTheBodyOnly) {
    const struct {
        const char* text;
        const char* escaped;
    } cases[] = {
        {"two words", "two%20words"},
        {"a&b", "a%26b"},
        {"one\r\ntwo\r\n\r\n", "one%0D%0Atwo%0D%0A%0D%0A"},
        {"100%20sure", "100%20sure"}, // not a second time
        {"%26 %0D%0A", "%26%20%0D%0A"},
        {"\r", "\r"},
        {"\n", "\n"},
        {"\n\r", "\n\r"},
        {"\r\r\n\n", "\r%0D%0A\n"},
        {"?=#%+", "?=#%+"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(MailLink("a@b", "", c.text), std::string("MailTo:a@b&Body=") + c.escaped) << c.text;
        EXPECT_EQ(MailLink("a@b", c.text, ""), std::string("MailTo:a@b&Subject=") + c.text);
    }
}

TEST(MailLinkNewestLinesTest, AreAllThatFit) {
    const struct {
        const char* log;
        std::size_t room;
        const char* kept;
    } cases[] = {
        {"", 0, ""},
        {"one\r\n", 9, "one\r\n"},
        {"a b\r\n", 11, "a b\r\n"},
        {"first\r\nsecond\r\nthird\r\n", 34, "first\r\nsecond\r\nthird\r\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NewestLines(c.log, c.room), c.kept) << c.log;
}

TEST(MailLinkNewestLinesTest, SayHowManyThereAre) {
    const std::string log = std::string(200, 'x') + "\r\nsecond & last but one\r\nthird\r\n";
    const auto note = [](int lines) {
        return "(The newest " + std::to_string(lines) + " of 3 lines, as a message holds no more.)\r\n";
    };
    const std::size_t noteLength = MailLink("", "", note(3)).size() - MailLink("", "", "x").size() + 1;
    const struct {
        std::size_t room;
        std::string kept;
    } cases[] = {
        {noteLength + 11 + 37, note(2) + "second & last but one\r\nthird\r\n"},
        {noteLength + 11 + 36, note(1) + "third\r\n"},
        {noteLength + 11, note(1) + "third\r\n"},
        {noteLength + 10, note(0)},
        {0, note(0)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NewestLines(log, c.room), c.kept) << c.room;
}

} // namespace
} // namespace quarn
