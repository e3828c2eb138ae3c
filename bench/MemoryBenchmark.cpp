#include "bench/MemoryBenchmark.h"

#include "bench/Generator.h"
#include "data/CSVReader.h"
#include "platform/TextDecoding.h"
#include "search/SearchIndex.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <utility>

namespace kavendra {

namespace {

std::size_t residentMemory() {
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

ByteBuffer readWhole(const std::string& path) {
    ByteBuffer bytes(std::filesystem::file_size(path));
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.capacity()));
    bytes.setSize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

/// Resident memory after loading, above the program with nothing loaded, against the size of the file. Each
/// measurement is a new process: in one that has worked before, freed memory would hide the cost.
void memory(benchmark::State& state) {
    const auto rows = static_cast<std::size_t>(state.range(0));
    const std::string path =
        std::filesystem::temp_directory_path() / ("kavendra-bench-" + std::to_string(getpid()) + ".csv");
    std::ofstream(path, std::ios::binary) << generateCSV(rows);
    const auto fileSize = static_cast<double>(std::filesystem::file_size(path));
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command = "'" + self + "' " + measureMemoryArgument + " '" + path + "'";

    std::size_t added = 0, items = 0;
    for (auto _ : state) {
        FILE* output = popen(command.c_str(), "r");
        if (!output || std::fscanf(output, "%zu %zu", &added, &items) != 2 || items != rows)
            state.SkipWithError("the measuring process failed");
        if (output)
            pclose(output);
    }
    std::filesystem::remove(path);
    state.counters["file_MB"] = fileSize / 1e6;
    state.counters["added_MB"] = static_cast<double>(added) / 1e6;
    state.counters["x_file"] = static_cast<double>(added) / fileSize;
}
BENCHMARK(memory)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int measureMemoryOf(const std::string& path) {
    const std::size_t before = residentMemory();
    auto text = decodeText(readWhole(path));
    if (!text)
        return 1;
    auto block = readCSVItems(std::move(*text), "a.csv", "a.csv", [](auto) {});
    if (!block)
        return 1;
    ItemList items;
    items.append(std::move(*block));
    const SearchIndex index(items);
    const std::size_t after = residentMemory();
    std::printf("%zu %zu\n", after - before, index.matches("").size());
    return 0;
}

} // namespace kavendra
