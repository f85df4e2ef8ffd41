#include "win32/SelectionColors.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace quarn {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);

struct Theme {
    const char* name;
    COLORREF window;
    SelectionColors caption;
    SelectionColors highlight;
    bool usesCaption;
};

const Theme Themes[] = {
    {"light", White, {Black, RGB(191, 205, 219)}, {White, RGB(0, 120, 215)}, true},
    {"classic", White, {RGB(192, 192, 192), RGB(128, 128, 128)}, {White, RGB(0, 0, 128)}, false},
    {"dark grey", RGB(45, 45, 48), {White, RGB(90, 90, 100)}, {White, RGB(0, 120, 215)}, true},
    {"caption as dark as the list",
     RGB(45, 45, 48),
     {White, RGB(50, 50, 55)},
     {Black, RGB(240, 200, 0)},
     false},
    {"black, caption black", Black, {White, Black}, {Black, RGB(26, 235, 255)}, false},
    {"black, caption green", Black, {White, RGB(0, 128, 0)}, {White, RGB(128, 0, 128)}, true},
    {"white, caption white", White, {Black, White}, {White, Black}, false},
    {"caption text cannot be read", White, {RGB(191, 205, 219), RGB(191, 205, 219)}, {White, Black}, false},
};

class SelectionColorsTest : public testing::TestWithParam<Theme> {};

TEST_P(SelectionColorsTest, StandOutAndCanBeRead) {
    const Theme& theme = GetParam();
    const std::map<int, COLORREF> colors = {
        {COLOR_WINDOW, theme.window},
        {COLOR_INACTIVECAPTION, theme.caption.ground},
        {COLOR_INACTIVECAPTIONTEXT, theme.caption.text},
        {COLOR_HIGHLIGHT, theme.highlight.ground},
        {COLOR_HIGHLIGHTTEXT, theme.highlight.text},
    };
    const SelectionColors chosen = ColorsOfUnfocusedSelection([&](int index) { return colors.at(index); });
    EXPECT_EQ(chosen, theme.usesCaption ? theme.caption : theme.highlight) << theme.name;
}

INSTANTIATE_TEST_SUITE_P(Themes, SelectionColorsTest, testing::ValuesIn(Themes),
                         [](const auto& theme) { return "Theme" + std::to_string(theme.index); });

} // namespace
} // namespace quarn
