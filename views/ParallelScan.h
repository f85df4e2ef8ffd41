#pragma once

// Queries several servers at once. Each query has a port and a deadline of its own, PingTimeout after its
// request, and is asked a second time, from a second port, when half of that has passed. It is finished by
// its first reply or its deadline, and its row is brought up to date at once. Rows are asked in their order;
// selection, scroll position and CurrentServer stay the user's.
//
// One scan runs at a time. It ends at once when it is to be stopped: open queries are dropped and leave their
// records as they were.

#include "views/MainFormContext.h"
#include "views/QueryResults.h"
#include "views/ScanProgress.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

namespace quarn {

class ParallelScan {
  public:
    ParallelScan(const MainFormContext& form, QueryResults& results, ScanProgress& progress)
        : form_(form), results_(results), progress_(progress) {}
    ParallelScan(const ParallelScan&) = delete;
    ParallelScan& operator=(const ParallelScan&) = delete;

    // Asks the servers of these rows, `atOnce` at a time, until all are finished or `stopped` holds. The rows
    // are given by the identities of the records that they show.
    void Run(std::deque<std::uint32_t> rows, std::int32_t atOnce, const std::function<bool()>& stopped);

    // A reply to a query that is not finished. Its parsing waits until the event that brought it has ended.
    void OnReply(ServerReply reply);

  private:
    // A server that was asked and has neither answered nor run out of time.
    struct Pending {
        QueryTarget target;
        std::int32_t sentTick = 0;
        std::uint32_t first = 0;  // number of the first request's query
        std::uint32_t second = 0; // of the second request's; 0: not asked again yet
    };

    bool AskNext();
    ServerQuery Ask(const QueryTarget& target, std::int32_t index);
    void TakeArrivals();
    void CheckDeadlines();
    void Finish(std::size_t position, bool answered);
    void CountFinished();
    void DropPending();
    std::int32_t Timeout() const noexcept;

    MainFormContext form_;
    QueryResults& results_;
    ScanProgress& progress_;
    std::deque<std::uint32_t> rows_; // still to be asked
    std::vector<Pending> pending_;
    std::deque<ServerReply> arrivals_;
    std::size_t atOnce_ = 1;
    std::int32_t finished_ = 0;
    std::int32_t likelyRow_ = 1;
};

} // namespace quarn
