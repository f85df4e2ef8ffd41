#pragma once

// Queries servers one after the other. Rows are queried in the order that they have at the start, and may be
// moved or removed meanwhile, so they are looked up by the server that they show.

#include "views/MainFormContext.h"
#include "views/QueryResults.h"
#include "views/RunningScan.h"
#include "views/ScanProgress.h"
#include "views/ServerDetails.h"
#include "views/ServerListView.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <utility>

namespace quarn {

// What ticks and replies report. Scans inside each other share it, as they share the timer.
struct ReplyWait {
    static constexpr std::int32_t NoAnswer = 2; // the timer ticked before any reply

    std::int32_t ReplyState = 0; // a tick sets NoAnswer, a reply to the query that is awaited adds 1
    std::int32_t QuerySentTick = 0;
};

class SequentialScan final : public RunningScan {
  public:
    // What all scans use.
    struct Parts {
        ServerListView& servers;
        ServerDetails& details;
        QueryResults& results;
        ReplyWait& wait;
    };

    // Rows are given by the identities of the records that they show: those to be queried, and all of the
    // list. Each row that is queried is selected if `selectsRows`. `stopped`: no further server is asked.
    struct Task {
        std::deque<std::uint32_t> wanted;
        std::deque<std::uint32_t> listed;
        bool selectsRows = false;
        std::function<bool()> stopped;
    };

    SequentialScan(const MainFormContext& form, const Parts& parts, ScanProgress& progress, Task task)
        : form_(form), parts_(parts), progress_(progress), task_(std::move(task)) {}
    SequentialScan(const SequentialScan&) = delete;
    SequentialScan& operator=(const SequentialScan&) = delete;

    bool CanStep() const override;
    bool Step() override;
    bool TakeReply(ServerReply& reply) override;

  private:
    bool AskNext();
    void ShowPosition(std::int32_t number);
    bool Ask();
    void FinishQuery();
    void Finish(bool answered);
    bool IsAnswered() const noexcept;
    bool IsReplaced() const noexcept;

    MainFormContext form_;
    Parts parts_;
    ScanProgress& progress_;
    Task task_;
    std::size_t passed_ = 0; // of task_.listed
    std::size_t asked_ = 0;  // of task_.wanted
    std::int32_t row_ = 0;   // where the last one was found
    bool awaitsReply_ = false;
    QueryTarget target_; // of the query that is awaited
    ServerQuery query_;
};

} // namespace quarn
