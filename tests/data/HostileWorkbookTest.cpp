#include "data/WorkbookLimits.h"
#include "tests/TemporaryDirectory.h"
#include "tests/data/WorkbookReading.h"
#include "tests/support/ResourceUse.h"
#include "tests/support/WorkbookWriter.h"

#include <functional>
#include <random>

#ifdef __SANITIZE_ADDRESS__
/// Freed memory that the sanitizer holds back would count as used.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}
#endif

namespace kavendra {

namespace {

using workbookLimits::mebibyte;

constexpr double maximumSeconds = 1;
constexpr std::size_t maximumMemory = 256 * mebibyte;

const std::string sheetName = "xl/worksheets/sheet1.xml";
const std::string sheetRows = headerRow() + inlineRow({"a", "b", "c", "d"});

struct Case {
    const char* name;
    std::function<std::string()> workbook;
    std::string failure; ///< what stands behind "Invalid Excel format: book.xlsx: ", or a whole message
};

/// Reads what was made to harm and expects the failure, soon and without much memory.
void expectHarmless(const Case& c) {
    SCOPED_TRACE(c.name);
    const std::string bytes = c.workbook();
    WorkbookReading reading;
    const ResourceUse use = measureResources([&] { reading = readWorkbook(bytes); });
    const bool isWhole = c.failure.starts_with("Excel");
    EXPECT_EQ(reading.failure, isWhole ? c.failure : "Invalid Excel format: book.xlsx: " + c.failure);
    EXPECT_LT(use.seconds, maximumSeconds);
    EXPECT_LT(use.memory, maximumMemory);
    testing::Test::RecordProperty(c.name, std::to_string(use.seconds) + " s, " +
                                              std::to_string(use.memory / mebibyte) + " MiB");
}

/// A workbook of one sheet, with the entry of the sheet changed.
std::string withSheetEntry(const std::function<void(ZipEntry&)>& change) {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({sheetRows}));
    for (ZipEntry& entry : entries)
        if (entry.name == sheetName)
            change(entry);
    return makeZip(entries);
}

/// A workbook of one sheet whose XML is that; stored, so that the file is as long.
std::string withSheetXML(std::string xml, bool isStored = false) {
    return withSheetEntry([&](ZipEntry& entry) {
        entry.content = std::move(xml);
        entry.isStored = isStored;
    });
}

std::string withSheetRows(const std::string& rows, const std::string& sharedStrings = {}) {
    return makeZip(zipEntries(workbookParts({rows}, sharedStrings)));
}

std::string withPart(const std::string& name, const std::string& content) {
    WorkbookParts parts = workbookParts({sheetRows});
    parts[name] = content;
    return makeZip(zipEntries(parts));
}

std::string withTarget(const std::string& target) {
    WorkbookParts parts = workbookParts({sheetRows});
    std::string& relationships = parts["xl/_rels/workbook.xml.rels"];
    const std::string usual = "worksheets/sheet1.xml";
    relationships.replace(relationships.find(usual), usual.size(), target);
    return makeZip(zipEntries(parts));
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t count = 0; count < times; ++count)
        result += text;
    return result;
}

/// Spaces in front of the XML, two gigabytes of them, and a header that says `size`.
std::string inflatingTo2GiB(std::uint32_t size) {
    return withSheetEntry([&](ZipEntry& entry) {
        entry.packed = deflatedRepetition(std::string(mebibyte, ' '), 2047);
        entry.size = size;
    });
}

/// A stored entry whose data hold the whole entry of the sheet: the list names both.
std::string overlapping() {
    WorkbookParts parts = workbookParts({sheetRows});
    const ZipEntry sheet{.name = sheetName, .content = parts[sheetName], .isStored = true};
    parts.erase(sheetName);
    std::vector<ZipEntry> entries = zipEntries(parts);
    entries.push_back({.name = "xl/media/a.png", .content = zipLocalEntry(sheet), .isStored = true});
    std::string archive, list;
    for (const ZipEntry& entry : entries) {
        list += zipListedEntry(entry, archive.size());
        archive += zipLocalEntry(entry);
    }
    list += zipListedEntry(sheet, archive.size() - zipLocalEntry(sheet).size());
    const std::string end = zipEndRecord(entries.size() + 1, list.size(), archive.size());
    return archive + list + end;
}

std::string with100000Entries() {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({sheetRows}));
    for (int number = 0; number < 100'000; ++number)
        entries.push_back({.name = std::to_string(number), .content = "", .isStored = true});
    return makeZip(entries);
}

std::string withEntryTwice(const std::string& name) {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({sheetRows}));
    entries.push_back({.name = name, .content = "<worksheet/>"});
    return makeZip(entries);
}

