#include "views/ColumnWidths.h"

#include "base/Conversions.h"
#include "base/Succeeds.h"
#include "core/modStringHelper.h"

#include <array>
#include <string_view>
#include <vector>

namespace quarn {

namespace {

constexpr std::int32_t WidestColumn = 30'000; // twips

template<class Controls>
auto Lists(Controls& controls) {
    return std::array{&controls.lvwServers, &controls.lvwPlayers, &controls.lvwServVars};
}

// 0 for text that is not a width.
std::int32_t WidthFrom(std::string_view text) {
    std::int32_t width = 0;
    Succeeds([&] { width = ToLong(text); });
    return width > 0 && width <= WidestColumn ? width : 0;
}

} // namespace

std::string ColumnWidthsText(const MainControls& controls) {
    std::string text;
    bool isChanged = false;
    for (const ListView* const list : Lists(controls))
        for (std::int32_t number = 1; number <= list->columns.HighestIndex(); ++number) {
            const ListColumn& column = list->columns[number];
            const bool isChosen = column.Width() != column.width;
            isChanged = isChanged || isChosen;
            if (!text.empty())
                text += ',';
            text += std::to_string(isChosen ? column.Width() : 0);
        }
    return isChanged ? text : std::string();
}

void ApplyColumnWidths(const std::string& text, MainControls& controls) {
    const std::vector<std::string_view> widths = Split(text, ',');
    std::size_t next = 0;
    for (ListView* const list : Lists(controls))
        for (std::int32_t number = 1; number <= list->columns.HighestIndex(); ++number, ++next)
            list->columns[number].chosenWidth = next < widths.size() ? WidthFrom(widths[next]) : 0;
}

} // namespace quarn
