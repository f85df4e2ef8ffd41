#include "views/CommandGate.h"

#include <utility>

namespace quarn {

bool CommandGate::MustWait(CommandKind kind) const noexcept {
    return listDepth_ > 0 || (kind == CommandKind::ReplacesList && scanDepth_ > 0) ||
           commandDepth_ >= MostNestedCommands;
}

void CommandGate::Run(CommandKind kind, std::function<void()> command) {
    if (closing_)
        return;
    if (MustWait(kind)) {
        if (kind == CommandKind::ReplacesList)
            ++replacementsWaiting_;
        waiting_.push_back({kind, std::move(command)});
        return;
    }
    Execute(command);
}

void CommandGate::Perform(const std::function<void()>& command) {
    {
        const Restore depth(commandDepth_, commandDepth_ + 1);
        const Restore works(waitsForDialog_, false);
        command();
    }
    ContinueScan(); // replies and ticks may have come while the command did not allow a step
}

void CommandGate::Execute(const std::function<void()>& command) {
    Perform(command);
    if (commandDepth_ == 0)
        FinishOutermost();
}

bool CommandGate::RunFirstWaiting() {
    if (waiting_.empty() || MustWait(waiting_.front().kind))
        return false;
    const Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    if (next.kind == CommandKind::ReplacesList)
        --replacementsWaiting_;
    Perform(next.command);
    return true;
}

void CommandGate::FinishOutermost() {
    while (!closing_ && RunFirstWaiting()) {
    }
    if (closing_)
        ContinueClosing();
    else if (Idle)
        Idle();
}

void CommandGate::UnloadOnce() {
    if (unloaded_)
        return;
    unloaded_ = true;
    waiting_.clear();
    std::exchange(unload_, nullptr)();
}

void CommandGate::Close(std::function<void()> unload, std::function<bool()> ready) {
    if (closing_)
        return;
    closing_ = true;
    unload_ = std::move(unload);
    ready_ = std::move(ready);
    ContinueClosing();
}

void CommandGate::ContinueClosing() {
    if (closing_ && !unloaded_ && commandDepth_ == 0 && ready_())
        UnloadOnce();
}

void CommandGate::CloseAtOnce(std::function<void()> unload) {
    closing_ = true;
    unload_ = std::move(unload);
    UnloadOnce();
}

bool CommandGate::WaitUntil(const std::function<bool()>& condition) {
    while (!closing_ && !condition())
        if (!RunFirstWaiting())
            events_.WaitForEvent();
    return !closing_;
}

bool CommandGate::ScanMayStep() const noexcept {
    return scanDepth_ > 0 && waitsForDialog_ && listDepth_ == 0 && !stepping_ && !closing_;
}

void CommandGate::ContinueScan() {
    if (ScanMayStep() && StepScan)
        StepScan();
}

void CommandGate::LetEventsRun() {
    if (!closing_)
        events_.DoEvents();
}

} // namespace quarn
