// What the program itself does for each server: listing it under each filter, beside a plain copy of the
// texts shown; and a whole refresh over a network that answers at once, beside parsing the same replies.

#include "bench/Workloads.h"
#include "query/modGamQuery.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <benchmark/benchmark.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace quarn::bench {

namespace {

constexpr std::int32_t Count = 10'000;
constexpr std::size_t ReplySize = 300;

// A browser with servers of the game "q3", all of them listed.
struct ListedServers {
    explicit ListedServers(std::int32_t count = Count) {
        browser.Set("Filter", "Locked", 0);
        browser.Set("Filter", "Ping", 0);
        if (!browser.Start())
            throw std::runtime_error("the browser does not start");
        browser.ClickNode("q3");
        browser.program.Servers = Servers(count);
        List();
    }

    void List() {
        ServerListView& view = browser.Form().servers;
        view.ResetServerViews();
        view.ListServers(false);
        if (browser.RowCount() == 0)
            throw std::runtime_error("nothing is listed");
    }

    HeadlessBrowser browser;
};

template<class SetFilter>
void ListUnder(benchmark::State& state, SetFilter set) {
    ListedServers fixture;
    set(fixture.browser.program, fixture.browser.Form().servers);
    for (auto _ : state)
        fixture.List();
}

void ListAll(benchmark::State& state) {
    ListUnder(state, [](ProgramState&, ServerListView&) {});
}
void ListOpen(benchmark::State& state) {
    ListUnder(state, [](ProgramState& program, ServerListView&) { program.FilterLocked = 1; });
}
void ListNear(benchmark::State& state) {
    ListUnder(state, [](ProgramState& program, ServerListView&) { program.FilterPing = 100; });
}
void ListMod(benchmark::State& state) {
    ListUnder(state, [](ProgramState&, ServerListView& view) { view.ModFilter = 1; });
}

template<class Passes>
void CopyTexts(benchmark::State& state, Passes passes) {
    const OneBased<ServerRecord> servers = Servers(Count);
    for (auto _ : state) {
        std::vector<std::array<std::string, 8>> rows;
        for (std::int32_t i = 1; i <= Count; ++i) {
            const ServerRecord& server = servers[i];
            if (passes(server))
                rows.push_back({server.Address + ":" + std::to_string(server.Port), server.Country,
                                server.Name, std::to_string(server.Players), std::to_string(server.Ping),
                                server.ModName, server.Map, std::to_string(server.LastVisit.seconds)});
        }
        benchmark::DoNotOptimize(rows.data());
    }
}

void ListAll_floor(benchmark::State& state) {
    CopyTexts(state, [](const ServerRecord&) { return true; });
}
void ListOpen_floor(benchmark::State& state) {
    CopyTexts(state, [](const ServerRecord& server) { return server.Locked == 0; });
}
void ListNear_floor(benchmark::State& state) {
    CopyTexts(state, [](const ServerRecord& server) { return server.Ping <= 100; });
}
void ListMod_floor(benchmark::State& state) {
    CopyTexts(state, [](const ServerRecord& server) { return server.ModName == "osp"; });
}

// One iteration asks all servers; the fake network is part of it.
void Refresh(benchmark::State& state, std::int32_t count, std::int32_t atOnce) {
    ListedServers fixture(count);
    fixture.browser.program.Simultaneous = atOnce;
    FakeUdpSockets& socket = fixture.browser.sckServer;
    const std::string reply = Q3Status(ReplySize);
    socket.whenSent = [&](const SentDatagram&) { socket.ReplyIn(0, reply); };
    for (auto _ : state) {
        socket.sent.clear();
        fixture.browser.RefreshAll();
        if (socket.sent.size() != static_cast<std::size_t>(count))
            throw std::runtime_error("not every server was asked");
    }
}

void RefreshAll(benchmark::State& state) {
    Refresh(state, Count, 1);
}
void RefreshAtOnce(benchmark::State& state) {
    Refresh(state, static_cast<std::int32_t>(state.range(0)), 32);
    state.SetComplexityN(state.range(0));
}

void ParseReplies(benchmark::State& state, std::int32_t count) {
    ListedServers fixture(count);
    const std::string reply = Q3Status(ReplySize);
    for (auto _ : state)
        for (std::int32_t i = 1; i <= count; ++i)
            ParseQ3EngineStatus(fixture.browser.program, reply, i);
}

void RefreshAll_floor(benchmark::State& state) {
    ParseReplies(state, Count);
}
void RefreshAtOnce_floor(benchmark::State& state) {
    ParseReplies(state, static_cast<std::int32_t>(state.range(0)));
}

BENCHMARK(ListAll)->Unit(benchmark::kMillisecond);
BENCHMARK(ListAll_floor)->Unit(benchmark::kMillisecond);
BENCHMARK(ListOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(ListOpen_floor)->Unit(benchmark::kMillisecond);
BENCHMARK(ListNear)->Unit(benchmark::kMillisecond);
BENCHMARK(ListNear_floor)->Unit(benchmark::kMillisecond);
BENCHMARK(ListMod)->Unit(benchmark::kMillisecond);
BENCHMARK(ListMod_floor)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshAll)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshAll_floor)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshAtOnce)
    ->Unit(benchmark::kMillisecond)
    ->Arg(Count)
    ->Arg(10 * Count)
    ->Complexity(benchmark::oN);
BENCHMARK(RefreshAtOnce_floor)->Unit(benchmark::kMillisecond)->Arg(Count)->Arg(10 * Count);

} // namespace

} // namespace quarn::bench
