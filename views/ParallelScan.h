#pragma once

// Queries several servers at once. Each query has its own port and its own deadline, PingTimeout after its
// request, and a second request is sent, from a second port, after half of that time. The query is finished
// by its first reply or by its deadline, and its row is updated at once. Rows are queried in their order;
// selection, scroll position and CurrentServer are not changed.
//
// One scan runs at a time. "Stop" ends it at once: open queries are dropped and their records do not change.

#include "views/MainFormContext.h"
#include "views/QueryResults.h"
#include "views/RunningScan.h"
#include "views/ScanProgress.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

namespace quarn {

class ParallelScan final : public RunningScan {
  public:
    // Queries the servers of these rows, `atOnce` at a time, until all are finished or `stopped` returns
    // true. The rows are given by the identities of the records that they show.
    struct Task {
        std::deque<std::uint32_t> rows;
        std::size_t atOnce = 1; // fewer if there are no more ports
        std::function<bool()> stopped;
    };

    ParallelScan(const MainFormContext& form, QueryResults& results, ScanProgress& progress, Task task);
    ParallelScan(const ParallelScan&) = delete;
    ParallelScan& operator=(const ParallelScan&) = delete;
    ~ParallelScan() override;

    bool CanStep() const override { return ticked_ || !arrivals_.empty() || task_.stopped(); }
    bool Step() override;

    // A reply is parsed by the next step, after its event has ended.
    bool TakeReply(ServerReply& reply) override;

  private:
    // A server that was queried and has neither answered nor reached its deadline.
    struct Pending {
        QueryTarget target;
        std::int32_t sentTick = 0;
        std::uint32_t first = 0;  // number of the first request's query
        std::uint32_t second = 0; // number of the second request's query; 0: not sent yet
    };

    bool AskServers();
    bool AskNext();
    ServerQuery Ask(const QueryTarget& target, std::int32_t index);
    void TakeArrivals();
    bool IsOver(const Pending& pending) const noexcept;
    void ReadBeforeDeadlines();
    void CheckDeadlines();
    void Finish(std::size_t position, bool answered);
    void CountFinished();
    void End();

    MainFormContext form_;
    QueryResults& results_;
    ScanProgress& progress_;
    Task task_; // the rows are those still to be queried
    std::vector<Pending> pending_;
    std::deque<ServerReply> arrivals_;
    bool ticked_ = false; // deadlines are to be checked
    std::int32_t finished_ = 0;
    std::int32_t likelyRow_ = 1;
};

} // namespace quarn
