#include "base/TextDecoding.h"
#include "bench/Comparison.h"
#include "bench/Generator.h"
#include "data/csv/CSVReader.h"

#include <cstring>
#include <optional>

namespace kavendra {

namespace {

std::size_t countLineFeeds(std::string_view text) {
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data();
         (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)))); ++at)
        ++count;
    return count;
}

/// Decoding and parsing. Floor: counting the line feeds of the same bytes with memchr.
void csvToItems(benchmark::State& state) {
    const std::string csv = generateCSV(static_cast<std::size_t>(state.range(0)));
    Comparison comparison(state);
    for (auto _ : state) {
        ByteBuffer bytes(csv);
        ItemList items;
        comparison.measureFloor([&] { benchmark::DoNotOptimize(countLineFeeds(csv)); },
                                [&] {
                                    std::optional<ByteBuffer> text = decodeText(std::move(bytes));
                                    auto block = readCSVItems(std::move(*text), "a.csv", "a.csv").items;
                                    items.append(std::move(*block));
                                    benchmark::DoNotOptimize(items.size());
                                });
        if (items.size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("wrong number of items");
    }
    state.counters["MB"] = static_cast<double>(csv.size()) / 1e6;
}
BENCHMARK(csvToItems)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace kavendra