/// Empty elements, each with a name of its own.
std::string manyNames(std::size_t count) {
    std::string xml = "<worksheet>";
    std::mt19937 random(1);
    for (std::size_t index = 0; index < count; ++index)
        xml += "<n" + std::to_string(random()) + "/>";
    return xml + "</worksheet>";
}

} // namespace

TEST(HostileWorkbook, archivesFail) {
    const std::string part = sheetName + ": ";
    const Case cases[] = {
        {"empty", [] { return std::string(); }, "missing xl/workbook.xml"},
        {"lock file", [] { return "\x05peter" + std::string(159, ' '); }, "Not a zip archive"},
        {"older Excel format", [] { return "\xD0\xCF\x11\xE0" + std::string(4096, '\0'); },
         "Not a zip archive"},
        {"wrong checksum", [] { return withSheetEntry([](ZipEntry& e) { e.checksum = 1; }); },
         part + "CRC error"},
        {"encrypted", [] { return withSheetEntry([](ZipEntry& e) { e.flags = 1; }); }, part + "encrypted"},
        {"packed in another way", [] { return withSheetEntry([](ZipEntry& e) { e.method = 14; }); },
         part + "unknown compression method"},
        {"shorter than it says", [] { return withSheetEntry([](ZipEntry& e) { e.size = 10'000'000; }); },
         part + "not as long as the archive says"},
        {"longer than it says", [] { return withSheetEntry([](ZipEntry& e) { e.size = 10; }); },
         part + "not as long as the archive says"},
        {"says four gigabytes", [] { return withSheetEntry([](ZipEntry& e) { e.size = 0xFFFFFFFE; }); },
         part + "too large"},
        {"inflates to two gigabytes", [] { return inflatingTo2GiB(2047 * mebibyte); }, part + "too large"},
        {"inflates to two gigabytes and hides it", [] { return inflatingTo2GiB(mebibyte); },
         part + "not as long as the archive says"},
        {"overlapping entries", overlapping, "entries overlap"},
        {"100,000 entries", with100000Entries, "too many entries"},
        {"two sheets of one name", [] { return withEntryTwice(sheetName); }, "File already exists"},
        {"two other entries of one name", [] { return withEntryTwice("xl/workbook.xml"); },
         "File already exists"},
        {"a name that is no UTF-8", [] { return withPart("xl/\xFF\xFE.xml", "x"); },
         "failed to read archive entries"},
        {"a target above the archive", [] { return withTarget("../../../etc/passwd"); },
         "missing xl/../../../etc/passwd"},
        {"a target with wildcards", [] { return withTarget("worksheets/*.xml"); },
         "missing xl/worksheets/*.xml"},
        {"the workbook as its own sheet", [] { return withTarget("workbook.xml"); },
         "xl/workbook.xml: used twice"},
        {"the relationships as a sheet", [] { return withTarget("/xl/_rels/workbook.xml.rels"); },
         "xl/_rels/workbook.xml.rels: used twice"},
    };
    for (const Case& c : cases)
        expectHarmless(c);
}

TEST(HostileWorkbook, entryNamesLeadNowhereElse) {
    WorkbookParts parts = workbookParts({sheetRows});
    for (const char* name :
         {"../../etc/passwd", "/etc/passwd", "xl/*", "xl/worksheets/[a-z].xml", "C:\\a", "a\nb"})
        parts[name] = "x";
    EXPECT_EQ(readWorkbook(makeZip(zipEntries(parts))).items, std::vector<std::string>{"a|b|c|d"});
}

TEST(HostileWorkbook, everyCutIsNoticed) {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({sheetRows + repeated(inlineRow({"x"}), 100)}));
    for (ZipEntry& entry : entries)
        entry.isStored = true;
    const std::string whole = makeZip(entries);
    ASSERT_EQ(readWorkbook(whole).failure, "");
    for (std::size_t size = 0; size < whole.size(); size += 64)
        EXPECT_TRUE(
            readWorkbook(whole.substr(0, size)).failure.starts_with("Invalid Excel format: book.xlsx: "))
            << size;
}

