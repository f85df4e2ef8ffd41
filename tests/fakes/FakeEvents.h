#pragma once

// An event queue that lives on a fake clock: waiting moves the clock to the next event instead of passing
// time. A wait that would never end, and a flood of events without end, fail the test and throw, so that no
// test hangs. The failure is noted besides the throw, since the program's error traps catch everything.

#include "desktop/EventPump.h"
#include "tests/fakes/FakeClock.h"

#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <utility>

namespace quarn {

class EndlessWait : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

class FakeEvents : public EventPump {
  public:
    using Event = std::function<void()>;

    explicit FakeEvents(FakeClock& clock) : clock_(clock) {}

    // Queues an event: due at once, when the tick counter reads `tick`, or in so many milliseconds. Events
    // of the same moment run in the order in which they were queued.
    void Post(Event event) { PostIn(0, std::move(event)); }
    void PostAt(std::int32_t tick, Event event);
    void PostIn(std::int32_t milliseconds, Event event);

    // Runs all events that are due, those included that they queue for now.
    void DoEvents() override;

    // Runs one event: the first that is due, else the next to come, moving the clock to it.
    void WaitForEvent() override;

    // Moves the clock, running each event on the way when its moment comes.
    void RunFor(std::int32_t milliseconds);

    std::size_t Pending() const noexcept { return queue_.size(); }

    // Runs at every call of DoEvents, before the events: what happens at a certain one of many yields.
    std::function<void(std::int32_t call)> whenYielding;

    std::int32_t doEventsCalls = 0;
    std::int32_t waitCalls = 0;
    std::int32_t eventsRun = 0;
    std::int32_t eventLimit = 5'000'000;

  private:
    void RunFirst();
    bool FirstIsDue() const;

    FakeClock& clock_;
    std::multimap<std::int64_t, Event> queue_; // by moment; equal moments keep their order
};

} // namespace quarn
