#pragma once

// Queries the listed servers, by default one after the other: one query is awaited at any time, and while it
// waits for the reply or the time-out it sleeps in the event queue, so that any command may arrive meanwhile,
// including a second scan. Several queries at once: see views/ParallelScan.h.
//
// The time-out timer of a sequential scan is started once and never restarted for a server, so that a
// server's effective time-out is anything between 0 and PingTimeout. A tick sets ReplyState to 2, a reply
// adds 1 to it; 2 means "no answer" unless a reply was counted for this query. A reply that arrives after its
// query was finished is still stored in its record while its port is open (query/QueryPorts.h).

#include "views/MainFormContext.h"
#include "views/ParallelScan.h"
#include "views/QueryResults.h"
#include "views/ScanProgress.h"
#include "views/ServerDetails.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace quarn {

class ScanEngine {
  public:
    ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details);

    void mnuServRefresh_Click(GivenRows rows = {}); // the selected rows
    void mnuServRefreshAll_Click();                 // every row

    // Takes effect when the server being queried has answered or timed out; immediately if several are
    // queried at once. Without a running scan it does nothing.
    void Stop() noexcept { ScanAborted = form_.gate.ScanRuns(); }

    // A menu or a dialog has opened inside the scan's wait, which ends only after it: the progress bar's
    // tooltip says so until the scan goes on.
    void NoteStandstill();

    void sckServer_DataArrival(std::uint32_t query, std::int32_t tick);
    void tmrTimeout_Timer();

    // The timer ticks at PingTimeout if that is positive, otherwise once a second.
    void ApplyTimeout();

    std::int32_t ReplyState = 0;
    std::int32_t QuerySentTick = 0;
    bool ScanAborted = false;

  private:
    // Rows: null for all.
    void Start(std::shared_ptr<const TargetRows> selected, const char* routine);
    void Scan(const TargetRows* selected, const char* routine);
    void PrepareForScan(ScanProgress& progress, std::int32_t serversToAsk);
    void ScanRows(const std::deque<std::uint32_t>& wanted, bool isWholeList, ScanProgress& progress);
    void ScanAtOnce(const std::deque<std::uint32_t>& wanted, ScanProgress& progress);
    std::deque<std::uint32_t> ShownServers(const TargetRows* selected) const;
    void UpdateServer(std::int32_t row, ScanProgress& progress);
    enum class Outcome { Answered, NoAnswer, Closing };
    Outcome QueryServer(const QueryTarget& target);
    Outcome WaitForReply(const ServerQuery& query);
    void TakeReply(const ServerReply& reply);
    void EndScan(ScanProgress& progress);
    bool MustStop() const noexcept { return ScanAborted || form_.gate.ReplacementWaits(); }
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
