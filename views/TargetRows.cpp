#include "views/TargetRows.h"

#include "base/Conversions.h"
#include "base/NearestIndex.h"
#include "views/ServerColumns.h"

#include <algorithm>

namespace quarn {

TargetRows::TargetRows(const ListView& servers, const ProgramState& program)
    : firstIdentityOfLater_(servers.NextIdentity()), list_(program.CurrentGame) {
    const std::int32_t selected = servers.SelectedRow();
    if (selected == 0)
        return;
    for (std::int32_t row = 1; row <= servers.RowCount(); ++row)
        if (servers.Row(row).selected)
            Append(servers, row);
    const std::uint32_t first = servers.Row(selected).identity;
    const auto byIdentity = [](const Row& a, const Row& b) { return a.identity < b.identity; };
    std::sort(rows_.begin(), rows_.end(), byIdentity);
    for (std::size_t position = 0; position < rows_.size(); ++position) {
        rowsByTag_.push_back(position);
        if (rows_[position].identity == first)
            first_ = position;
    }
    std::sort(rowsByTag_.begin(), rowsByTag_.end(),
              [&](std::size_t a, std::size_t b) { return rows_[a].tag < rows_[b].tag; });
}

TargetRows::TargetRows(const ListView& servers, const ProgramState& program, std::int32_t row)
    : rowsByTag_{0}, firstIdentityOfLater_(servers.NextIdentity()), list_(program.CurrentGame) {
    Append(servers, row);
}

void TargetRows::Append(const ListView& servers, std::int32_t row) {
    const ListRow& listed = servers.Row(row);
    rows_.push_back({listed.identity, listed.main.tag, servers.Cell(row, AddressColumn + 1).text, row});
}

bool TargetRows::IsListedAgain(const Row& target, const ListRow& row, const ProgramState& program) const {
    return row.identity >= firstIdentityOfLater_ && program.CurrentGame == list_ &&
           row.main.tag == target.tag && row.subItems[AddressColumn - 1].text == target.address;
}

bool TargetRows::Includes(const ListRow& row, const ProgramState& program) const {
    if (row.identity < firstIdentityOfLater_)
        return std::binary_search(rows_.begin(), rows_.end(), Row{row.identity, {}, {}, 0},
                                  [](const Row& a, const Row& b) { return a.identity < b.identity; });
    const auto sameTag = std::lower_bound(
        rowsByTag_.begin(), rowsByTag_.end(), row.main.tag,
        [&](std::size_t position, const std::string& tag) { return rows_[position].tag < tag; });
    return sameTag != rowsByTag_.end() && IsListedAgain(rows_[*sameTag], row, program);
}

std::int32_t TargetRows::RowNumber(const ListView& servers, const ProgramState& program) const {
    if (Empty())
        return 0;
    const std::int32_t row = servers.RowOf(First().identity, First().number);
    if (row != 0)
        return row;
    return NearestIndex(servers.RowCount(), First().number, [&](std::int32_t other) {
        return IsListedAgain(First(), servers.Row(other), program);
    });
}

std::int32_t TargetRows::IndexOf(const Row& target, const ListView& servers,
                                 const ProgramState& program) const {
    const std::int32_t index = ToLong(target.tag);
    if (!program.Servers.Holds(index))
        return 0;
    const bool isKept = program.CurrentGame == list_ && AddressText(program.Servers[index]) == target.address;
    return isKept || servers.RowOf(target.identity, target.number) != 0 ? index : 0;
}

std::int32_t TargetRows::ServerIndex(const ListView& servers, const ProgramState& program) const {
    return Empty() ? 0 : IndexOf(First(), servers, program);
}

std::vector<std::int32_t> TargetRows::ServerIndexes(const ListView& servers,
                                                    const ProgramState& program) const {
    std::vector<const Row*> inOrder;
    for (const Row& target : rows_)
        inOrder.push_back(&target);
    std::ranges::sort(inOrder, {}, &Row::number);
    std::vector<std::int32_t> indexes;
    for (const Row* const target : inOrder)
        if (const std::int32_t index = IndexOf(*target, servers, program); index != 0)
            indexes.push_back(index);
    return indexes;
}

} // namespace quarn
