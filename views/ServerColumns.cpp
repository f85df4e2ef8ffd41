#include "views/ServerColumns.h"

#include <iterator>
#include <string_view>

namespace quarn {

namespace {

using TextOf = std::string (*)(const ServerRecord& server, const LocaleText& locale);

struct ColumnRow { // NOLINT(clang-analyzer-optin.performance.Padding): in the order of the rows
    const char* header;
    const char* sortType;
    std::int32_t width; // twips
    Alignment alignment = Alignment::Left;
    bool changesLater = true; // a query or a visit changes the cell
    TextOf text = nullptr;    // null: the column shows an icon
    bool fills = false;       // takes what the others leave of the list's width
};

// Wide enough for the longest address and date, and for the headers with the arrow of the sort order.
constexpr ColumnRow Columns[] = {
    {"", "PICTURE", 420},
    {"IP Address", "STRING", 2250, Alignment::Left, false,
     [](const ServerRecord& server, const LocaleText&) { return AddressText(server); }},
    {"Location", "STRING", 1260, Alignment::Left, false,
     [](const ServerRecord& server, const LocaleText&) { return server.Country; }},
    {"Name", "STRING", 2400, Alignment::Left, true,
     [](const ServerRecord& server, const LocaleText&) { return server.Name; }, true},
    {"Players", "NUMBER", 1170, Alignment::Left, true,
     [](const ServerRecord& server, const LocaleText&) {
         return std::to_string(server.Players) + " / " + std::to_string(server.MaxPlayers);
     }},
    {"Ping", "NUMBER", 990, Alignment::Right, true,
     [](const ServerRecord& server, const LocaleText&) { return std::to_string(server.Ping); }},
    {"Game", "STRING", 1140, Alignment::Left, true,
     [](const ServerRecord& server, const LocaleText&) { return server.ModName; }},
    {"Map", "STRING", 1230, Alignment::Left, true,
     [](const ServerRecord& server, const LocaleText&) { return server.Map; }},
    {"Last Visit", "DATE", 2310, Alignment::Left, true,
     [](const ServerRecord& server, const LocaleText& locale) { return locale.FromDate(server.LastVisit); }},
};
static_assert(std::string_view(Columns[LastVisitColumn].header) == "Last Visit");

} // namespace

void AddServerColumns(ListView& list) {
    list.columns.Reset(static_cast<std::int32_t>(std::size(Columns)));
    std::int32_t number = 0;
    for (const ColumnRow& column : Columns)
        list.columns[++number] = {.text = column.header,
                                  .tag = column.sortType,
                                  .width = column.width,
                                  .alignment = column.alignment,
                                  .fills = column.fills};
}

void FillServerRow(ListView& list, std::int32_t row, const ServerRecord& server, const LocaleText& locale,
                   CellsOf cells) {
    ListRow& filled = list.Edit(row);
    filled.smallIcon = server.Locked != 0 ? "locked" : "";
    for (std::size_t column = 1; column < std::size(Columns); ++column) {
        if (!Columns[column].changesLater && cells == CellsOf::UpdatedRow)
            continue;
        // A new row shows no visit if there was none; an update shows the zero date as it is.
        if (column == LastVisitColumn && cells == CellsOf::NewRow && server.LastVisit.IsZero())
            continue;
        filled.subItems[column - 1].text = Columns[column].text(server, locale);
    }
    if (cells == CellsOf::NewRow)
        filled.subItems[LocationColumn - 1].reportIcon =
            server.Country == UnknownCountry ? "" : server.Country;
}

} // namespace quarn
