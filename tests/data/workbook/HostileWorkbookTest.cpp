#include "data/workbook/WorkbookLimits.h"
#include "tests/data/Reading.h"
#include "tests/support/ResourceUse.h"
#include "tests/support/WorkbookWriter.h"

#include <functional>
#include <random>

namespace kavendra {

namespace {

using workbookLimits::mebibyte;

constexpr double maximumTimesHonest = 20; // see honestSeconds()
constexpr std::size_t maximumMemory = 256 * mebibyte;

const std::string book = "xl/workbook.xml";
const std::string relations = "xl/_rels/workbook.xml.rels";
const std::string strings = "xl/sharedStrings.xml";
const std::string sheet = "xl/worksheets/sheet1.xml";
const std::string invalid = "Invalid Excel format: book.xlsx: ";
const std::string noSheet = "Excel workbook has no supported sheet: book.xlsx";
const std::string sheetRows = headerRow() + inlineRow({"a", "b", "c", "d"});

struct Case {
    const char* name;
    std::string workbook;
    std::string part;    ///< the part in the message, if any
    std::string failure; ///< what follows "Invalid Excel format: book.xlsx: ", or a whole message
};

/// A failure in the words of libzip or expat.
const std::string libraryText;

/// The processor time for an honest workbook of 10,000 rows. Limits are multiples of it, so that they hold on
/// any machine and under sanitizers.
double honestSeconds() {
    static const double seconds = [] {
        const std::string row = inlineRow({"a title", "https://example.com/", "", "some words"});
        const std::string workbook = makeWorkbook(workbookParts({headerRow() + repeated(row, 10'000)}));
        return measureResources([&] { EXPECT_EQ(readWorkbook(workbook).items.size(), 10'000U); }).seconds;
    }();
    return seconds;
}

/// Reads a hostile workbook and expects the failure within limits of time and memory.
void expectHarmless(const Case& c) {
    SCOPED_TRACE(c.name);
    Reading reading;
    const ResourceUse use = measureResources([&] { reading = readWorkbook(c.workbook); });
    const bool isWhole = c.failure.starts_with("Excel");
    const std::string expected = (isWhole ? "" : invalid) + c.part + (c.part.empty() ? "" : ": ") + c.failure;
    EXPECT_EQ(reading.failure.substr(0, expected.size()), expected);
    EXPECT_EQ(reading.failure.size() > expected.size(), c.failure == libraryText) << reading.failure;
    EXPECT_LT(use.seconds / honestSeconds(), maximumTimesHonest);
    EXPECT_LT(use.memory, maximumMemory);
}

std::string withSheetEntry(const std::function<void(ZipEntry&)>& change) {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({sheetRows}));
    for (ZipEntry& entry : entries)
        if (entry.name == sheet)
            change(entry);
    return makeZip(entries);
}

template <typename Field>
std::string withHeader(Field ZipEntry::* field, std::type_identity_t<Field> value) {
    return withSheetEntry([&](ZipEntry& entry) { entry.*field = value; });
}

std::string withSheetRows(const std::string& rows, const std::string& sharedStrings = {}) {
    return makeWorkbook(workbookParts({rows}, sharedStrings));
}

std::string withPart(const std::string& name, const std::string& content) {
    WorkbookParts parts = workbookParts({sheetRows});
    parts[name] = content;
    return makeWorkbook(parts);
}

/// A workbook with the sheet uncompressed, so that the file is as long as the sheet.
std::string withStoredSheet(const std::string& xml) {
    return withSheetEntry([&](ZipEntry& entry) {
        entry.content = xml;
        entry.isStored = true;
    });
}

std::string withTarget(const std::string& target) {
    std::string content = workbookParts({sheetRows})[relations];
    const std::string usual = "worksheets/sheet1.xml";
    content.replace(content.find(usual), usual.size(), target);
    return withPart(relations, content);
}

/// A sheet that inflates to two gigabytes of spaces, with `size` in its zip headers.
std::string inflatingTo2GiB(std::uint32_t size) {
    return withSheetEntry([&](ZipEntry& entry) {
        entry.packed = deflatedRepetition(std::string(mebibyte, ' '), 2047);
        entry.size = size;
    });
}

/// A stored entry whose data hold the whole entry of the sheet: the list names both.
std::string overlapping() {
    WorkbookParts parts = workbookParts({sheetRows});
    const ZipEntry inside{.name = sheet, .content = parts[sheet], .isStored = true};
    parts.erase(sheet);
    std::vector<ZipEntry> entries = zipEntries(parts);
    entries.push_back({.name = "xl/media/a.png", .content = zipLocalEntry(inside), .isStored = true});
    std::string archive, list;
    for (const ZipEntry& entry : entries) {
        list += zipListedEntry(entry, archive.size());
        archive += zipLocalEntry(entry);
    }
    list += zipListedEntry(inside, archive.size() - zipLocalEntry(inside).size());
    const std::string end = zipEndRecord(entries.size() + 1, list.size(), archive.size());
    return archive + list + end;
}

std::string withEntries(const std::vector<std::string>& names, const std::string& content,
                        const std::string& sheetXML = "") {
    WorkbookParts parts = workbookParts({sheetRows});
    if (!sheetXML.empty())
        parts[sheet] = sheetXML;
    std::vector<ZipEntry> entries = zipEntries(parts);
    for (const std::string& name : names)
        entries.push_back({.name = name, .content = content, .isStored = true});
    return makeZip(entries);
}

/// A directory with one entry listed many times, followed by many end records with that count.
std::string withEndRecords(std::size_t listed, std::size_t records, std::size_t count) {
    const ZipEntry entry{.name = "a", .content = "", .isStored = true};
    const std::string archive = zipLocalEntry(entry);
    const std::string list = repeated(zipListedEntry(entry, 0), listed);
    return archive + list + repeated(zipEndRecord(count, list.size(), archive.size()), records);
}

std::string withSheetNamed(std::size_t times, const std::string& rows) {
    WorkbookParts parts = workbookParts({rows});
    const std::string name = "<sheet name=\"a\" r:id=\"rId1\"/>";
    parts[book].insert(parts[book].find("<sheet "), repeated(name, times - 1));
    return makeWorkbook(parts);
}

/// Different names of entries or elements.
std::vector<std::string> names(std::size_t count) {
    std::vector<std::string> texts(count);
    for (std::mt19937 random(1); std::string & text : texts)
        text = "n" + std::to_string(random());
    return texts;
}

std::string elements(const std::vector<std::string>& names) {
    std::string xml = "<worksheet>";
    for (const std::string& name : names)
        xml += "<" + name + "/>";
    return xml + "</worksheet>";
}

std::string sharedCell(const std::string& column) {
    return "<c r=\"" + column + "1\" t=\"s\"><v>0</v></c>";
}

/// A header with 52 more columns, which all have the first shared string.
std::string wideHeader() {
    std::string row = headerRow();
    row.resize(row.rfind("</row>"));
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        row += sharedCell({'A', letter}) + sharedCell({'B', letter});
    return row + "</row>";
}

} // namespace

TEST(HostileWorkbook, rejectsArchives) {
    const std::string notAsLong = "not as long as the archive says";
    const Case cases[] = {
        {"empty", "", "", "missing xl/workbook.xml"},
        {"older Excel format", "\xD0\xCF\x11\xE0" + std::string(4096, '\0'), "", libraryText},
        {"wrong checksum", withHeader(&ZipEntry::checksum, 1), sheet, libraryText},
        {"encrypted", withHeader(&ZipEntry::flags, 1), sheet, "encrypted"},
        {"packed in another way", withHeader(&ZipEntry::method, 14), sheet, "unknown compression method"},
        {"shorter than it says", withHeader(&ZipEntry::size, 10'000'000), sheet, notAsLong},
        {"longer than it says", withHeader(&ZipEntry::size, 10), sheet, notAsLong},
        {"says four gigabytes", withHeader(&ZipEntry::size, 0xFFFFFFFE), sheet, "too large"},
        {"inflates to two gigabytes", inflatingTo2GiB(2047 * mebibyte), sheet, "too large"},
        {"inflates to two gigabytes and hides it", inflatingTo2GiB(mebibyte), sheet, notAsLong},
        {"overlapping entries", overlapping(), "", "entries overlap"},
        {"20,000 entries", withEntries(names(20'000), ""), "", "too many entries"},
        {"more entries than the end record says", withEndRecords(70'000, 1, 70'000 - 0x10000), "",
         "too many entries"},
        {"an end record after the other", withEndRecords(10'000, 300, 10'000), "", "too many entries"},
        {"a name that is no UTF-8", withPart("xl/\xFF\xFE.xml", "x"), "", "failed to read archive entries"},
        {"a target above the archive", withTarget("../../../etc/passwd"), "",
         "missing xl/../../../etc/passwd"},
        {"a target with wildcards", withTarget("worksheets/*.xml"), "", "missing xl/worksheets/*.xml"},
        {"the workbook as its own sheet", withTarget("workbook.xml"), "", noSheet},
        {"a large sheet a hundred times", withSheetNamed(100, std::string(mebibyte, ' ')), sheet,
         "too large"},
        {"an empty sheet 10,000 times", withSheetNamed(10'000, ""), "", noSheet},
    };
    for (const Case& c : cases)
        expectHarmless(c);
}

TEST(HostileWorkbook, rejectsTruncatedArchivesAndChangedBytesThatChangeItems) {
    const Lines items = {"a|b|c|d"};
    std::string bytes = withStoredSheet("<worksheet>" + sheetRows + "</worksheet>");
    ASSERT_EQ(readWorkbook(bytes).items, items);
    for (std::size_t position = 0; position < bytes.size(); ++position) {
        EXPECT_TRUE(readWorkbook(bytes.substr(0, position)).failure.starts_with(invalid)) << position;
        bytes[position] ^= 1;
        const Reading reading = readWorkbook(bytes);
        EXPECT_TRUE(!reading.failure.empty() || reading.items == items) << position;
        bytes[position] ^= 1;
    }
}

TEST(HostileWorkbook, rejectsParts) {
    const std::string doctype = "document type declarations are not allowed";
    const std::string tooLongToken = "a tag or comment is too long";
    const std::string laughs = "<!DOCTYPE a [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
                               "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">]><a>&c;&c;&c;</a>";
    const std::string empty = "<!DOCTYPE a><a/>";
    const std::string longAttribute = "<a b=\"" + std::string(50'000'000, 'x') + "\"/>";
    const std::string longComment = "<a><!--" + std::string(20'000'000, 'x') + "--></a>";
    const std::string longString = "<si><t>" + std::string(100'000, 'x') + "</t></si>";
    const std::string tooLongString = "<si><t>" + std::string(300'000, 'x') + "</t></si>";
    const std::string sheets = repeated("<sheet name=\"a\" r:id=\"b\"/>", workbookLimits::entries + 1);
    std::string relationships = "<Relationships>";
    for (std::size_t id = 0; id <= workbookLimits::entries; ++id)
        relationships += "<Relationship Id=\"" + std::to_string(id) + "\" Type=\"/worksheet\" Target=\"a\"/>";
    const Case cases[] = {
        {"billion laughs", withPart(sheet, laughs), sheet, doctype},
        {"document type in the strings", withPart(strings, empty), strings, doctype},
        {"undefined entity", withPart(sheet, "<a>&x;</a>"), sheet, libraryText},
        {"invalid UTF-8", withPart(sheet, "<a>\xED\xA0\x80</a>"), sheet, libraryText},
        {"comment of 20 MB", withStoredSheet(longComment), sheet, tooLongToken},
        {"unfinished comment", withPart(sheet, "<!--" + std::string(15'000'000, '-')), sheet, libraryText},
        {"attribute of 50 MB", withStoredSheet(longAttribute), sheet, tooLongToken},
        {"100,000 levels", withPart(sheet, repeated("<a>", 100'000)), sheet, "elements nested too deeply"},
        {"a million names", withPart(sheet, elements(names(1'000'000))), sheet, "out of memory"},
        {"too many rows", withSheetRows(repeated("<row/>", workbookLimits::rows + 1)), sheet,
         "too many rows"},
        {"a cell of 300,000 letters", withSheetRows(inlineRow({std::string(300'000, 'x')})), sheet,
         "a cell is too long"},
        {"a shared string of 300,000 letters", withSheetRows("", tooLongString), strings,
         "a shared string is too long"},
        {"a long string in every row",
         withSheetRows(headerRow() + repeated("<row>" + sharedCell("A") + "</row>", 3000), longString), sheet,
         "too much text for the size of the file"},
        {"text that the parser takes piece by piece",
         withEntries({"xl/media/a.png"}, std::string(500'000, 'x'),
                     "<worksheet>" + std::string(40 * mebibyte, '>') + "</worksheet>"),
         sheet, "too much XML for the size of the file"},
        {"a long string in every column of the header", withSheetRows(wideHeader(), longString), sheet,
         "a header is too long"},
        {"too many relationships", withPart(relations, relationships + "</Relationships>"), relations,
         "too many relationships"},
        {"too many sheets", withPart(book, "<w>" + sheets + "</w>"), book, "too many sheets"},
    };
    for (const Case& c : cases)
        expectHarmless(c);
}

TEST(HostileWorkbook, readsTheLastColumnInEveryRowInBoundedMemory) {
    const std::string row = "<row><c r=\"A1\"><v>1</v></c><c r=\"XFD1\"><v>1</v></c></row>";
    const std::string bytes = withSheetRows(headerRow() + repeated(row, 200'000));
    std::size_t items = 0;
    const ResourceUse use = measureResources([&] {
        const auto block = readWorkbookBytes(bytes, "book.xlsx", "source").items;
        items = block ? block->rows.size() : 0;
    });
    EXPECT_EQ(items, 200'000U);
    EXPECT_LT(use.memory, 16 * mebibyte);
}

} // namespace kavendra
