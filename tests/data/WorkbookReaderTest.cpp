#include "data/ExcelWorksheetParser.h"
#include "data/WorkbookLimits.h"
#include "tests/data/WorkbookReading.h"
#include "tests/support/WorkbookWriter.h"

namespace kavendra {

namespace {

using Lines = std::vector<std::string>;

const std::string noSupportedSheet = "Excel workbook has no supported sheet: book.xlsx";

WorkbookReading readParts(const WorkbookParts& parts) {
    return readWorkbook(makeZip(zipEntries(parts)));
}

std::string cell(const std::string& reference, const std::string& text) {
    return "<c r=\"" + reference + "\" t=\"str\"><v>" + text + "</v></c>";
}

} // namespace

TEST(ColumnIndex, readsTheLettersAtTheStart) {
    struct Case {
        const char* reference;
        int column;
    };
    for (const Case& c :
         {Case{"A1", 1}, Case{"Z9", 26}, Case{"AA1", 27}, Case{"b7", 2}, Case{"XFD1048576", 16384},
          Case{"aB", 28}, Case{"7", 0}, Case{"", 0}, Case{"$A$1", 0}, Case{"[1", 0}, Case{"@", 0}})
        EXPECT_EQ(columnIndex(c.reference), c.column) << c.reference;
    EXPECT_GT(columnIndex("ABCDEFGHIJ1"), workbookLimits::columns);
}

TEST(WorkbookReader, findsTheHeaderAndMapsTheRowsBelowIt) {
    struct Case {
        const char* name;
        std::string sheet;
        Lines items;
        std::string header; ///< as it stands in the log
    };
    const std::string names = "Title | Command | Params | Keywords";
    const std::string notFound = "not found in first 5x5";
    const Case cases[] = {
        {"plain",
         headerRow() + inlineRow({"a", "b", "c", "d"}) + inlineRow({"e"}),
         {"a|b|c|d", "e|||"},
         names},
        {"header at B3, blank rows before it do not count by number",
         "<row/><row r=\"9\">" + cell("B9", "x") + "</row><row>" + cell("A3", "left") +
             cell("B3", " Title\n") + cell("C3", "Command") + cell("D3", "Params") + cell("E3", "Keywords") +
             "</row><row>" + cell("A4", "left") + cell("C4", "b") + "</row>",
         {"|b||"},
         names},
        {"header in row 5, column E",
         "<row/><row/><row/><row/><row>" + cell("E1", "Title") + cell("H1", "Command") +
             cell("F1", "Keywords") + cell("I1", "Params") + "</row><row>" + cell("F1", "k") +
             cell("H1", "c") + "</row>",
         {"|c||k"},
         "Title | Keywords |  | Command | Params"},
        {"header in row 6", "<row/><row/><row/><row/><row/>" + headerRow() + inlineRow({"a"}), {}, notFound},
        {"header in column F", "<row>" + cell("F1", "Title") + "</row>", {}, notFound},
        {"names are exact", inlineRow({"title", "Command", "Params", "Keywords"}), {}, notFound},
        {"Title is second: Command is lost",
         inlineRow({"Command", "Title", "Params", "Keywords"}) + inlineRow({"a", "b", "c", "d"}),
         {},
         "Title | Params | Keywords"},
        {"only the first Title row counts",
         inlineRow({"Title"}) + headerRow() + inlineRow({"a", "b", "c", "d"}),
         {},
         "Title"},
        {"of columns with the same name the first counts",
         inlineRow({"Title", "Title", "", "", "Command", "Params", "Keywords"}) +
             inlineRow({"a", "x", "x", "x", "b", "c", "d"}),
         {"a|b|c|d"},
         "Title | Title |  |  | Command | Params | Keywords"},
        {"rows without text in the four columns are skipped",
         inlineRow({"Title", "Command", "Params", "Keywords", "Note"}) + "<row/>" +
             inlineRow({"", "", " \n", "", "note"}) + inlineRow({"", "", "", "k"}),
         {"|||k"},
         names + " | Note"},
        {"texts are trimmed, also of spaces that are not ASCII",
         headerRow() + inlineRow({"\xE3\x80\x80 a b\xC2\xA0", "\t&#13;b", " ", "\xE8\xAA\x9E"}),
         {"a b|b||\xE8\xAA\x9E"},
         names},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const WorkbookReading reading = readParts(workbookParts({c.sheet}));
        EXPECT_EQ(reading.items, c.items);
        EXPECT_EQ(reading.log, Lines{"Excel headers (book.xlsx / Sheet1): " + c.header});
        EXPECT_EQ(reading.failure, c.items.empty() ? noSupportedSheet : "");
    }
}

TEST(WorkbookReader, takesCellsAsTheyAreStored) {
    struct Case {
        const char* name;
        std::string cell; ///< in column B
        std::string value;
    };
    const Case cases[] = {
        {"number", "<c r=\"B1\"><v>42</v></c>", "42"},
        {"boolean", "<c r=\"B1\" t=\"b\"><v>1</v></c>", "1"},
        {"formula", "<c r=\"B1\" t=\"str\"><f>A1</f><v>result</v></c>", "result"},
        {"error", "<c r=\"B1\" t=\"e\"><v>#REF!</v></c>", "#REF!"},
        {"references to characters", "<c r=\"B1\"><v>a&amp;b&#x8A9E;</v></c>", "a&b\xE8\xAA\x9E"},
        {"inline runs are joined", "<c r=\"B1\" t=\"inlineStr\"><is><r><t>a</t></r><r><t>b</t></r></is></c>",
         "ab"},
        {"inline text in a cell of another type", "<c r=\"B1\"><is><t>a</t></is></c>", ""},
        {"shared", "<c r=\"B1\" t=\"s\"><v>1</v></c>", "one"},
        {"shared, signed", "<c r=\"B1\" t=\"s\"><v>+01</v></c>", "one"},
        {"shared, minus zero", "<c r=\"B1\" t=\"s\"><v>-0</v></c>", "zero"},
        {"shared, runs and reading joined", "<c r=\"B1\" t=\"s\"><v>2</v></c>",
         "\xE6\xBC\xA2\xE5\xAD\x97kanji"},
        {"shared, negative", "<c r=\"B1\" t=\"s\"><v>-1</v></c>", ""},
        {"shared, beyond the table", "<c r=\"B1\" t=\"s\"><v>3</v></c>", ""},
        {"shared, 20 digits", "<c r=\"B1\" t=\"s\"><v>18446744073709551616</v></c>", ""},
        {"shared, with a space", "<c r=\"B1\" t=\"s\"><v> 1</v></c>", ""},
        {"shared, no number", "<c r=\"B1\" t=\"s\"><v>+</v></c><c r=\"A1\" t=\"s\"><v/></c>", ""},
        {"later cell of the column", cell("B1", "a") + cell("B1", "b"), "b"},
        {"later empty cell of the column", cell("B1", "a") + "<c r=\"B1\"/>", ""},
        {"no reference", "<c><v>a</v></c>", ""},
        {"reference without letters", "<c r=\"1\"><v>a</v></c>", ""},
        {"elements with a prefix are others", "<x:c xmlns:x=\"u\" r=\"B1\"><x:v>a</x:v></x:c>", ""},
        {"any order of columns", cell("D1", "d") + cell("b1", "b"), "b"},
    };
    const std::string sharedStrings =
        "<si><t>zero</t></si><si><t xml:space=\"preserve\"> one </t></si>"
        "<si><r><t>\xE6\xBC\xA2</t></r><r><rPr><b/></rPr><t>\xE5\xAD\x97</t></r>"
        "<rPh sb=\"0\" eb=\"2\"><t>kanji</t></rPh></si>";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string row = "<row>" + c.cell + cell("C1", "c") + "</row>";
        const WorkbookReading reading = readParts(workbookParts({headerRow() + row}, sharedStrings));
        ASSERT_EQ(reading.items.size(), 1U) << reading.failure;
        EXPECT_EQ(reading.items[0].substr(0, reading.items[0].rfind('|')), "|" + c.value + "|c");
    }
}

