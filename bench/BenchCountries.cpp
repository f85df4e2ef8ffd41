// A country lookup over the ranges of the real database, compared with a plain pass over two arrays of their
// bounds.

#include "query/clsIPLocation.h"
#include "tests/fakes/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quarn::bench {

namespace {

constexpr std::int32_t RangeCount = 385'000; // as Debian's ranges number

// Ranges without end or gap, so that the last address is found in the last one.
std::string Database() {
    std::string text = std::to_string(RangeCount) + "\r\n";
    for (std::int64_t i = 0; i < RangeCount; ++i)
        text += std::to_string(i * 11000) + ";" + std::to_string(i * 11000 + 10999) + ";" +
                (i % 2 ? "DE" : "US") + "\r\n";
    return text;
}

void CountryLookup(benchmark::State& state) {
    FakeDesktop desktop;
    desktop.files.Write("C:\\Quarn\\countryip.dat", Database());
    clsIPLocation location(desktop.files, "C:\\Quarn\\countryip.dat");
    location.InitDatabase();
    for (auto _ : state)
        benchmark::DoNotOptimize(location.GetIPCountry("252.108.248.191")); // in the last range
    state.SetItemsProcessed(state.iterations() * RangeCount);
}

void CountryLookup_floor(benchmark::State& state) {
    std::vector<std::uint32_t> from, to;
    for (std::uint32_t i = 0; i < RangeCount; ++i) {
        from.push_back(i * 11000);
        to.push_back(i * 11000 + 10999);
    }
    const std::uint32_t wanted = 385'000u * 11000u - 1;
    for (auto _ : state) {
        std::uint32_t found = 0;
        for (std::size_t i = 0; i < from.size(); ++i)
            found += from[i] <= wanted && wanted <= to[i];
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * RangeCount);
}

BENCHMARK(CountryLookup)->Unit(benchmark::kMicrosecond);
BENCHMARK(CountryLookup_floor)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quarn::bench
