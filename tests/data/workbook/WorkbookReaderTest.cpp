#include "data/workbook/ExcelWorksheetParser.h"
#include "data/workbook/WorkbookLimits.h"
#include "tests/data/Reading.h"
#include "tests/support/WorkbookWriter.h"

namespace kavendra {

namespace {

const std::string noSupportedSheet = "Excel workbook has no supported sheet: book.xlsx";

Reading readParts(const WorkbookParts& parts) {
    return readWorkbook(makeWorkbook(parts));
}

std::string cell(const std::string& reference, const std::string& text) {
    return "<c r=\"" + reference + "\" t=\"str\"><v>" + text + "</v></c>";
}

} // namespace

TEST(ColumnIndex, readsTheLettersAtTheStart) {
    const std::pair<const char*, int> cases[] = {
        {"A1", 1}, {"Z9", 26},  {"AA1", 27}, {"b7", 2}, {"XFD1048576", 16384}, {"aB", 28}, {"7", 0},
        {"", 0},   {"$A$1", 0}, {"[1", 0},   {"@", 0}};
    for (const auto& [reference, column] : cases)
        EXPECT_EQ(columnIndex(reference), column) << reference;
    EXPECT_GT(columnIndex("ABCDEFGHIJ1"), workbookLimits::columns);
}

TEST(WorkbookReader, findsTheHeaderAndMapsTheRowsBelowIt) {
    const std::string names = "Title | Command | Params | Keywords";
    const std::string notFound = "not found in first 5x5";
    const std::string fourRows = "<row/><row/><row/><row/>";
    const std::string item = inlineRow({"a", "b", "c", "d"});
    const std::string beyond = cell("XFE1", "Title") + cell("ABCDEFGHIJ1", "x");
    const auto withCells = [&](std::string row) { return row.insert(row.rfind("</row>"), beyond); };
    // The content of the sheet, its items, and the header in the log.
    const std::tuple<const char*, std::string, Lines, std::string> cases[] = {
        {"cells beyond the last column are dropped",
         withCells(inlineRow({"above"})) + withCells(headerRow()) + withCells(inlineRow({"a"})),
         {"a|||"},
         names},
        {"header at B3, blank rows before it do not count by number",
         "<row/><row r=\"9\">" + cell("B9", "x") + "</row>" +
             inlineRow({"left", " Title\n", "Command", "Params", "Keywords"}) + "<row>" + cell("A4", "left") +
             cell("C4", "b") + "</row>",
         {"|b||"},
         names},
        {"header in row 5, column E",
         fourRows + "<row>" + cell("E1", "Title") + cell("H1", "Command") + cell("F1", "Keywords") +
             cell("I1", "Params") + "</row><row>" + cell("F1", "k") + cell("H1", "c") + "</row>",
         {"|c||k"},
         "Title | Keywords |  | Command | Params"},
        {"header in row 6", fourRows + "<row/>" + headerRow() + item, {}, notFound},
        {"header in column F", "<row>" + cell("F1", "Title") + "</row>", {}, notFound},
        {"names are exact", inlineRow({"title", "Command", "Params", "Keywords"}), {}, notFound},
        {"Title is second: Command is lost",
         inlineRow({"Command", "Title", "Params", "Keywords"}) + item,
         {},
         "Title | Params | Keywords"},
        {"only the first Title row counts", inlineRow({"Title"}) + headerRow() + item, {}, "Title"},
        {"the first of equal names, a short row",
         inlineRow({"Title", "Title", "", "", "Command", "Params", "Keywords"}) +
             inlineRow({"a", "x", "x", "x", "b", "c", "d"}) + inlineRow({"e"}),
         {"a|b|c|d", "e|||"},
         "Title | Title |  |  | Command | Params | Keywords"},
        {"rows without text in the four columns are skipped",
         inlineRow({"Title", "Command", "Params", "Keywords", "Note"}) + "<row/>" +
             inlineRow({"", "", " \n", "", "note"}) + inlineRow({"", "", "", "k"}),
         {"|||k"},
         names + " | Note"},
        {"texts are trimmed, also of spaces that are not ASCII",
         headerRow() + inlineRow({"\u3000 a b\u00A0", "\t&#13;b", " ", "語"}),
         {"a b|b||語"},
         names},
    };
    for (const auto& [name, sheet, items, header] : cases) {
        SCOPED_TRACE(name);
        const Reading reading = readParts(workbookParts({sheet}));
        EXPECT_EQ(reading.items, items);
        EXPECT_EQ(reading.log, Lines{"Excel headers (book.xlsx / Sheet1): " + header});
        EXPECT_EQ(reading.failure, items.empty() ? noSupportedSheet : "");
    }
}

TEST(WorkbookReader, readsCellsAsStored) {
    const auto shared = [](const std::string& index) {
        return "<c r=\"B1\" t=\"s\"><v>" + index + "</v></c>";
    };
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"number", "<c r=\"B1\"><v>42</v></c>", "42"},
        {"boolean", "<c r=\"B1\" t=\"b\"><v>1</v></c>", "1"},
        {"formula", "<c r=\"B1\" t=\"str\"><f>A1</f><v>result</v></c>", "result"},
        {"error", "<c r=\"B1\" t=\"e\"><v>#REF!</v></c>", "#REF!"},
        {"references to characters", "<c r=\"B1\"><v>a&amp;b&#x8A9E;</v></c>", "a&b語"},
        {"inline runs", "<c r=\"B1\" t=\"inlineStr\"><is><r><t>a</t></r><r><t>b</t></r></is></c>", "ab"},
        {"inline text in a cell of another type", "<c r=\"B1\"><is><t>a</t></is></c>", ""},
        {"shared", shared("1"), "one"},
        {"shared, signed", shared("+01"), "one"},
        {"shared, minus zero", shared("-0"), "zero"},
        {"shared, runs and reading joined", shared("2"), "漢字kanji"},
        {"shared, negative", shared("-1"), ""},
        {"shared, beyond the table", shared("3"), ""},
        {"shared, 20 digits", shared("18446744073709551616"), ""},
        {"shared, with a space", shared(" 1"), ""},
        {"shared, no number", shared("+") + "<c r=\"A1\" t=\"s\"><v/></c>", ""},
        {"later cell of the column", cell("B1", "a") + cell("B1", "b"), "b"},
        {"later empty cell of the column", cell("B1", "a") + "<c r=\"B1\"/>", ""},
        {"no reference", "<c><v>a</v></c>", ""},
        {"reference without letters", "<c r=\"1\"><v>a</v></c>", ""},
        {"elements with a prefix are others", "<x:c xmlns:x=\"u\" r=\"B1\"><x:v>a</x:v></x:c>", ""},
        {"any order of columns", cell("D1", "d") + cell("b1", "b"), "b"},
    };
    const std::string sharedStrings = "<si><t>zero</t></si><si><t xml:space=\"preserve\"> one </t></si>"
                                      "<si><r><t>漢</t></r><r><rPr><b/></rPr><t>字</t></r>"
                                      "<rPh sb=\"0\" eb=\"2\"><t>kanji</t></rPh></si>";
    for (const auto& [name, cellInB, value] : cases) {
        SCOPED_TRACE(name);
        const std::string sheet = headerRow() + "<row>" + cellInB + cell("C1", "c") + "</row>";
        const Reading reading = readParts(workbookParts({sheet}, sharedStrings));
        ASSERT_EQ(reading.items.size(), 1U) << reading.failure;
        EXPECT_EQ(reading.items[0].substr(0, reading.items[0].rfind('|')), "|" + value + "|c");
    }
}

