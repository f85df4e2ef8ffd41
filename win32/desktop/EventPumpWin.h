#pragma once

// The one message loop of the program: the main loop and every wait inside a handler take their messages
// here, so that each message meets the same accelerators and dialogs. For the user-interface thread.
//
// Input, painting and timers each get a turn every few hundredths of a second, however many messages are
// posted meanwhile.
//
// When a wait inside a handler meets the end of the program (WM_QUIT), it puts it back and takes no more
// messages; QuitReceived tells those that wait in a loop to give up, and the loops further out find the
// message in their turn.

#include "desktop/EventPump.h"
#include "win32/WindowsHeaders.h"

#include <array>
#include <cstdint>
#include <functional>

namespace quarn {

class EventPumpWin final : public EventPump {
  public:
    EventPumpWin() noexcept;

    // Brings the windows up to date with the models and paints them. Called before a click or key of the
    // user, who so always acts on what is there, and otherwise while the pump waits, no more often than an
    // eye can follow and than the display can bear: a scan's replies and ticks come faster. Must not throw.
    std::function<void()> updateWindows;

    // True when the message was dealt with (accelerator, dialog key) and must not be dispatched. Must not
    // throw.
    std::function<bool(MSG&)> preTranslate;

    // Runs until the program ends; returns its exit code.
    int Run();

    // Returns at once when events ran less than 10 ms ago. A flood of events is left to the next call.
    void DoEvents() override;

    // Returns at once, with nothing run, after WM_QUIT.
    void WaitForEvent() override;

    bool QuitReceived() const noexcept { return quit_; }

  private:
    void UpdateWindows();

    void SleepAndRunNext();

    // Sleeps until there is a message; brings the windows up to date when their time comes.
    void Sleep();

    // Takes input, painting or a timer's tick that has been waiting behind posted messages.
    bool TakeOverdue(MSG& message) noexcept;

    // Takes the first message of the queue.
    bool TakeFirst(MSG& message) noexcept;

    // Runs the next message; false when there is none or the program ends.
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
