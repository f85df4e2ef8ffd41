#pragma once

// Stores the outcome of a query in its server's record, and updates the row and the details that show it.
// Used for replies in time and for late ones.

#include "query/QueryPorts.h"
#include "views/MainFormContext.h"
#include "views/ServerDetails.h"
#include "views/ServerListView.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quarn {

class QueryResults {
  public:
    // The most bytes of all players and variables of a list; more are not kept.
    static constexpr std::size_t MostDetailBytes = 256U << 20;

    QueryResults(const MainFormContext& form, ServerListView& servers, ServerDetails& details)
        : form_(form), servers_(servers), details_(details) {}

    // At the start of a scan: counts the bytes of the list's details.
    void Begin();

    // The server named by the row's tag. Error 13 for a tag that is not a number, 9 outside the list.
    QueryTarget TargetOf(std::int32_t row) const;

    // Index of the record that was queried, 0 if it no longer exists.
    std::int32_t IndexOf(const QueryTarget& target) const noexcept;

    // The row, searched from `likely` outwards; 0 if it is not listed.
    std::int32_t RowOf(const QueryTarget& target, std::int32_t likely) const noexcept;

    // The engine family of the server's game; null for one without, or for none.
    const EngineFamily* EngineOf(std::int32_t index) const;

    // Stores a reply, and its ping unless a late reply follows one in time. A server that was deleted since
    // it was queried gets none.
    void Take(const ServerReply& reply);

    void StoreReply(std::int32_t index, std::string_view datagram);
    void StoreNoAnswer(std::int32_t index);

    // Updates the row, and the details if they show this server.
    void Show(const QueryTarget& target);

  private:
    MainFormContext form_;
    ServerListView& servers_;
    ServerDetails& details_;
    std::size_t detailBytes_ = 0;
};

} // namespace quarn
