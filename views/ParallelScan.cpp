#include "views/ParallelScan.h"

#include "query/modGamQuery.h"
#include "support/Trap.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quarn {

ParallelScan::ParallelScan(const MainFormContext& form, QueryResults& results, ScanProgress& progress,
                           Task task)
    : form_(form), results_(results), progress_(progress), task_(std::move(task)) {
    Timer& deadlines = form_.controls.tmrDeadlines;
    deadlines.SetEnabled(true);
    deadlines.Tick = [this] {
        ticked_ = true;
        form_.gate.ContinueScan();
    };
}

ParallelScan::~ParallelScan() {
    form_.controls.tmrDeadlines.Tick = nullptr;
    End();
}

bool ParallelScan::Step() {
    if (ticked_) {
        form_.controls.sckServer.DeliverArrivals();
        ReadBeforeDeadlines();
    }
    TakeArrivals();
    if (std::exchange(ticked_, false))
        CheckDeadlines();
    if (!task_.stopped() && AskServers())
        return true;
    End();
    return false;
}

// False if no query is open.
bool ParallelScan::AskServers() {
    while (pending_.size() < task_.atOnce && AskNext())
        form_.controls.sckServer.NoteArrivals(); // sending takes the system a while
    return !pending_.empty();
}

// False if there is no row left, or no port for the next one.
bool ParallelScan::AskNext() {
    while (!task_.rows.empty()) {
        const std::int32_t row = form_.controls.lvwServers.RowShowing(task_.rows.front(), likelyRow_);
        if (row == 0) { // removed since the scan began
            task_.rows.pop_front();
            CountFinished();
            continue;
        }
        likelyRow_ = row + 1;
        Pending pending{.target = results_.TargetOf(row), .sentTick = form_.desktop.clock.TickCount()};
        form_.controls.sckServer.CloseOf(pending.target.server);
        pending.first = Ask(pending.target, pending.target.index).number;
        if (pending.first == 0 && !pending_.empty()) {
            task_.atOnce = pending_.size(); // no more ports: wait until the next query is finished
            return false;
        }
        task_.rows.pop_front();
        pending_.push_back(pending);
        return true;
    }
    return false;
}

ServerQuery ParallelScan::Ask(const QueryTarget& target, std::int32_t index) {
    const ServerRecord& server = form_.program.Servers[index];
    const EngineFamily* const engine = results_.EngineOf(index);
    return form_.controls.sckServer.Ask(
        target, server.Address, server.Port, form_.desktop.clock.TickCount(),
        [&](UdpSocket& socket) { SendServerQuery(*form_.program.AppLog, engine, socket); });
}

bool ParallelScan::TakeReply(ServerReply& reply) {
    if (reply.query.finished)
        return false;
    arrivals_.push_back(std::move(reply));
    return true;
}

void ParallelScan::TakeArrivals() {
    while (!arrivals_.empty()) {
        const ServerReply arrival = std::move(arrivals_.front());
        arrivals_.pop_front();
        form_.controls.sckServer.NoteArrivals();
        const std::uint32_t number = arrival.query.number;
        const auto found = std::ranges::find_if(
            pending_, [&](const Pending& p) { return p.first == number || p.second == number; });
        const std::int32_t index = results_.IndexOf(arrival.query.target);
        if (index == 0)
            continue;
        if (found != pending_.end())
            form_.program.Servers[index].Ping = TicksBetween(arrival.query.sentTick, arrival.tick);
        results_.StoreReply(index, arrival.datagram);
        if (found != pending_.end()) {
            // The replies to the other request would contain the same again.
            const std::uint32_t other = found->first == number ? found->second : found->first;
            form_.controls.sckServer.Close(other);
            std::erase_if(arrivals_, [&](const ServerReply& reply) { return reply.query.number == other; });
            Finish(static_cast<std::size_t>(found - pending_.begin()), true);
        } else {
            results_.Show(arrival.query.target);
        }
    }
}

bool ParallelScan::IsOver(const Pending& pending) const noexcept {
    return TicksBetween(pending.sentTick, form_.desktop.clock.TickCount()) >= TimeoutOf(form_.program);
}

// The system may not have announced yet what has arrived. The ping is then the time until now.
void ParallelScan::ReadBeforeDeadlines() {
    const std::int32_t now = form_.desktop.clock.TickCount();
    for (const Pending& pending : pending_)
        if (IsOver(pending))
            for (const std::uint32_t number : {pending.first, pending.second})
                while (std::optional<ServerReply> reply = form_.controls.sckServer.Take(number, now))
                    arrivals_.push_back(std::move(*reply));
}

void ParallelScan::CheckDeadlines() {
    const std::int32_t now = form_.desktop.clock.TickCount();
    for (std::size_t position = 0; position < pending_.size();) {
        Pending& pending = pending_[position];
        const std::int32_t index = results_.IndexOf(pending.target);
        const std::int32_t waited = TicksBetween(pending.sentTick, now);
        if (IsOver(pending) || index == 0) {
            if (index != 0)
                results_.StoreNoAnswer(index);
            Finish(position, false);
            continue;
        }
        if (pending.second == 0 && waited >= TimeoutOf(form_.program) / 2)
            pending.second = Ask(pending.target, index).number;
        ++position;
    }
}

void ParallelScan::Finish(std::size_t position, bool answered) {
    const Pending done = pending_[position];
    pending_.erase(pending_.begin() + static_cast<std::ptrdiff_t>(position));
    form_.controls.sckServer.Finish(done.first);
    form_.controls.sckServer.Finish(done.second);
    progress_.Count(answered);
    CountFinished();
    results_.Show(done.target);
}

void ParallelScan::CountFinished() {
    ++finished_;
    progress_.Reach(finished_);
    progress_.ShowNumber(finished_);
}

void ParallelScan::End() {
    form_.controls.tmrDeadlines.SetEnabled(false);
    for (const Pending& pending : pending_) {
        form_.controls.sckServer.Close(pending.first);
        form_.controls.sckServer.Close(pending.second);
    }
    pending_.clear();
    arrivals_.clear();
}

} // namespace quarn
