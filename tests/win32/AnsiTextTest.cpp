#include "win32/AnsiText.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(AnsiTextTest, EveryTextSurvivesARoundTrip) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all.push_back(static_cast<char>(code));
    EXPECT_EQ(Narrowed(Widened(all)), all);
    EXPECT_EQ(Narrowed(Widened("")), "");
    EXPECT_EQ(Widened(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(AnsiTextTest, CharactersOutsideTheCodePageAreReplaced) {
    EXPECT_EQ(Narrowed(L"a\x4E2D"
                       L"b"),
              "a?b");
}

} // namespace
} // namespace quarn
