#pragma once

// The progress of a scan: the progress bar with its tooltip, and the status bar's panels.

#include "views/MainFormContext.h"

#include <cstdint>

namespace quarn {

class ScanProgress {
  public:
    explicit ScanProgress(const MainFormContext& form) : form_(form) {}

    void Begin(std::int32_t serversToAsk);

    // The server with this number, counted from 1, is being queried, or was.
    void Reach(std::int32_t number);

    // Shows the same in panel 3, with the length of the whole list.
    void ShowNumber(std::int32_t number);

    // The outcome of one more query.
    void Count(bool answered);

    void End(bool aborted);

  private:
    std::string ToolTip() const;

    MainFormContext form_;
    std::int32_t serversToAsk_ = 0;
    std::int32_t answered_ = 0;
    std::int32_t silent_ = 0;
    std::int32_t startTick_ = 0;
};

} // namespace quarn
