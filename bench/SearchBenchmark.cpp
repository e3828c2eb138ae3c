#include "bench/Comparison.h"
#include "bench/Generator.h"
#include "search/SearchIndex.h"
#include "tests/support/PlainSearch.h"

#include <cstring>
#include <map>

namespace kavendra {

namespace {

using Indexes = std::vector<std::uint32_t>;

/// Generated items with everything that the benchmarks search.
struct Items {
    explicit Items(std::size_t count)
        : list(generateItems(count)), text(std::move(makeSearchParts(list, count)->front())),
          frequencies(text.text.view()), index(*makeSearchIndex(list)),
          undivided(*makeSearchIndex(list, count)), plain(list) {}

    ItemList list;
    SearchText text;
    ByteFrequencies frequencies;
    SearchIndex index;
    SearchIndex undivided; ///< in one part, which is searched on one thread
    PlainSearch plain;
};

/// Returns the items of the benchmark's argument; they are made once for each count.
const Items& itemsOf(const benchmark::State& state) {
    static std::map<std::size_t, Items> made;
    const auto count = static_cast<std::size_t>(state.range(0));
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
    const Items& items = itemsOf(state);
    const std::size_t size = items.text.text.size() + items.list.size() * 8;
    Comparison comparison(state, Clock::wall);
    for (auto _ : state)
        comparison.measureFloor([&] { benchmark::DoNotOptimize(joinAndLower(items.list, size)); },
                                [&] { benchmark::DoNotOptimize(makeSearchIndex(items.list)); });
}
BENCHMARK(buildIndex)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

/// Plain: one folded std::string for each item. Freeing these leaves the allocator slower for what comes
/// next, so the comparison with the floor is separate.
void buildIndexBesidePlain(benchmark::State& state) {
    const Items& items = itemsOf(state);
    Comparison comparison(state, Clock::wall);
    for (auto _ : state)
        comparison.measurePlain([&] { benchmark::DoNotOptimize(PlainSearch(items.list)); },
                                [&] { benchmark::DoNotOptimize(makeSearchIndex(items.list)); });
}
BENCHMARK(buildIndexBesidePlain)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(9)
    ->Unit(benchmark::kMillisecond);

/// Returns items whose rows all have the same long Japanese texts, as a string table of a workbook allows.
ItemList itemsSharingTexts(std::size_t count) {
    constexpr std::string_view text = "ひらがなカタカナ会議資料予算プロジェクト";
    const TextSpan span{.offset = 0, .length = static_cast<std::uint32_t>(text.size())};
    ItemList items;
    items.append({.text = ByteBuffer(text),
                  .rows{count, {span, span, span, span}},
                  .source = "generated.xlsx",
                  .fileSize = count * 100});
    return items;
}

/// Folding a text that many rows share once. Plain: folding it for each row.
void buildIndexOfSharedTexts(benchmark::State& state) {
    const ItemList items = itemsSharingTexts(static_cast<std::size_t>(state.range(0)));
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measurePlain([&] { benchmark::DoNotOptimize(PlainSearch(items)); },
                                [&] { benchmark::DoNotOptimize(makeSearchIndex(items)); });
}
BENCHMARK(buildIndexOfSharedTexts)
    ->Arg(100'000)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

/// The whole search. Floor: one memchr pass over the searched text for a byte that is not in it. Plain:
/// PlainSearch.
void filter(benchmark::State& state, const char* query) {
    const Items& items = itemsOf(state);
    const std::string_view text = items.text.text.view();
    Indexes found, plainlyFound;
    Comparison comparison(state, Clock::wall);
    for (auto _ : state)
        comparison.measure([&] { benchmark::DoNotOptimize(std::memchr(text.data(), 1, text.size())); },
                           [&] { plainlyFound = items.plain.matches(query); },
                           [&] { found = items.index.matches(query); });
    if (found != plainlyFound)
        state.SkipWithError("the plain version finds other items");
    state.counters["found"] = static_cast<double>(found.size());
}

/// The times of one key, in turns.
struct KeyTimes {
    std::vector<double> own, plain;
};

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

/// Typing a sentence: each key searches the items that the one before has kept. Plain: each key searches all
/// items, in one part. Counters: the sum over all keys and the worst key, in milliseconds and, with x_, ours
/// / plain.
void typing(benchmark::State& state) {
    constexpr std::string_view sentence = "team wiki notes browser archive";
    const Items& items = itemsOf(state);
    std::vector<KeyTimes> keys(sentence.size());
    for (auto _ : state) {
        Indexes found = items.index.matches("");
        for (std::size_t key = 0; key < sentence.size(); ++key) {
            const EarlierSearch earlier{.searchText = sentence.substr(0, key), .found = found};
            const std::string_view text = sentence.substr(0, key + 1);
            Indexes plainlyFound, next;
            keys[key].plain.push_back(
                seconds(Clock::wall, [&] { plainlyFound = items.undivided.matches(text); }));
            keys[key].own.push_back(seconds(Clock::wall, [&] { next = items.index.matches(text, earlier); }));
            if (next != plainlyFound)
                state.SkipWithError("the plain version finds other items");
            found = std::move(next);
        }
    }
    double sum = 0, plainSum = 0, worst = 0, plainWorst = 0;
    for (const KeyTimes& key : keys) {
        sum += median(key.own);
        plainSum += median(key.plain);
        worst = std::max(worst, median(key.own));
        plainWorst = std::max(plainWorst, median(key.plain));
    }
    state.counters["sum_ms"] = sum * 1e3;
    state.counters["worst_ms"] = worst * 1e3;
    state.counters["x_sum"] = sum / plainSum;
    state.counters["x_worst"] = worst / plainWorst;
}
BENCHMARK(typing)->Arg(100'000)->Arg(1'000'000)->Iterations(15)->Unit(benchmark::kMillisecond);

/// Returns the items that contain the word, found by SubstringSearch and a binary search for the item of each
/// match.
Indexes matchesByBinarySearch(const Items& items, const char* word) {
    Indexes found;
    const std::vector<std::uint32_t>& starts = items.text.starts;
    SubstringSearch(word, items.frequencies).forEachMatch(items.text.text.view(), [&](std::size_t position) {
        const auto next = std::ranges::upper_bound(starts, position);
        found.push_back(static_cast<std::uint32_t>(next - starts.begin() - 1));
        return std::size_t{*next};
    });
    return found;
}

/// For one letter: the character mask; plain: a search of the text. For a longer word: following the matches
/// through the items; plain: a binary search among all items for each match.
void itemsOfMatches(benchmark::State& state, const char* word) {
    const Items& items = itemsOf(state);
    Indexes found, plainlyFound;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measurePlain([&] { plainlyFound = matchesByBinarySearch(items, word); },
                                [&] { found = items.index.matches(word); });
    if (found != plainlyFound)
        state.SkipWithError("the plain version finds other items");
}

std::size_t countByMemmem(std::string_view text, std::string_view word) {
    std::size_t count = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while ((at = static_cast<const char*>(
                memmem(at, static_cast<std::size_t>(end - at), word.data(), word.size())))) {
        ++count;
        ++at;
    }
    return count;
}

template <auto offsets = commonOffsets>
std::size_t count(std::string_view text, const SubstringSearch& search) {
    std::size_t count = 0;
    search.forEachMatch<offsets>(text, [&](std::size_t position) {
        ++count;
        return position + 1;
    });
    return count;
}

/// Measures counting all matches of a word with SubstringSearch beside `countPlainly(text, word)`.
void compareCounts(benchmark::State& state, const char* word, auto&& countPlainly) {
    const Items& items = itemsOf(state);
    const std::string_view text = items.text.text.view();
    const SubstringSearch search(word, items.frequencies);
    std::size_t found = 0, plainlyFound = 0;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measurePlain([&] { plainlyFound = countPlainly(text, word); },
                                [&] { found = count(text, search); });
    if (found != plainlyFound)
        state.SkipWithError("the plain version finds other matches");
}

/// Searching by the two rarest bytes with SSE2. Plain: memmem.
void substringSearch(benchmark::State& state, const char* word) {
    compareCounts(state, word, countByMemmem);
}

/// SSE2. Plain: the same search with a loop over bytes.
void sse2(benchmark::State& state, const char* word) {
    const SubstringSearch search(word, itemsOf(state).frequencies);
    compareCounts(state, word,
                  [&](std::string_view text, auto) { return count<commonOffsetsPlain>(text, search); });
}

/// Choosing the two bytes by their frequency. Plain: the first and the last byte.
void rarestBytes(benchmark::State& state, const char* word) {
    const SubstringSearch firstAndLast(word, ByteFrequencies());
    compareCounts(state, word, [&](std::string_view text, auto) { return count(text, firstAndLast); });
}

struct Query {
    const char* name;
    const char* text;
};

void registerQueries(const std::string& benchmark, void (*measure)(benchmark::State&, const char*),
                     const std::vector<Query>& queries, const std::vector<std::int64_t>& sizes = {100'000}) {
    for (const auto& [name, text] : queries)
        benchmark::RegisterBenchmark((benchmark + "/" + name).c_str(), measure, text)
            ->ArgsProduct({sizes})
            ->UseManualTime()
            ->Iterations(31)
            ->Unit(benchmark::kMillisecond);
}

void registerSearches() {
    const Query common{"commonWord", commonWord}, most{"wordInMostRows", "tool"}, rare{"rareWord", rareWord};
    const Query letter{"oneLetter", "z"}, letters{"twoLetters", "se"}, absent{"absentWord", "qqqqxxxx"};
    const Query commonEnds{"commonEnds", "archive"}, hiragana{"hiragana", "しゃしん"};
    registerQueries("filter", filter,
                    {common,
                     most,
                     rare,
                     letter,
                     letters,
                     {"twoWords", "report browser"},
                     {"threeWords", "tool open wiki"},
                     hiragana,
                     absent},
                    {100'000, 1'000'000});
    registerQueries("itemsOfMatches", itemsOfMatches, {letter, letters, common, most, rare});
    registerQueries("substringSearch", substringSearch, {letters, common, most, rare, hiragana, absent});
    registerQueries("sse2", sse2, {letters, common, most, rare});
    registerQueries("rarestBytes", rarestBytes, {common, most, rare, commonEnds});
}

[[maybe_unused]] const bool registered = (registerSearches(), true);

} // namespace

} // namespace kavendra
