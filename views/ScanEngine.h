#pragma once

// Queries the listed servers, by default one after the other (views/SequentialScan.h), or several at once
// (views/ParallelScan.h). While a scan waits for replies and time-outs it sleeps in the event queue, so that
// any command may arrive meanwhile, including a second scan. It also continues behind an open dialog or
// message box: then it ends there, too, although its routine returns only when the dialog is closed.
//
// The time-out timer of a sequential scan is started once and never restarted for a server, so that a
// server's effective time-out is anything between 0 and PingTimeout. A tick sets ReplyState to 2, a reply
// adds 1 to it; 2 means "no answer" unless a reply was counted for this query. A reply that arrives after its
// query was finished is still stored in its record while its port is open (query/QueryPorts.h).

#include "views/MainFormContext.h"
#include "views/QueryResults.h"
#include "views/RunningScan.h"
#include "views/ScanProgress.h"
#include "views/SequentialScan.h"
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
    void Stop() noexcept { ScanAborted = running_ != nullptr; }

    // A menu was opened, or the window is being moved, inside the scan's wait, which continues only after it:
    // the progress bar's tooltip says so until then.
    void NoteStandstill();

    void sckServer_DataArrival(std::uint32_t query, std::int32_t tick);
    void tmrTimeout_Timer();

    // The timer ticks at PingTimeout if that is positive, otherwise once a second.
    void ApplyTimeout();

    ReplyWait wait;
    bool ScanAborted = false;

  private:
    // A scan that was started and has not ended.
    struct Running {
        ScanProgress& progress;
        const char* routine;
        Running* outer;
        RunningScan* scan = nullptr;
        bool ended = false;
    };

    // Rows: null for all.
    void Start(std::shared_ptr<const TargetRows> selected, const char* routine);
    void Scan(const TargetRows* selected, const char* routine);
    void PrepareForScan(ScanProgress& progress, std::int32_t serversToAsk);
    void ScanInTurn(std::deque<std::uint32_t> wanted, bool isWholeList, Running& running);
    std::int32_t AskedAtOnce() const noexcept;
    void ScanAtOnce(std::deque<std::uint32_t> wanted, Running& running);
    std::deque<std::uint32_t> ShownServers(const TargetRows* selected) const;
    void Run(RunningScan& scan, Running& running);
    void Step();
    void StepBehindDialog();
    void End(Running& running);
    void EndScan(ScanProgress& progress);
    bool MustStop() noexcept;
    void TakeReply(ServerReply& reply);
    void LogFailure(const std::string& description);

    MainFormContext form_;
    ServerListView& servers_;
    ServerDetails& details_;
    QueryResults results_;
    Running* running_ = nullptr; // the innermost
    bool asksSeveral_ = false;   // a scan that asks several servers at once is on the stack
    bool failureLogged_ = false; // in this scan
};

} // namespace quarn
