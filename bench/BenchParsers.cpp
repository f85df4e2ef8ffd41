// Each reply parser, compared with one pass over every byte of the same datagram.

#include "bench/Workloads.h"
#include "query/modGamQuery.h"
#include "query/modMasterQuery.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

namespace quarn::bench {

namespace {

struct ParserFixture {
    ParserFixture() {
        program.AppLog = std::make_unique<clsAppLog>(desktop.desktop, "C:\\Quarn\\");
        program.Servers.Reset(1);
        program.ServerCount = 1;
    }
    FakeDesktop desktop;
    ProgramState program;
};

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(300)->Arg(1400)->Arg(16384);
}

// Copies the datagram, as the socket hands it over, and searches it for a byte that it lacks.
void Floor(benchmark::State& state, const std::string& datagram) {
    for (auto _ : state) {
        std::string copy = datagram;
        benchmark::DoNotOptimize(std::memchr(copy.data(), 0x03, copy.size()));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(datagram.size()));
}

template<class Parse>
void Run(benchmark::State& state, const std::string& datagram, Parse parse) {
    ParserFixture fixture;
    for (auto _ : state)
        parse(fixture.program, datagram);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(datagram.size()));
}

std::size_t Size(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void StatusQ3(benchmark::State& state) {
    Run(state, Q3Status(Size(state)),
        [](ProgramState& program, const std::string& data) { ParseQ3EngineStatus(program, data, 1); });
}
void StatusQ3_floor(benchmark::State& state) {
    Floor(state, Q3Status(Size(state)));
}

void StatusD3(benchmark::State& state) {
    Run(state, D3Status(Size(state)),
        [](ProgramState& program, const std::string& data) { ParseD3EngineStatus(program, data, 1); });
}
void StatusD3_floor(benchmark::State& state) {
    Floor(state, D3Status(Size(state)));
}

void StatusHL(benchmark::State& state) {
    Run(state, HLRules(Size(state)), [](ProgramState& program, const std::string& data) {
        program.Servers[1].Variables.clear();
        ParseHLCSStatus(program, data, 1);
    });
}
void StatusHL_floor(benchmark::State& state) {
    Floor(state, HLRules(Size(state)));
}

template<class Parse>
void RunMaster(benchmark::State& state, Parse parse) {
    const std::string body = MasterBody(Size(state));
    Run(state, body, [&](ProgramState& program, const std::string& data) {
        program.Servers.Reset();
        program.ServerCount = 0;
        std::string copy = data;
        parse(program, copy);
    });
}

void MasterQ3(benchmark::State& state) {
    RunMaster(state, ParseQ3EngineServers);
}
void MasterQ3_floor(benchmark::State& state) {
    Floor(state, MasterBody(Size(state)));
}
void MasterD3(benchmark::State& state) {
    RunMaster(state, ParseD3EngineServers);
}
void MasterD3_floor(benchmark::State& state) {
    Floor(state, MasterBody(Size(state)));
}
void MasterHL(benchmark::State& state) {
    RunMaster(state, ParseHLCSServers);
}
void MasterHL_floor(benchmark::State& state) {
    Floor(state, MasterBody(Size(state)));
}

BENCHMARK(StatusQ3)->Apply(Sizes);
BENCHMARK(StatusQ3_floor)->Apply(Sizes);
BENCHMARK(StatusD3)->Apply(Sizes);
BENCHMARK(StatusD3_floor)->Apply(Sizes);
BENCHMARK(StatusHL)->Apply(Sizes);
BENCHMARK(StatusHL_floor)->Apply(Sizes);
BENCHMARK(MasterQ3)->Apply(Sizes);
BENCHMARK(MasterQ3_floor)->Apply(Sizes);
BENCHMARK(MasterD3)->Apply(Sizes);
BENCHMARK(MasterD3_floor)->Apply(Sizes);
BENCHMARK(MasterHL)->Apply(Sizes);
BENCHMARK(MasterHL_floor)->Apply(Sizes);

} // namespace

} // namespace quarn::bench
