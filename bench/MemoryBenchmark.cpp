#include "bench/MemoryBenchmark.h"

#include "base/TextDecoding.h"
#include "bench/Generator.h"
#include "bench/WorkbookGenerator.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "search/SearchIndex.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace kavendra {

namespace {

std::size_t residentMemory() {
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Returns the largest resident memory of this process so far, in bytes.
std::size_t peakResidentMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

ByteBuffer readWhole(const std::string& path) {
    ByteBuffer bytes(std::filesystem::file_size(path));
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.capacity()));
    bytes.setSize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

/// Bytes of resident memory that loading a file added, at the end and at the peak. Measured in a new process,
/// because memory that an earlier benchmark freed would hide the cost.
struct Measured {
    std::size_t added = 0, peak = 0, items = 0;
};

Measured measureInNewProcess(benchmark::State& state, const std::string& content, const char* extension) {
    const std::string path =
        std::filesystem::temp_directory_path() / ("kavendra-bench-" + std::to_string(getpid()) + extension);
    std::ofstream(path, std::ios::binary) << content;
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command = "'" + self + "' " + measureMemoryArgument + " '" + path + "'";
    Measured measured;
    FILE* output = popen(command.c_str(), "r");
    if (!output || std::fscanf(output, "%zu %zu %zu", &measured.added, &measured.peak, &measured.items) != 3)
        state.SkipWithError("the measuring process failed");
    if (output)
        pclose(output);
    std::filesystem::remove(path);
    return measured;
}

/// Resident memory after loading a CSV file and creating its search index, divided by the size of the file.
void memory(benchmark::State& state) {
    const auto rows = static_cast<std::size_t>(state.range(0));
    const std::string csv = generateCSV(rows);
    Measured measured;
    for (auto _ : state)
        measured = measureInNewProcess(state, csv, ".csv");
    if (measured.items != rows)
        state.SkipWithError("wrong number of items");
    state.counters["file_MB"] = static_cast<double>(csv.size()) / 1e6;
    state.counters["added_MB"] = static_cast<double>(measured.added) / 1e6;
    state.counters["x_file"] = static_cast<double>(measured.added) / static_cast<double>(csv.size());
}
BENCHMARK(memory)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

std::size_t distinctTextSize(const ItemList& items) {
    std::unordered_set<std::string_view> texts;
    std::size_t size = 0;
    for (std::size_t index = 0; index < items.size(); ++index)
        for (std::size_t column = 0; column < requiredColumns.size(); ++column)
            if (texts.insert(items.value(index, static_cast<ItemColumn>(column))).second)
                size += items.value(index, static_cast<ItemColumn>(column)).size();
    return size;
}

/// Peak of resident memory while reading a workbook, divided by the limit: 8 MiB and twice the size of the
/// distinct texts.
void workbookPeakMemory(benchmark::State& state, WorkbookForm form) {
    const auto rows = static_cast<std::size_t>(state.range(0));
    const std::size_t allowed = (8U << 20) + 2 * distinctTextSize(generateItems(rows));
    const std::string workbook = generateWorkbook(rows, form);
    Measured measured;
    for (auto _ : state)
        measured = measureInNewProcess(state, workbook, ".xlsx");
    if (measured.items != rows)
        state.SkipWithError("wrong number of items");
    state.counters["peak_MB"] = static_cast<double>(measured.peak) / 1e6;
    state.counters["allowed_MB"] = static_cast<double>(allowed) / 1e6;
    state.counters["x_allowed"] = static_cast<double>(measured.peak) / static_cast<double>(allowed);
}
BENCHMARK_CAPTURE(workbookPeakMemory, spreadsheetProgram, WorkbookForm::spreadsheetProgram)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(workbookPeakMemory, inlineStrings, WorkbookForm::inlineStrings)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

int report(std::size_t before, std::size_t items) {
    std::printf("%zu %zu %zu\n", residentMemory() - before, peakResidentMemory() - before, items);
    return 0;
}

int measureCSV(const std::string& path) {
    const std::size_t before = residentMemory();
    auto text = decodeText(readWhole(path));
    if (!text)
        return 1;
    auto block = readCSVItems(std::move(*text), "a.csv", "a.csv").items;
    if (!block)
        return 1;
    ItemList items;
    items.append(std::move(*block));
    const SearchIndex index = *makeSearchIndex(items);
    return report(before, index.matches("").size());
}

int measureWorkbook(const std::string& path) {
    const std::size_t before = residentMemory();
    const auto block = readWorkbookItems(dataFileAt(path), "a.xlsx").items;
    return block ? report(before, block->rows.size()) : 1;
}

} // namespace

int measureMemoryOf(const std::string& path) {
    return path.ends_with(".xlsx") ? measureWorkbook(path) : measureCSV(path);
}

} // namespace kavendra
