#include "views/ScanEngine.h"

#include "base/Conversions.h"
#include "base/Scope.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"
#include "views/ParallelScan.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace quarn {

ScanEngine::ScanEngine(const MainFormContext& form, ServerListView& servers, ServerDetails& details)
    : form_(form), servers_(servers), details_(details), results_(form, servers, details) {
    QueryPorts& ports = form_.controls.sckServer;
    ports.DataArrival = [this](std::uint32_t query, std::int32_t tick) {
        sckServer_DataArrival(query, tick);
    };
    ports.Failed = [this](const std::string& description) { LogFailure(description); };
    form_.gate.StepScan = [this] { StepBehindDialog(); };
}

void ScanEngine::mnuServRefreshAll_Click() {
    Start(nullptr, "mnuServRefreshAll_Click");
}

void ScanEngine::mnuServRefresh_Click(GivenRows rows) {
    Start(std::make_shared<const TargetRows>(servers_.TargetsOf(std::move(rows))), "mnuServRefresh_Click");
}

// Sequential scans nest. A second scan ends a running one that queries several servers at once.
void ScanEngine::Start(std::shared_ptr<const TargetRows> selected, const char* routine) {
    const bool atOnce = form_.program.Simultaneous > 1 || asksSeveral_;
    form_.gate.Run(atOnce ? CommandKind::ReplacesList : CommandKind::Ordinary,
                   [this, selected = std::move(selected), routine] { Scan(selected.get(), routine); });
}

void ScanEngine::Scan(const TargetRows* selected, const char* routine) {
    if (!form_.gate.ScanMayStart())
        return form_.program.AppLog->Log(MainFormName, routine, 0, "Too many scans run inside each other");
    const CommandGate::ScanActivity activity(form_.gate);
    std::deque<std::uint32_t> wanted = ShownServers(selected);
    ScanProgress progress(form_);
    Running running{progress, routine, running_};
    PrepareForScan(progress, static_cast<std::int32_t>(wanted.size()));
    form_.Trapped(routine, OnError::Log, [&] {
        if (form_.program.Simultaneous > 1)
            ScanAtOnce(std::move(wanted), running);
        else
            ScanInTurn(std::move(wanted), selected == nullptr, running);
    });
    if (!form_.gate.Closing())
        End(running);
}

void ScanEngine::PrepareForScan(ScanProgress& progress, std::int32_t serversToAsk) {
    form_.Trapped("PrepareForScan", OnError::Log, [&] {
        failureLogged_ = false;
        results_.Begin();
        progress.Begin(serversToAsk);
        form_.controls.tmrTimeout.SetEnabled(form_.program.Simultaneous <= 1);
        form_.controls.sckServer.mostFinished =
            std::max(QueryPorts::MostFinishedInTurn, QueryPorts::MostFinishedForEach * AskedAtOnce());
    });
}

// The identities of the servers that the rows show.
std::deque<std::uint32_t> ScanEngine::ShownServers(const TargetRows* selected) const {
    const ListView& list = form_.controls.lvwServers;
    std::deque<std::uint32_t> shown;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        if (selected == nullptr || selected->Includes(list.Row(row), form_.program))
            shown.push_back(list.Row(row).subject);
    return shown;
}

void ScanEngine::ScanInTurn(std::deque<std::uint32_t> wanted, bool isWholeList, Running& running) {
    SequentialScan scan(form_, {servers_, details_, results_, wait}, running.progress,
                        {.wanted = std::move(wanted),
                         .listed = ShownServers(nullptr),
                         .selectsRows = isWholeList,
                         .stopped = [this] { return MustStop(); }});
    Run(scan, running);
}

std::int32_t ScanEngine::AskedAtOnce() const noexcept {
    return std::clamp(form_.program.Simultaneous, 1, MostSimultaneous);
}

