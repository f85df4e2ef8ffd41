#pragma once

// The columns of the server list: one table contains each column's header, sort type, width and cell text.

#include "controls/ListView.h"
#include "core/modDefinitions.h"
#include "desktop/LocaleText.h"

#include <cstdint>
#include <string>

namespace quarn {

// Columns that code refers to, as sub item numbers. The row's main text, column 0, shows only the lock.
enum ServerColumn {
    AddressColumn = 1,
    LocationColumn,
    NameColumn,
    PlayersColumn,
    PingColumn,
    GameColumn,
    MapColumn,
    LastVisitColumn
};

void AddServerColumns(ListView& list);

// Which cells are written: all of a new row, or those that a query or a visit changes.
enum class CellsOf { NewRow, UpdatedRow };

// Fills the cells and the lock icon of a row from the record.
void FillServerRow(ListView& list, std::int32_t row, const ServerRecord& server, const LocaleText& locale,
                   CellsOf cells);

} // namespace quarn