TEST(WorkbookReader, readsTheSheetsInTheOrderOfTheWorkbook) {
    WorkbookParts parts = workbookParts({headerRow() + inlineRow({"1"}), inlineRow({"Title", "Command"}),
                                         "<row/>", headerRow() + inlineRow({"4"}), headerRow()});
    std::string& workbook = parts["xl/workbook.xml"];
    workbook.insert(
        workbook.find("<sheet name"),
        "<sheet name=\"Chart\" r:id=\"chart\"/><sheet name=\"Nowhere\" r:id=\"rId9\"/>"
        "<sheet name=\"Copy\" r:id=\"rId1\"/><sheet r:id=\"rId1\"/><sheet name=\"x\" id=\"rId1\"/>"
        "<sheet name=\"Last\" r:id=\"last\"/>");
    std::string& relationships = parts["xl/_rels/workbook.xml.rels"];
    relationships.insert(relationships.rfind("</"),
                         "<Relationship Id=\"chart\" Type=\"x/chartsheet\" Target=\"chart.xml\"/>"
                         "<Relationship Id=\"rId9\" Type=\"x/worksheet\"/>"
                         "<Relationship Id=\"last\" Type=\"x/worksheet\" Target=\"nowhere.xml\"/>"
                         "<Relationship Id=\"last\" Type=\"x/worksheet\" Target=\"/other/a.xml\"/>");
    parts["other/a.xml"] = "<worksheet>" + headerRow() + inlineRow({"first"}) + "</worksheet>";
    const Reading reading = readParts(parts);
    EXPECT_EQ(reading.failure, "");
    EXPECT_EQ(reading.items, (Lines{"1|||", "first|||", "1|||", "4|||"}));
    const std::string names = "Title | Command | Params | Keywords";
    EXPECT_EQ(reading.log, (Lines{"Excel headers (book.xlsx / Copy): " + names,
                                  "Excel headers (book.xlsx / Last): " + names,
                                  "Excel headers (book.xlsx / Sheet1): " + names,
                                  "Excel headers (book.xlsx / Sheet2): Title | Command",
                                  "Excel headers (book.xlsx / Sheet3): not found in first 5x5",
                                  "Excel headers (book.xlsx / Sheet4): " + names,
                                  "Excel headers (book.xlsx / Sheet5): " + names}));
}

