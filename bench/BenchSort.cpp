// Sorting a list by each kind of column, compared with std::sort of existing keys.

#include "controls/ListView.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"
#include "views/clsQuickList.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace quarn::bench {

namespace {

// Four columns, one of each sort type.
enum Column { Picture = 1, Text, Number, Date };

struct SortFixture {
    explicit SortFixture(std::int32_t rows)
        : log(desktop.desktop, "C:\\Quarn\\"), sorter(log, desktop.desktop) {
        list.columns.Reset(4);
        list.columns[Picture].tag = "PICTURE";
        list.columns[Text].tag = "STRING";
        list.columns[Number].tag = "NUMBER";
        list.columns[Date].tag = "DATE";
        std::minstd_rand random(7);
        for (std::int32_t i = 1; i <= rows; ++i) {
            const std::int32_t row = list.Add();
            list.Edit(row).smallIcon = random() % 2 ? "locked" : "";
            list.Cell(row, Text).text = "Server " + std::to_string(random() % 100000);
            list.Cell(row, Number).text = std::to_string(random() % 1000);
            list.Cell(row, Date).text =
                desktop.locale.FromDate(DateTime{DateTime::From({2026, 1, 1, 0, 0, 1}).seconds +
                                                 static_cast<std::int64_t>(random() % 10000000)});
        }
        sorter.SetTargetList(list);
    }

    FakeDesktop desktop;
    clsAppLog log;
    ListView list;
    clsQuickList sorter;
};

void Rows(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

template<int column>
void Sort(benchmark::State& state) {
    SortFixture fixture(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state)
        fixture.sorter.SortList(column);
    state.SetComplexityN(state.range(0));
}

// The order alternates, as it does at each click on a header.
template<int column>
void Sort_floor(benchmark::State& state) {
    const SortFixture fixture(static_cast<std::int32_t>(state.range(0)));
    std::vector<std::string> keys;
    for (std::int32_t row = 1; row <= fixture.list.RowCount(); ++row)
        keys.push_back(fixture.desktop.locale.SortKey(
            column == Picture ? fixture.list.Row(row).smallIcon
                              : std::as_const(fixture.list).Cell(row, column).text));
    std::vector<std::string> work = keys;
    bool ascending = false;
    for (auto _ : state) {
        if (ascending)
            std::sort(work.begin(), work.end());
        else
            std::sort(work.begin(), work.end(), std::greater<>());
        ascending = !ascending;
        benchmark::DoNotOptimize(work.data());
    }
}

BENCHMARK(Sort<Picture>)->Name("SortPicture")->Apply(Rows)->Complexity(benchmark::oNLogN);
BENCHMARK(Sort_floor<Picture>)->Name("SortPicture_floor")->Apply(Rows);
BENCHMARK(Sort<Text>)->Name("SortString")->Apply(Rows)->Complexity(benchmark::oNLogN);
BENCHMARK(Sort_floor<Text>)->Name("SortString_floor")->Apply(Rows);
BENCHMARK(Sort<Number>)->Name("SortNumber")->Apply(Rows)->Complexity(benchmark::oNLogN);
BENCHMARK(Sort_floor<Number>)->Name("SortNumber_floor")->Apply(Rows);
BENCHMARK(Sort<Date>)->Name("SortDate")->Apply(Rows)->Complexity(benchmark::oNLogN);
BENCHMARK(Sort_floor<Date>)->Name("SortDate_floor")->Apply(Rows);

} // namespace

} // namespace quarn::bench