TEST(WorkbookReader, readsTheSheetsInTheOrderOfTheWorkbook) {
    WorkbookParts parts = workbookParts({headerRow() + inlineRow({"1"}), inlineRow({"Title", "Command"}),
                                         "<row/>", headerRow() + inlineRow({"4"}), headerRow()});
    std::string& workbook = parts["xl/workbook.xml"];
    workbook.replace(workbook.find("<sheet name"), 0,
                     "<sheet name=\"Chart\" r:id=\"chart\"/><sheet name=\"Nowhere\" r:id=\"rId9\"/>"
                     "<sheet r:id=\"rId1\"/><sheet name=\"x\" id=\"rId1\"/>"
                     "<sheet name=\"Last\" r:id=\"last\"/>");
    std::string& relationships = parts["xl/_rels/workbook.xml.rels"];
    const std::string worksheet = "Type=\"x/worksheet\"";
    relationships.replace(relationships.rfind("</"), 0,
                          "<Relationship Id=\"chart\" Type=\"x/chartsheet\" Target=\"chart.xml\"/>"
                          "<Relationship Id=\"rId9\" " +
                              worksheet + "/>" + "<Relationship Id=\"last\" " + worksheet +
                              " Target=\"nowhere.xml\"/>" + "<Relationship Id=\"last\" " + worksheet +
                              " Target=\"/other/a.xml\"/>");
    parts["other/a.xml"] = "<worksheet>" + headerRow() + inlineRow({"first"}) + "</worksheet>";
    const WorkbookReading reading = readParts(parts);
    EXPECT_EQ(reading.failure, "");
    EXPECT_EQ(reading.items, (Lines{"first|||", "1|||", "4|||"}));
    const std::string names = "Title | Command | Params | Keywords";
    EXPECT_EQ(reading.log, (Lines{"Excel headers (book.xlsx / Last): " + names,
                                  "Excel headers (book.xlsx / Sheet1): " + names,
                                  "Excel headers (book.xlsx / Sheet2): Title | Command",
                                  "Excel headers (book.xlsx / Sheet3): not found in first 5x5",
                                  "Excel headers (book.xlsx / Sheet4): " + names,
                                  "Excel headers (book.xlsx / Sheet5): " + names}));
}

TEST(WorkbookReader, saysWhichPartIsMissingOrDoesNotParse) {
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
        const WorkbookReading cut = readParts(parts);
        EXPECT_EQ(cut.failure, "Invalid Excel format: book.xlsx: " + name + ": unclosed token");
        EXPECT_TRUE(cut.log.empty());
    }
    EXPECT_EQ(readParts(workbookParts({})).failure, noSupportedSheet);
    EXPECT_EQ(readParts(workbookParts({headerRow()})).items, Lines{})
        << "a header alone is a supported sheet";
}

TEST(WorkbookReader, readsTheEncodingsThatXMLMustHave) {
    WorkbookParts parts = workbookParts({headerRow() + inlineRow({"a\xE8\xAA\x9E"})});
    std::string utf16 = "\xFF\xFE";
    const std::string text = "<worksheet>" + headerRow() + inlineRow({"?"}) + "</worksheet>";
    for (const char byte : text)
        utf16 += byte == '?' ? std::string("\x9E\x8A") : std::string{byte, '\0'};
    parts["xl/worksheets/sheet1.xml"] = utf16;
    EXPECT_EQ(readParts(parts).items, Lines{"\xE8\xAA\x9E|||"});
}

} // namespace kavendra
