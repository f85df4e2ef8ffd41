#pragma once

// Decides what a command may do while another one is still at work further down the stack.
//
// Everything runs on one thread, and long operations let events run in between; so a command can arrive in
// the middle of a scan or of a list being loaded or saved. These rules hold:
//  - While a list is loaded, saved, listed, sorted or prepared for new entries, commands wait. They run
//    once, in their order, when it is done, also inside a scan that was running before.
//  - A command that replaces the list first ends a running scan as "stop" does and waits for its end. Other
//    commands, a second scan included, run at once inside the scan.
//  - A scan waits in a loop that takes its next step after an event. The loop of a dialog or message box that
//    opens during the wait is above it on the stack, so it continues only when the dialog is closed. Until
//    then the events that the scan waits for take the steps, but only if the dialog is all that is above it:
//    work on a list, or a command inside the dialog's loop, may have row numbers or references to records,
//    which a step would make wrong. Of scans inside each other the innermost that has not ended takes steps.
//    Commands that wait for the end of a scan that ended behind a dialog run when the dialog is closed.
//  - Commands nest through waits and message boxes only to a certain depth, as each takes its part of the
//    stack: a further scan is refused, a further command waits until the depth has fallen.
//  - Closing ends every wait at once. When the stack has unwound to its outermost command and no message box
//    or dialog is open, the window is unloaded; commands that still wait are dropped.

#include "base/Scope.h"
#include "desktop/EventPump.h"

#include <deque>
#include <functional>

namespace quarn {

enum class CommandKind { Ordinary, ReplacesList };

class CommandGate {
  public:
    explicit CommandGate(EventPump& events) : events_(events) {}

    // Runs the command, now or later. Commands trap their own errors.
    void Run(CommandKind kind, std::function<void()> command);

    // Runs `unload` when no command is running any more and `ready` returns true, which may be now. Only the
    // first call counts.
    void Close(std::function<void()> unload, std::function<bool()> ready);

    // Calls `ready` again, after it returned false.
    void ContinueClosing();

    // Like Close, but unloads immediately, without unwinding running commands. Used for WM_ENDSESSION.
    void CloseAtOnce(std::function<void()> unload);

    bool Closing() const noexcept { return closing_; }

    // Called whenever the outermost command has ended and no command waits.
    std::function<void()> Idle;

    // Lets events run until the condition holds, sleeping in between. The condition is checked after every
    // event and after each deferred command that runs. False: the program is closing.
    bool WaitUntil(const std::function<bool()>& condition);

    // Lets pending events run, for use inside a loop over many records.
    void LetEventsRun();

    // Takes the next steps of the scans that are at work, as far as their replies and ticks have come.
    std::function<void()> StepScan;

    // Calls StepScan if a step may be taken from an event now. Every event that a scan waits for calls this.
    void ContinueScan();
    bool ScanMayStep() const noexcept;

    // A command that replaces the list is waiting; a running scan ends for it.
    bool ReplacementWaits() const noexcept { return replacementsWaiting_ > 0; }

    // The list is being loaded, saved, listed, sorted or made ready.
    bool ListIsBusy() const noexcept { return listDepth_ > 0; }
    bool ScanRuns() const noexcept { return scanDepth_ > 0; }

    // The most scans that run inside each other, and commands of any kind.
    static constexpr int MostNestedScans = 16;
    static constexpr int MostNestedCommands = 64;
    bool ScanMayStart() const noexcept { return scanDepth_ < MostNestedScans; }

    // While this object exists, the list is being loaded, saved, listed, sorted or prepared.
    struct ListActivity : Restore<int> {
        explicit ListActivity(CommandGate& gate) : Restore(gate.listDepth_, gate.listDepth_ + 1) {}
    };

    // While this object exists, a scan is running.
    struct ScanActivity : Restore<int> {
        explicit ScanActivity(CommandGate& gate) : Restore(gate.scanDepth_, gate.scanDepth_ + 1) {}
    };

    // While this object exists, a dialog or message box is open, and its loop runs events.
    struct DialogActivity : Restore<bool> {
        explicit DialogActivity(CommandGate& gate) : Restore(gate.waitsForDialog_, true) {}
    };

    // While this object exists, a scan takes a step. No event takes another one.
    struct StepActivity : Restore<bool> {
        explicit StepActivity(CommandGate& gate) : Restore(gate.stepping_, true) {}
    };

  private:
    struct Waiting {
        CommandKind kind;
        std::function<void()> command;
    };

    bool MustWait(CommandKind kind) const noexcept;
    void Execute(const std::function<void()>& command);
    void Perform(const std::function<void()>& command);
    bool RunFirstWaiting(); // false: there is none that may run
    void FinishOutermost();
    void UnloadOnce();

    EventPump& events_;
    std::deque<Waiting> waiting_;
    std::function<void()> unload_;
    std::function<bool()> ready_;
    int commandDepth_ = 0;
    int replacementsWaiting_ = 0; // commands in waiting_ that replace the list
    int listDepth_ = 0;
    int scanDepth_ = 0;
    bool waitsForDialog_ = false; // the innermost of what is at work only waits for its dialog
    bool stepping_ = false;
    bool closing_ = false;
    bool unloaded_ = false;
};

} // namespace quarn
