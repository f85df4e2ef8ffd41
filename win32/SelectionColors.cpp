#include "win32/SelectionColors.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quarn {

namespace {

// Ratios of brightness, from 1 for the same colour to 21 for black on white.
constexpr double LeastOfGrounds = 1.4;
constexpr double LeastOfText = 4.5;

// Relative luminance as WCAG 2 defines it, which takes the sRGB curve from IEC 61966-2-1.
double Luminance(COLORREF color) {
    const auto linear = [](BYTE channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

double Contrast(COLORREF one, COLORREF other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// An ordinary row or node in other colours: those of a selected one are the control's own choice.
template<class CustomDraw>
void Mark(CustomDraw& painted) {
    const SelectionColors colors = ColorsOfUnfocusedSelection();
    painted.clrText = colors.text;
    painted.clrTextBk = colors.ground;
    painted.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
}

} // namespace

void MarkUnfocusedSelection(NMLVCUSTOMDRAW& row) {
    Mark(row);
}

void MarkUnfocusedSelection(NMTVCUSTOMDRAW& node) {
    Mark(node);
}

SelectionColors ColorsOfUnfocusedSelection(const std::function<COLORREF(int)>& systemColor) {
    const COLORREF list = systemColor(COLOR_WINDOW);
    for (const auto& [text, ground] : {std::pair{COLOR_INACTIVECAPTIONTEXT, COLOR_INACTIVECAPTION},
                                       std::pair{COLOR_WINDOWTEXT, COLOR_BTNSHADOW}}) {
        const SelectionColors colors = {systemColor(text), systemColor(ground)};
        if (Contrast(colors.ground, list) >= LeastOfGrounds &&
            Contrast(colors.text, colors.ground) >= LeastOfText)
            return colors;
    }
    return {systemColor(COLOR_HIGHLIGHTTEXT), systemColor(COLOR_HIGHLIGHT)};
}

} // namespace quarn