TEST(HostileWorkbook, partsFail) {
    const std::string part = sheetName + ": ";
    const std::string doctype = "document type declarations are not allowed";
    const std::string laughs = "<!DOCTYPE a [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
                               "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">]><a>&c;&c;&c;</a>";
    const Case cases[] = {
        {"billion laughs", [&] { return withSheetXML(laughs); }, part + doctype},
        {"external entity",
         [] { return withSheetXML("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><a>&x;</a>"); },
         part + doctype},
        {"document type in the workbook", [] { return withPart("xl/workbook.xml", "<!DOCTYPE a><a/>"); },
         "xl/workbook.xml: " + doctype},
        {"document type in the relationships",
         [] { return withPart("xl/_rels/workbook.xml.rels", "<!DOCTYPE a><a/>"); },
         "xl/_rels/workbook.xml.rels: " + doctype},
        {"document type in the strings", [] { return withPart("xl/sharedStrings.xml", "<!DOCTYPE a><a/>"); },
         "xl/sharedStrings.xml: " + doctype},
        {"undefined entity", [] { return withSheetXML("<a>&x;</a>"); }, part + "undefined entity"},
        {"invalid UTF-8", [] { return withSheetXML("<a>\xED\xA0\x80</a>"); },
         part + "not well-formed (invalid token)"},
        {"comment of 20 MB",
         [] { return withSheetXML("<a><!--" + std::string(20'000'000, 'x') + "--></a>", true); },
         part + "a tag or comment is too long"},
        {"unfinished comment", [] { return withSheetXML("<!--" + std::string(15'000'000, '-')); },
         part + "not well-formed (invalid token)"},
        {"attribute of 50 MB",
         [] { return withSheetXML("<a b=\"" + std::string(50'000'000, 'x') + "\"/>", true); },
         part + "a tag or comment is too long"},
        {"attribute of 50 MB, packed",
         [] { return withSheetXML("<a b=\"" + std::string(50'000'000, 'x') + "\"/>"); }, part + "too large"},
        {"100,000 levels", [] { return withSheetXML(repeated("<a>", 100'000)); },
         part + "elements nested too deeply"},
        {"a million names", [] { return withSheetXML(manyNames(1'000'000)); }, part + "out of memory"},
        {"column of ten letters", [] { return withSheetRows("<row><c r=\"ABCDEFGHIJ1\"/></row>"); },
         part + "a cell stands beyond the last column"},
        {"too many rows", [] { return withSheetRows(repeated("<row/>", workbookLimits::rows + 1)); },
         part + "too many rows"},
        {"a cell of 300,000 letters", [] { return withSheetRows(inlineRow({std::string(300'000, 'x')})); },
         part + "a cell is too long"},
        {"a shared string of 300,000 letters",
         [] { return withSheetRows("", "<si><t>" + std::string(300'000, 'x') + "</t></si>"); },
         "xl/sharedStrings.xml: a shared string is too long"},
        {"a long string in every row",
         [] {
             const std::string row = "<row><c r=\"A1\" t=\"s\"><v>0</v></c></row>";
             return withSheetRows(headerRow() + repeated(row, 3000),
                                  "<si><t>" + std::string(100'000, 'x') + "</t></si>");
         },
         part + "items with too much text"},
        {"a long string in every column of the header",
         [] {
             std::string row = headerRow();
             row.replace(row.rfind("</row>"), 6, "<c r=\"F1\" t=\"s\"><v>0</v></c>");
             std::string names;
             for (char letter = 'A'; letter <= 'Z'; ++letter)
                 for (char second = 'A'; second <= 'Z'; ++second)
                     names += std::string("<c r=\"") + letter + second + "1\" t=\"s\"><v>0</v></c>";
             return withSheetRows(row + names + "</row>",
                                  "<si><t>" + std::string(100'000, 'x') + "</t></si>");
         },
         part + "a header is too long"},
        {"too many sheets",
         [] {
             return withPart("xl/workbook.xml",
                             "<w>" + repeated("<sheet name=\"a\" r:id=\"b\"/>", workbookLimits::entries + 1) +
                                 "</w>");
         },
         "xl/workbook.xml: too many sheets"},
        {"the last column in every row",
         [] { return withSheetRows(repeated("<row><c r=\"XFD1\"><v>1</v></c></row>", 300'000)); },
         "Excel workbook has no supported sheet: book.xlsx"},
        {"index of 20 digits",
         [] {
             return withSheetRows("<row><c r=\"A1\" t=\"s\"><v>18446744073709551616</v></c></row>", "<si/>");
         },
         "Excel workbook has no supported sheet: book.xlsx"},
    };
    for (const Case& c : cases)
        expectHarmless(c);
}

TEST(HostileWorkbook, theLastColumnInEveryRowCostsNothing) {
    const std::string row = "<row><c r=\"A1\"><v>1</v></c><c r=\"XFD1\"><v>1</v></c></row>";
    const std::string bytes = withSheetRows(headerRow() + repeated(row, 200'000));
    WorkbookReading reading;
    std::size_t items = 0;
    const ResourceUse use = measureResources([&] {
        const auto block = readWorkbookBytes(bytes, "book.xlsx", "source", [](auto) {});
        items = block ? block->rows.size() : 0;
    });
    EXPECT_EQ(items, 200'000U);
    EXPECT_LT(use.memory, 16 * mebibyte);
}

} // namespace kavendra
