#pragma once

// The servers that were selected when a command was given. The command may run later: a scan moves the
// selection while a menu is open, and a command may have to wait for a list. So the rows are stored with
// their identity and looked up when the command runs.
//
// A row that was listed again since, for example after a change of filters, is recognised by its record and
// its address, while the same list is shown.

#include "controls/ListView.h"
#include "core/modDefinitions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

class TargetRows {
  public:
    // None.
    TargetRows() = default;

    // The rows of the server list that are selected now.
    TargetRows(const ListView& servers, const ProgramState& program);

    // One row, selected or not.
    TargetRows(const ListView& servers, const ProgramState& program, std::int32_t row);

    bool Empty() const noexcept { return rows_.empty(); }

    bool Includes(const ListRow& row, const ProgramState& program) const;

    // The server for commands that act on one: the focused row if it was selected, otherwise the first. The
    // index of its record, and its row; 0 if they no longer exist. A server that the filters now hide has a
    // record and no row. Error 13 for a row whose tag names no record.
    std::int32_t ServerIndex(const ListView& servers, const ProgramState& program) const;
    std::int32_t RowNumber(const ListView& servers, const ProgramState& program) const;

    // The indexes of all records, in the order that their rows had.
    std::vector<std::int32_t> ServerIndexes(const ListView& servers, const ProgramState& program) const;

  private:
    struct Row {
        std::uint32_t identity;
        std::string tag;
        std::string address; // as shown by the row
        std::int32_t number; // its last known number
    };

    void Append(const ListView& servers, std::int32_t row);
    bool IsListedAgain(const Row& target, const ListRow& row, const ProgramState& program) const;
    std::int32_t IndexOf(const Row& target, const ListView& servers, const ProgramState& program) const;
    const Row& First() const noexcept { return rows_[first_]; }

    std::vector<Row> rows_;                  // in the order of their identities
    std::vector<std::size_t> rowsByTag_;     // positions in rows_
    std::size_t first_ = 0;                  // the one for commands that act on one server
    std::uint32_t firstIdentityOfLater_ = 0; // of rows that were added later
    std::string list_;                       // name of the list that was shown
};

// The rows that a menu was opened for. Nothing: the rows that are selected when the command is given.
using GivenRows = std::optional<TargetRows>;

} // namespace quarn
