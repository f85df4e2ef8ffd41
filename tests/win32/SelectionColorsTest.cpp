#include "win32/SelectionColors.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace quarn {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);

enum Expected { Caption, Shadow, Highlight };

struct Theme {
    const char* name;
    SelectionColors window;
    SelectionColors caption;
    COLORREF shadow;
    SelectionColors highlight;
    Expected expected;
};

constexpr COLORREF Dark = RGB(45, 45, 48);
constexpr SelectionColors LightWindow = {Black, White};
constexpr SelectionColors DarkWindow = {White, Dark};
constexpr SelectionColors BlackWindow = {White, Black};
constexpr SelectionColors Blue = {White, RGB(0, 120, 215)};
constexpr COLORREF Grey = RGB(160, 160, 160);
constexpr COLORREF MiddleGrey = RGB(128, 128, 128);

const Theme Themes[] = {
    {"light", LightWindow, {Black, RGB(191, 205, 219)}, Grey, Blue, Caption},
    {"pale caption text", LightWindow, {RGB(192, 192, 192), MiddleGrey}, MiddleGrey, Blue, Shadow},
    {"caption as light as the list", LightWindow, {Black, RGB(240, 240, 240)}, Grey, Blue, Shadow},
    {"white, without shades", LightWindow, {Black, White}, White, BlackWindow, Highlight},
    {"dark grey", DarkWindow, {White, RGB(90, 90, 100)}, RGB(30, 30, 30), Blue, Caption},
    {"dark caption", DarkWindow, {White, RGB(50, 50, 55)}, RGB(30, 30, 30), Blue, Highlight},
    {"black, black caption", BlackWindow, {White, Black}, MiddleGrey, LightWindow, Highlight},
    {"black, green caption", BlackWindow, {White, RGB(0, 128, 0)}, MiddleGrey, LightWindow, Caption},
    {"caption text on itself", LightWindow, {Grey, Grey}, White, Blue, Highlight},
};

class SelectionColorsTest : public testing::TestWithParam<Theme> {};

TEST_P(SelectionColorsTest, StandOutAndCanBeRead) {
    const Theme& theme = GetParam();
    const std::map<int, COLORREF> colors = {
        {COLOR_WINDOW, theme.window.ground},
        {COLOR_WINDOWTEXT, theme.window.text},
        {COLOR_INACTIVECAPTION, theme.caption.ground},
        {COLOR_INACTIVECAPTIONTEXT, theme.caption.text},
        {COLOR_BTNSHADOW, theme.shadow},
        {COLOR_HIGHLIGHT, theme.highlight.ground},
        {COLOR_HIGHLIGHTTEXT, theme.highlight.text},
    };
    const SelectionColors chosen = ColorsOfUnfocusedSelection([&](int index) { return colors.at(index); });
    const SelectionColors shadow = {theme.window.text, theme.shadow};
    EXPECT_EQ(chosen, theme.expected == Caption  ? theme.caption
                      : theme.expected == Shadow ? shadow
                                                 : theme.highlight)
        << theme.name;
}

INSTANTIATE_TEST_SUITE_P(Themes, SelectionColorsTest, testing::ValuesIn(Themes),
                         [](const auto& theme) { return "Theme" + std::to_string(theme.index); });

} // namespace
} // namespace quarn
