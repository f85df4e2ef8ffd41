#include "tests/fakes/FakeEvents.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace quarn {

namespace {

[[noreturn]] void FailEndless(const std::string& reason) {
    ADD_FAILURE() << reason;
    throw EndlessWait(reason);
}

} // namespace

void FakeEvents::PostAt(std::int32_t tick, Event event) {
    queue_.emplace(clock_.ElapsedAt(tick), std::move(event));
}

void FakeEvents::PostIn(std::int32_t milliseconds, Event event) {
    queue_.emplace(clock_.Elapsed() + milliseconds, std::move(event));
}

void FakeEvents::DoEvents() {
    ++doEventsCalls;
    if (whenYielding)
        whenYielding(doEventsCalls);
    while (FirstIsDue())
        RunFirst();
}

void FakeEvents::WaitForEvent() {
    ++waitCalls;
    if (queue_.empty())
        FailEndless("A wait for events would never end: none is queued.");
    RunFirst();
}

void FakeEvents::RunFor(std::int32_t milliseconds) {
    const std::int64_t end = clock_.Elapsed() + milliseconds;
    while (!queue_.empty() && queue_.begin()->first <= end)
        RunFirst();
    const std::int64_t rest = std::max<std::int64_t>(end - clock_.Elapsed(), 0);
    clock_.Advance(static_cast<std::int32_t>(rest));
}

bool FakeEvents::FirstIsDue() const {
    return !queue_.empty() && queue_.begin()->first <= clock_.Elapsed();
}

void FakeEvents::RunFirst() {
    if (eventsRun == eventLimit)
        FailEndless("More events ran than any test needs.");
    ++eventsRun;
    auto first = queue_.extract(queue_.begin());
    if (first.key() > clock_.Elapsed())
        clock_.Advance(static_cast<std::int32_t>(first.key() - clock_.Elapsed()));
    first.mapped()();
}

} // namespace quarn