TEST(WorkbookReader, readsTheLastOfEntriesWithTheSameName) {
    std::vector<ZipEntry> entries = zipEntries(workbookParts({headerRow() + inlineRow({"new"})}));
    const std::string old = workbookParts({headerRow() + inlineRow({"old"})})["xl/worksheets/sheet1.xml"];
    entries.insert(entries.begin(), {{.name = "xl/worksheets/sheet1.xml", .content = old},
                                     {.name = "docProps/app.xml", .content = "one"},
                                     {.name = "docProps/app.xml", .content = "two"}});
    const Reading reading = readWorkbook(makeZip(entries));
    EXPECT_EQ(reading.failure, "");
    EXPECT_EQ(reading.items, Lines{"new|||"});
}

TEST(WorkbookReader, namesThePartThatIsMissingOrDoesNotParse) {
    const std::string sharedStrings = "<si><t>a</t></si>";
    const WorkbookParts whole = workbookParts({headerRow()}, sharedStrings);
    ASSERT_EQ(readParts(whole).failure, "");
    for (const auto& [name, content] : whole) {
        SCOPED_TRACE(name);
        WorkbookParts parts = whole;
        parts[name] = "";
        EXPECT_EQ(readParts(parts).failure, "Invalid Excel format: book.xlsx: missing " + name);
        parts.erase(name);
        EXPECT_EQ(readParts(parts).failure,
                  name == "xl/sharedStrings.xml" ? "" : "Invalid Excel format: book.xlsx: missing " + name);
        parts = whole;
        parts[name].pop_back();
        const Reading cut = readParts(parts);
        EXPECT_TRUE(cut.failure.starts_with("Invalid Excel format: book.xlsx: " + name + ": "))
            << cut.failure;
        EXPECT_TRUE(cut.log.empty());
    }
    EXPECT_EQ(readParts(workbookParts({})).failure, noSupportedSheet);
    EXPECT_EQ(readParts(workbookParts({headerRow()})).items, Lines{})
        << "a header alone is a supported sheet";
}

} // namespace kavendra
