// Loading and saving a list file, compared with the minimum of work: copying the bytes, and for loading
// splitting every line into its fields.

#include "base/LineReader.h"
#include "bench/Workloads.h"
#include "core/modStringHelper.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"
#include "views/ServerListFiles.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace quarn::bench {

namespace {

struct ListFixture {
    explicit ListFixture(std::int32_t count) {
        program.AppPath = "C:\\Quarn\\";
        program.AppLog = std::make_unique<clsAppLog>(desktop.desktop, program.AppPath);
        program.Servers = Servers(count);
        program.ServerCount = count;
        files.SaveServerList("q3");
        content = desktop.files.Read(files.PathOf("q3"));
    }

    FakeDesktop desktop;
    ProgramState program;
    CommandGate gate{desktop.events};
    ServerListFiles files{program, desktop.files, gate};
    std::string content;
};

std::int32_t Count(const benchmark::State& state) {
    return static_cast<std::int32_t>(state.range(0));
}

void Counts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

void ListLoad(benchmark::State& state) {
    ListFixture fixture(Count(state));
    for (auto _ : state)
        fixture.files.LoadServerList("q3");
    state.SetComplexityN(state.range(0));
}

void ListLoad_floor(benchmark::State& state) {
    const ListFixture fixture(Count(state));
    for (auto _ : state) {
        const std::string copy = fixture.desktop.files.Read(fixture.files.PathOf("q3"));
        LineReader lines(copy);
        std::size_t fields = 0;
        while (!lines.Rest().empty())
            fields += Split(lines.ReadLine(), ';').size();
        benchmark::DoNotOptimize(fields);
    }
}

void ListSave(benchmark::State& state) {
    ListFixture fixture(Count(state));
    for (auto _ : state)
        fixture.files.SaveServerList("q3");
    state.SetComplexityN(state.range(0));
}

void ListSave_floor(benchmark::State& state) {
    ListFixture fixture(Count(state));
    for (auto _ : state) {
        std::string copy;
        LineReader lines(fixture.content);
        while (!lines.Rest().empty()) {
            for (const std::string_view field : Split(lines.ReadLine(), ';'))
                copy.append(field).append(1, ';');
            copy += "\r\n";
        }
        fixture.desktop.files.Replace("C:\\Quarn\\copy.dat", copy);
    }
}

BENCHMARK(ListLoad)->Apply(Counts)->Complexity(benchmark::oN);
BENCHMARK(ListLoad_floor)->Apply(Counts);
BENCHMARK(ListSave)->Apply(Counts)->Complexity(benchmark::oN);
BENCHMARK(ListSave_floor)->Apply(Counts);

} // namespace

} // namespace quarn::bench
