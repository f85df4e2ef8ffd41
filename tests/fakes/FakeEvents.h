#pragma once

// An event queue on a fake clock: waiting moves the clock to the next event and takes no time. An endless
// wait and an endless flood of events fail the test and throw, so that no test hangs. The failure is recorded
// as well as thrown, because the program's error traps catch everything.

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

    // Queues an event that is due at once, when the tick counter reads `tick`, or in the given number of
    // milliseconds. Events of the same moment run in the order in which they were queued.
    void Post(Event event) { PostIn(0, std::move(event)); }
    void PostAt(std::int32_t tick, Event event);
    void PostIn(std::int32_t milliseconds, Event event);

    // Runs all events that are due, including those that they queue for now.
    void DoEvents() override;

    // Runs one event: the first that is due, otherwise the next one, to which the clock is moved.
    void WaitForEvent() override;

    // Moves the clock and runs each event at its moment.
    void RunFor(std::int32_t milliseconds);

    std::size_t Pending() const noexcept { return queue_.size(); }

    // Called at the start of every DoEvents with the call's number, to inject an event at the N-th yield.
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
