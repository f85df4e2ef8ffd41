#pragma once

// The one message loop of the program: the main loop and every wait inside a handler take their messages
// here, so that the same accelerators and dialogs see each message. For the user-interface thread.
//
// Input, painting and timers each get a turn every few hundredths of a second, however many messages are
// posted.
//
// If a wait inside a handler receives the end of the program (WM_QUIT), it puts it back and takes no more
// messages; QuitReceived tells waits in a loop to give up, and the outer loops receive the message in their
// turn.

#include "desktop/EventPump.h"
#include "win32/WindowsHeaders.h"

#include <array>
#include <cstdint>
#include <functional>

namespace quarn {

class EventPumpWin final : public EventPump {
  public:
    EventPumpWin() noexcept;

    // Updates the windows from the models and paints them. Called before each user input, so that the user
    // acts on current content; after it, so that its result is shown; and otherwise while waiting, at a
    // limited rate. Must not throw.
    std::function<void()> updateWindows;

    // True if the message was handled (accelerator, dialog key) and must not be dispatched. Must not throw.
    std::function<bool(MSG&)> preTranslate;

    // Runs until the program ends; returns its exit code.
    int Run();

    // Returns at once when events ran less than 10 ms ago. A flood of events is left to the next call.
    void DoEvents() override;

    // Returns at once, without running anything, after WM_QUIT.
    void WaitForEvent() override;

    bool QuitReceived() const noexcept { return quit_; }

  private:
    void UpdateWindows();

    void SleepAndRunNext();

    // Sleeps until there is a message; updates the windows when that is due.
    void Sleep();

    // Takes input, a paint message or a timer's tick that has waited behind posted messages.
    bool TakeOverdue(MSG& message) noexcept;

    // Takes the first message of the queue.
    bool TakeFirst(MSG& message) noexcept;

    // Runs the next message; false if there is none or the program ends.
    bool RunNext();

    bool quit_ = false;
    int exitCode_ = 0;
    bool handlerWaited_ = false;
    bool updatePending_ = true;
    std::int64_t nextUpdateAt_; // microseconds of the performance counter, as below
    std::int64_t eventsRanAt_;
    std::array<std::int64_t, 3> turns_{}; // when input, painting and timers had their last turn
};

} // namespace quarn
