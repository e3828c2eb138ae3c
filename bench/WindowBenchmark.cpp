#include "bench/Comparison.h"
#include "bench/Generator.h"
#include "ui/ItemTable.h"

#include <QApplication>

#include <map>

namespace kavendra {

namespace {

/// Two results of a search in the same items: all items, and every second one.
struct Keystrokes {
    explicit Keystrokes(std::size_t count) {
        ItemList list = generateItems(count);
        SearchIndex index = *makeSearchIndex(list);
        all.items = std::make_shared<const LoadedItems>(std::move(list), std::move(index));
        half.items = all.items;
        std::vector<std::uint32_t> every;
        std::vector<std::uint32_t> everySecond;
        for (std::uint32_t row = 0; row < count; ++row) {
            every.push_back(row);
            if (row % 2 == 1)
                everySecond.push_back(row);
        }
        all.filteredRows = std::make_shared<const std::vector<std::uint32_t>>(std::move(every));
        half.filteredRows = std::make_shared<const std::vector<std::uint32_t>>(std::move(everySecond));
        all.selectedItemID = all.items->list.id(0);
        half.selectedItemID = half.items->list.id(1);
    }

    ContentViewState all;
    ContentViewState half;
};

const Keystrokes& keystrokesOf(std::size_t count) {
    static std::map<std::size_t, Keystrokes> made;
    return made.try_emplace(count, count).first->second;
}

/// The table after a keystroke: replaces the rows and the selection and paints the visible cells. Floor: only
/// painting the visible cells.
void tableUpdate(benchmark::State& state) {
    const Keystrokes& keystrokes = keystrokesOf(static_cast<std::size_t>(state.range(0)));
    ItemTable table;
    table.onSelect = [](const std::optional<UUID>&) {};
    table.resize(960, 440);
    table.showState(keystrokes.all);
    table.show();
    QApplication::processEvents();
    bool isFiltered = false;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measureFloor([&] { table.viewport()->repaint(); },
                                [&] {
                                    isFiltered = !isFiltered;
                                    table.showState(isFiltered ? keystrokes.half : keystrokes.all);
                                    table.viewport()->repaint();
                                });
}
BENCHMARK(tableUpdate)
    ->Arg(1'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(51)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace kavendra
