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

} // namespace
} // namespace quarn
