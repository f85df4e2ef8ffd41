#pragma once

// Queries the listed servers one after another: one query is in flight at any time, and while it waits for
// the reply or the time-out it sleeps in the event queue, so that the window stays alive and any command may
// come in between, a second scan included.
//
// The time-out timer is started once for a scan and never restarted for a server, so that a server's
// effective time-out lies between 0 and PingTimeout. A tick sets ReplyState to 2, a reply adds 1 to it;
// exactly 2 reads as "no answer".

#include "views/MainFormContext.h"
#include "views/ServerDetails.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

class ScanEngine {
  public:
    ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details);

    void mnuServRefresh_Click(GivenRows rows = {}); // the selected rows
    void mnuServRefreshAll_Click();                 // every row

    // Takes effect when the server in hand has answered or timed out. Without a running scan it does nothing.
    void Stop() noexcept { ScanAborted = form_.gate.ScanRuns(); }

    void sckServer_DataArrival(std::int32_t bytesTotal);
    void tmrTimeout_Timer();

    // The timer ticks at PingTimeout where that is positive, else once a second.
    void ApplyTimeout();

    std::int32_t ReplyState = 0;
    std::int32_t QuerySentTick = 0;
    bool ScanAborted = false;

  private:
    // A row as the scan found it at its start. While a query waits, it may go or move; and where the list is
    // filtered anew, another row shows its record.
    struct ScannedRow {
        std::uint32_t identity;
        std::string tag;
        bool isWanted = true;
    };
    ScannedRow Remember(std::int32_t row) const;
    std::int32_t Find(const ScannedRow& scanned, std::int32_t likely) const; // 0: not listed any more

    void Scan(const TargetRows* selected, const char* routine); // null: every row
    void PrepareForScan();
    void ScanRows(const TargetRows* selected);
    void UpdateServer(std::int32_t row);
    const EngineFamily* CurrentEngine() const; // null: the current game has none
    bool QueryServer(std::int32_t index);
    void EndScan();
    void ParseReply(std::string_view datagram, std::int32_t index);
    void ParseRepliesAlreadyReceived(std::int32_t index);

    MainFormContext form_;
    ServerListView& servers_;
    ServerDetails& details_;
    std::int32_t openQuery_ = 0; // index of the server whose reply is awaited, 0: none
};

} // namespace quarn
