#pragma once

// Lets the user-interface thread's events run during a long operation.

namespace quarn {

class EventPump {
  public:
    virtual ~EventPump() = default;

    // Runs the pending events and returns. May return at once if events ran less than 10 ms ago, so that a
    // loop over many records can call it for each one.
    virtual void DoEvents() = 0;

    // Sleeps until there is an event, runs exactly one, and returns.
    virtual void WaitForEvent() = 0;
};

} // namespace quarn
