#include "bench/Comparison.h"
#include "bench/Generator.h"
#include "search/SearchIndex.h"

#include <cstring>
#include <map>

namespace kavendra {

namespace {

/// The generated items; made once for each number of them.
struct Items {
    explicit Items(std::size_t count)
        : list(generateItems(count)), index(*makeSearchIndex(list)), text(*makeSearchText(list)) {}

    ItemList list;
    SearchIndex index;
    SearchText text;
};

const Items& itemsOf(std::size_t count) {
    static std::map<std::size_t, Items> made;
    return made.try_emplace(count, count).first->second;
}

/// Joins and lower-cases every row as ASCII, into one arena of the right size.
std::size_t joinAndLower(const ItemList& items, std::size_t size) {
    ByteBuffer arena(size);
    char* out = arena.data();
    for (const ItemBlock& block : items.blocks())
        for (const ItemRow& row : block.rows)
            for (std::size_t column = 0; column < row.size(); ++column) {
                for (const char byte : block.value(row, column))
                    *out++ = static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
                *out++ = column + 1 < row.size() ? ' ' : '\n';
            }
    benchmark::DoNotOptimize(arena.data());
    return static_cast<std::size_t>(out - arena.data());
}

/// Floor: joining and ASCII-lowering every row.
void buildIndex(benchmark::State& state) {
    const Items& items = itemsOf(static_cast<std::size_t>(state.range(0)));
    const std::size_t size = items.text.text.size() + items.list.size() * 8;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measure([&] { benchmark::DoNotOptimize(joinAndLower(items.list, size)); },
                           [&] {
                               const auto index = makeSearchIndex(items.list);
                               benchmark::DoNotOptimize(&index);
                           });
}
BENCHMARK(buildIndex)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

/// Floor: one memchr pass over the searched text for a byte that is not in it.
void filter(benchmark::State& state, const char* query) {
    const Items& items = itemsOf(static_cast<std::size_t>(state.range(0)));
    const std::string_view text = items.text.text.view();
    std::size_t found = 0;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measure([&] { benchmark::DoNotOptimize(std::memchr(text.data(), 1, text.size())); },
                           [&] { found = items.index.matches(query).size(); });
    state.counters["found"] = static_cast<double>(found);
}

void registerFilters() {
    constexpr std::pair<const char*, const char*> queries[] = {
        {"filter/commonWord", commonWord},
        {"filter/wordInMostRows", "tool"},
        {"filter/rareWord", rareWord},
        {"filter/oneLetter", "z"},
        {"filter/twoLetters", "se"},
        {"filter/twoWords", "report browser"},
        {"filter/threeWords", "tool open wiki"},
        {"filter/hiragana", "しゃしん"},
        {"filter/absentWord", "qqqqxxxx"},
    };
    for (const auto& [name, query] : queries)
        benchmark::RegisterBenchmark(name, filter, query)
            ->Arg(100'000)
            ->Arg(1'000'000)
            ->UseManualTime()
            ->Iterations(31)
            ->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool registered = (registerFilters(), true);

} // namespace

} // namespace kavendra
