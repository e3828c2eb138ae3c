#include "app/ItemsLoad.h"
#include "bench/Comparison.h"
#include "bench/WorkbookGenerator.h"
#include "data/workbook/WorkbookReader.h"

#include <expat.h>
#include <unistd.h>
#include <zip.h>
#include <zlib.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

namespace {

constexpr int pieceSize = 64 * 1024;

void require(bool condition) {
    if (!condition)
        std::abort();
}

zip_t* openZip(std::string_view bytes) {
    zip_t* archive = zip_open_from_source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr),
                                          ZIP_RDONLY, nullptr);
    require(archive != nullptr);
    return archive;
}

/// Returns the compressed bytes of each entry of a workbook.
std::vector<std::string> packedEntries(std::string_view workbook) {
    zip_t* const archive = openZip(workbook);
    std::vector<std::string> entries;
    for (zip_int64_t index = 0; index < zip_get_num_entries(archive, 0); ++index) {
        zip_stat_t status;
        require(zip_stat_index(archive, static_cast<zip_uint64_t>(index), 0, &status) == 0);
        std::string bytes(status.comp_size, '\0');
        zip_file_t* const file =
            zip_fopen_index(archive, static_cast<zip_uint64_t>(index), ZIP_FL_COMPRESSED);
        require(file &&
                zip_fread(file, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size()));
        zip_fclose(file);
        entries.push_back(std::move(bytes));
    }
    zip_discard(archive);
    return entries;
}

/// Inflates the entries in pieces into the parser's buffer and parses them with empty handlers.
void inflateAndParse(const std::vector<std::string>& entries) {
    for (const std::string& entry : entries) {
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(parser, [](void*, const char*, const char**) {}, [](void*, const char*) {});
        XML_SetCharacterDataHandler(parser, [](void*, const char*, int) {});
        z_stream stream{};
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(entry.data()));
        stream.avail_in = static_cast<uInt>(entry.size());
        require(inflateInit2(&stream, -MAX_WBITS) == Z_OK);
        for (int state = Z_OK; state != Z_STREAM_END;) {
            stream.next_out = static_cast<Bytef*>(XML_GetBuffer(parser, pieceSize));
            stream.avail_out = pieceSize;
            state = inflate(&stream, Z_NO_FLUSH);
            require(state == Z_OK || state == Z_STREAM_END);
            const int length = pieceSize - static_cast<int>(stream.avail_out);
            require(XML_ParseBuffer(parser, length, state == Z_STREAM_END) == XML_STATUS_OK);
        }
        inflateEnd(&stream);
        XML_ParserFree(parser);
    }
}

std::size_t itemCount(std::string_view workbook) {
    const auto block = readWorkbookBytes(workbook, "a.xlsx", "a.xlsx").items;
    require(block.has_value());
    return block->rows.size();
}

/// Floor: zlib inflating the same entries in pieces of 64 KiB into expat with empty handlers.
void workbook(benchmark::State& state, WorkbookForm form) {
    const auto rows = static_cast<std::size_t>(state.range(0));
    const std::string bytes = generateWorkbook(rows, form);
    const std::vector<std::string> entries = packedEntries(bytes);
    std::size_t items = 0;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measureFloor([&] { inflateAndParse(entries); }, [&] { items = itemCount(bytes); });
    if (items != rows)
        state.SkipWithError("wrong number of items");
    state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}

/// Collects the texts of all cells of one workbook in the plain way.
struct CollectedCells {
    std::vector<std::string> sharedStrings;
    std::vector<std::vector<std::string>> rows;
    std::string text, type;
    bool isCapturing = false;

    void start(const char* name, const char** attributes) {
        if (std::strcmp(name, "row") == 0)
            rows.emplace_back();
        else if (std::strcmp(name, "c") == 0 || std::strcmp(name, "si") == 0) {
            text.clear();
            type.clear();
            for (; *attributes; attributes += 2)
                if (std::strcmp(*attributes, "t") == 0)
                    type = attributes[1];
        } else if (std::strcmp(name, "v") == 0 || std::strcmp(name, "t") == 0)
            isCapturing = true;
    }
    void end(const char* name) {
        if (std::strcmp(name, "si") == 0)
            sharedStrings.push_back(text);
        else if (std::strcmp(name, "c") == 0)
            rows.back().push_back(type == "s" ? sharedStrings[std::stoul(text)] : text);
        else if (std::strcmp(name, "v") == 0 || std::strcmp(name, "t") == 0)
            isCapturing = false;
    }
};