void ScanEngine::ScanAtOnce(std::deque<std::uint32_t> wanted, Running& running) {
    const Restore several(asksSeveral_, true);
    ParallelScan scan(form_, results_, running.progress,
                      {.rows = std::move(wanted),
                       .atOnce = static_cast<std::size_t>(AskedAtOnce()),
                       .stopped = [this] { return MustStop(); }});
    Run(scan, running);
}

// Returns when the scan has ended, or because the program closes.
void ScanEngine::Run(RunningScan& scan, Running& running) {
    running.scan = &scan;
    running_ = &running;
    const Finally leave([&] {
        running.scan = nullptr;
        if (running_ == &running)
            running_ = running.outer;
    });
    Step();
    while (!running.ended && form_.gate.WaitUntil([&] { return running.ended || scan.CanStep(); }))
        if (!running.ended)
            Step();
}

// Of the innermost scan.
void ScanEngine::Step() {
    Running& running = *running_;
    const CommandGate::StepActivity stepping(form_.gate);
    bool continues = false;
    form_.Trapped(running.routine, OnError::Log, [&] { continues = running.scan->Step(); });
    if (!continues)
        End(running);
}

// A scan that has ended here no longer keeps the one that it was started in from continuing.
void ScanEngine::StepBehindDialog() {
    while (running_ != nullptr && running_->scan->CanStep())
        Step();
}

// Once, behind a dialog or after it.
void ScanEngine::End(Running& running) {
    if (std::exchange(running.ended, true))
        return;
    running_ = running.outer;
    form_.Trapped(running.routine, OnError::Log, [&] { EndScan(running.progress); });
}

// A command that waits to replace the list ends the scan as "stop" does.
bool ScanEngine::MustStop() noexcept {
    if (form_.gate.ReplacementWaits())
        ScanAborted = true;
    return ScanAborted;
}

void ScanEngine::sckServer_DataArrival(std::uint32_t query, std::int32_t tick) {
    form_.Trapped("sckServer_DataArrival", OnError::Log, [&] {
        // If several servers are asked at once, the event of a server's first reply takes its other replies
        // as well. On a busy machine their own events could run after the port's time is over.
        do {
            std::optional<ServerReply> reply = form_.controls.sckServer.Take(query, tick);
            if (!reply)
                return;
            TakeReply(*reply);
        } while (AskedAtOnce() > 1);
    });
    form_.gate.ContinueScan();
}

void ScanEngine::TakeReply(ServerReply& reply) {
    if (running_ != nullptr && running_->scan->TakeReply(reply))
        return;
    results_.Take(reply);
    if (!reply.query.finished)
        return;
    // A late reply. Rows wait while the list is being sorted or saved.
    form_.Command(CommandKind::Ordinary, "sckServer_DataArrival", OnError::Log,
                  [this, target = reply.query.target] { results_.Show(target); });
}

// One log entry for each scan: without free sockets, every further server would add one.
void ScanEngine::LogFailure(const std::string& description) {
    if (!std::exchange(failureLogged_, true))
        form_.program.AppLog->Log(MainFormName, "SendServerQuery", 0, description);
}

void ScanEngine::NoteStandstill() {
    constexpr std::string_view Reason = "; paused while a menu is open or the window is moved";
    ProgressBar& bar = form_.controls.pbScanning;
    const bool isHeldUp = running_ != nullptr && !form_.gate.ScanMayStep();
    if (isHeldUp && bar.active && !bar.toolTip.ends_with(Reason))
        bar.toolTip += Reason;
}

void ScanEngine::tmrTimeout_Timer() {
    wait.ReplyState = ReplyWait::NoAnswer;
    form_.gate.ContinueScan();
}

void ScanEngine::ApplyTimeout() {
    const std::int32_t timeout = TimeoutOf(form_.program);
    form_.controls.tmrTimeout.SetInterval(timeout);
    form_.controls.sckServer.lifetime = timeout;
}

void ScanEngine::EndScan(ScanProgress& progress) {
    form_.controls.tmrTimeout.SetEnabled(false);
    progress.End(ScanAborted);
    ScanAborted = false;
}

} // namespace quarn
