#include "base/LineReader.h"

#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_view_literals;

TEST(LineReaderTest, EndsLinesAtEveryKindOfLineEnd) {
    const struct {
        std::string_view text;
        std::vector<std::string_view> lines;
    } cases[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\r\n", {"a"}},
        {"a\r", {"a"}},
        {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"\n", {""}},
        {"\r\n\r\n", {"", ""}},
        {"\n\r", {"", ""}},
        {"\r\r\n", {"", ""}},
        {"a\n\nb", {"a", "", "b"}},
        {"a\0b\x1A\nc"sv, {"a\0b\x1A"sv, "c"}},
    };
    for (const auto& c : cases) {
        LineReader reader(c.text);
        std::vector<std::string_view> lines;
        while (!reader.Rest().empty())
            lines.push_back(reader.ReadLine());
        EXPECT_EQ(lines, c.lines) << c.text;
    }
}

TEST(LineReaderTest, ReadingPastTheLastLineIsAnError) {
    LineReader reader("a\n");
    reader.ReadLine();
    for (int i = 0; i < 2; ++i) {
        try {
            reader.ReadLine();
            ADD_FAILURE() << "There is no second line.";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Kind(), ErrorNumber::InputPastEndOfFile);
        }
    }
}

TEST(LineReaderTest, ReturnsTheRest) {
    LineReader reader("a\r\nb;c\n");
    reader.ReadLine();
    EXPECT_EQ(reader.Rest(), "b;c\n");
}

} // namespace
} // namespace quarn
