#include "views/ScanProgress.h"

#include <algorithm>
#include <string>

namespace quarn {

namespace {

constexpr std::int64_t MillisecondsPerSecond = 1000;
constexpr std::int64_t SecondsPerMinute = 60;

// Fewer outcomes say nothing about the rest.
constexpr std::int32_t FewestForAnEstimate = 5;

std::string TimeLeft(std::int64_t milliseconds) {
    const std::int64_t seconds = (milliseconds + MillisecondsPerSecond - 1) / MillisecondsPerSecond;
    if (seconds < SecondsPerMinute)
        return std::to_string(seconds) + " s";
    return std::to_string((seconds + SecondsPerMinute / 2) / SecondsPerMinute) + " min";
}

} // namespace

void ScanProgress::Begin(std::int32_t serversToAsk) {
    ProgressBar& bar = form_.controls.pbScanning;
    bar.SetMaximum(form_.program.ServerCount);
    bar.active = true;
    form_.controls.SetStatus(MessagePanel, "Retrieving server stats, please wait.");
    serversToAsk_ = serversToAsk;
    answered_ = 0;
    silent_ = 0;
    startTick_ = form_.desktop.clock.TickCount();
    bar.toolTip = ToolTip();
}

void ScanProgress::Reach(std::int32_t number) {
    form_.controls.pbScanning.SetValue(number);
}

void ScanProgress::ShowNumber(std::int32_t number) {
    form_.controls.SetStatus(CountPanel,
                             std::to_string(number) + "/" + std::to_string(form_.program.ServerCount));
}

void ScanProgress::Count(bool answered) {
    ++(answered ? answered_ : silent_);
    form_.controls.pbScanning.toolTip = ToolTip();
}

std::string ScanProgress::ToolTip() const {
    std::string text = std::to_string(answered_) + " answered, " + std::to_string(silent_) + " silent";
    const std::int64_t done = std::int64_t{answered_} + silent_;
    const std::int64_t left = std::max<std::int64_t>(serversToAsk_ - done, 0);
    if (done >= FewestForAnEstimate && left > 0) {
        const std::int64_t passed = TicksBetween(startTick_, form_.desktop.clock.TickCount());
        text += ", about " + TimeLeft(passed * left / done) + " left";
    }
    return text;
}

void ScanProgress::End(bool aborted) {
    ProgressBar& bar = form_.controls.pbScanning;
    bar.SetValue(1);
    bar.active = false;
    bar.toolTip = form_.controls.sbMain.panels[ProgressPanel].toolTip;
    form_.controls.SetStatus(CountPanel, std::to_string(form_.program.ServerCount) + " servers");
    form_.controls.SetStatus(MessagePanel, aborted ? "Scanning aborted by user." : "Ready.");
}

} // namespace quarn