/// Reads a small workbook with only libzip and expat: inflates each part completely, then parses it.
std::size_t collectCells(std::string_view workbook) {
    zip_t* const archive = openZip(workbook);
    CollectedCells cells;
    for (const char* name : {"xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/sharedStrings.xml",
                             "xl/worksheets/sheet1.xml"}) {
        zip_stat_t status;
        require(zip_stat(archive, name, 0, &status) == 0);
        zip_file_t* const file = zip_fopen(archive, name, 0);
        std::string xml(status.size, '\0');
        require(zip_fread(file, xml.data(), xml.size()) == static_cast<zip_int64_t>(xml.size()));
        zip_fclose(file);
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, &cells);
        XML_SetElementHandler(
            parser,
            [](void* data, const char* element, const char** attributes) {
                static_cast<CollectedCells*>(data)->start(element, attributes);
            },
            [](void* data, const char* element) { static_cast<CollectedCells*>(data)->end(element); });
        XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int length) {
            if (auto& collected = *static_cast<CollectedCells*>(data); collected.isCapturing)
                collected.text.append(text, static_cast<std::size_t>(length));
        });
        require(XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1) == XML_STATUS_OK);
        XML_ParserFree(parser);
    }
    zip_discard(archive);
    return cells.rows.size();
}

/// Floor: libzip and expat collecting the cells of the same workbooks in the plain way.
void smallWorkbooks(benchmark::State& state) {
    constexpr std::size_t rows = 50;
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::string> workbooks(count, generateWorkbook(rows, WorkbookForm::spreadsheetProgram));
    std::size_t collected = 0, items = 0;
    Comparison comparison(state);
    for (auto _ : state)
        comparison.measureFloor(
            [&] {
                for (const std::string& workbook : workbooks)
                    collected += collectCells(workbook);
            },
            [&] {
                for (const std::string& workbook : workbooks)
                    items += itemCount(workbook);
            });
    if (items + count * static_cast<std::size_t>(state.iterations()) != collected)
        state.SkipWithError("wrong number of items");
}
BENCHMARK(smallWorkbooks)->Arg(200)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

/// A load of workbooks. Plain: reading one after the other.
void workbookDirectory(benchmark::State& state) {
    constexpr std::size_t rows = 20'000;
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::filesystem::path directory =
        std::filesystem::temp_directory_path() / ("kavendra-bench-" + std::to_string(getpid()));
    std::filesystem::create_directory(directory);
    const std::string bytes = generateWorkbook(rows, WorkbookForm::spreadsheetProgram);
    for (std::size_t number = 0; number < count; ++number)
        std::ofstream(directory / (std::to_string(number) + ".xlsx"), std::ios::binary) << bytes;

    std::size_t loaded = 0, read = 0;
    Comparison comparison(state, Clock::wall);
    for (auto _ : state)
        comparison.measurePlain(
            [&] {
                ItemList items;
                for (const auto& entry : std::filesystem::directory_iterator(directory))
                    items.append(*readWorkbookItems(dataFileAt(entry.path()), "a.xlsx").items);
                read = makeSearchIndex(items)->matches("").size();
            },
            [&] {
                const ItemsLoadRequest request{
                    .dataDirectory = directory, .includeBuiltinItems = false, .builtinFile = {}};
                loaded = loadItems(request).items->index.matches("").size();
            });
    if (loaded != count * rows || read != loaded)
        state.SkipWithError("wrong number of items");
    std::filesystem::remove_all(directory);
}
BENCHMARK(workbookDirectory)->Arg(20)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void registerWorkbooks() {
    constexpr std::pair<const char*, WorkbookForm> forms[] = {
        {"workbook/spreadsheetProgram", WorkbookForm::spreadsheetProgram},
        {"workbook/inlineStrings", WorkbookForm::inlineStrings},
        {"workbook/byHand", WorkbookForm::byHand},
    };
    for (const auto& [name, form] : forms)
        benchmark::RegisterBenchmark(name, workbook, form)
            ->Arg(100'000)
            ->UseManualTime()
            ->Iterations(15)
            ->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool registered = (registerWorkbooks(), true);

} // namespace

} // namespace kavendra
