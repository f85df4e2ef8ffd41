#pragma once

// Queries the listed servers. One after the other, as the settings have it at first: one query is awaited at
// any time, and while it waits for the reply or the time-out it sleeps in the event queue, so that any
// command may come in between, a second scan included. Or several at once (views/ParallelScan.h).
//
// One after the other, the time-out timer is started once for a scan and never restarted for a server, so
// that a server's effective time-out is anything between 0 and PingTimeout. A tick sets ReplyState to 2, a
// reply adds 1 to it; 2 means "no answer" unless a reply was counted for this query. A reply that comes after
// its query was finished still reaches its record, as long as its port is open (query/QueryPorts.h).

#include "views/MainFormContext.h"
#include "views/ParallelScan.h"
#include "views/QueryResults.h"
#include "views/ScanProgress.h"
#include "views/ServerDetails.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <deque>
#include <string>

namespace quarn {

class ScanEngine {
  public:
    ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details);

    void mnuServRefresh_Click();    // the selected rows
    void mnuServRefreshAll_Click(); // every row

    // Takes effect when the server being queried has answered or timed out; at once where several are asked.
    void Stop() noexcept { ScanAborted = true; }

    void sckServer_DataArrival(std::uint32_t query, std::int32_t tick);
    void tmrTimeout_Timer();

    // The timer ticks at PingTimeout where that is positive, else once a second.
    void ApplyTimeout();

    std::int32_t ReplyState = 0;
    std::int32_t QuerySentTick = 0;
    bool ScanAborted = false;

  private:
    enum class Rows { Selected, All };

    void Start(Rows which, const char* routine);
    void Scan(Rows which, const char* routine);
    void PrepareForScan(ScanProgress& progress, Rows which);
    void ScanRows(Rows which, ScanProgress& progress);
    void ScanAtOnce(Rows which, ScanProgress& progress);
    std::deque<std::uint32_t> ShownServers(Rows which) const;
    void UpdateServer(std::int32_t row, ScanProgress& progress);
    enum class Outcome { Answered, NoAnswer, Closing };
    Outcome QueryServer(const QueryTarget& target);
    Outcome WaitForReply(const ServerQuery& query);
    void TakeReply(const ServerReply& reply);
    void EndScan(ScanProgress& progress);
    bool MustStop() const noexcept { return ScanAborted || form_.gate.ScanMustEnd(); }
    void LogFailure(const std::string& description);

    MainFormContext form_;
    ServerListView& servers_;
    ServerDetails& details_;
    QueryResults results_;
    ParallelScan* parallel_ = nullptr; // while several servers are asked at once
    std::uint32_t openQuery_ = 0;      // number of the query that is awaited, 0: none
    bool failureLogged_ = false;       // in this scan
};

} // namespace quarn
