#include "bench/WorkbookGenerator.h"

#include "bench/Generator.h"
#include "data/ItemList.h"
#include "tests/support/WorkbookWriter.h"

#include <array>
#include <string_view>
#include <unordered_map>

namespace kavendra {

namespace {

class SheetWriter {
public:
    explicit SheetWriter(WorkbookForm workbookForm) : form(workbookForm) {}

    void row(const std::array<std::string_view, requiredColumns.size()>& texts) {
        const std::string number = std::to_string(++rowCount);
        sheet += "<row r=\"" + number + "\"";
        if (form == WorkbookForm::spreadsheetProgram)
            sheet += " spans=\"1:4\" ht=\"15\" customHeight=\"1\" x14ac:dyDescent=\"0.25\"";
        sheet += ">";
        for (std::size_t column = 0; column < texts.size(); ++column)
            cell(static_cast<char>('A' + column) + number, texts[column]);
        sheet += "</row>";
    }

    std::string sheet;
    std::string sharedStrings;

private:
    void cell(const std::string& reference, std::string_view text) {
        sheet += "<c r=\"" + reference;
        if (form == WorkbookForm::inlineStrings) {
            sheet.append("\" t=\"inlineStr\"><is><t>").append(text).append("</t></is></c>");
            return;
        }
        sheet += form == WorkbookForm::spreadsheetProgram ? "\" s=\"1\" t=\"s\"><v>" : "\" t=\"s\"><v>";
        sheet += std::to_string(sharedStringIndex(text)) + "</v></c>";
    }

    std::size_t sharedStringIndex(std::string_view text) {
        const auto [known, isNew] = indexOf.try_emplace(std::string(text), indexOf.size());
        if (isNew)
            sharedStrings.append("<si><t>").append(text).append("</t></si>");
        return known->second;
    }

    WorkbookForm form;
    std::size_t rowCount = 0;
    std::unordered_map<std::string, std::size_t> indexOf;
};

} // namespace

std::string generateWorkbook(std::size_t rows, WorkbookForm form) {
    const ItemList items = generateItems(rows);
    SheetWriter writer(form);
    writer.row(requiredColumns);
    for (std::size_t index = 0; index < items.size(); ++index)
        writer.row({items.value(index, ItemColumn::title), items.value(index, ItemColumn::command),
                    items.value(index, ItemColumn::params), items.value(index, ItemColumn::keywords)});
    return makeZip(zipEntries(workbookParts({writer.sheet}, writer.sharedStrings)));
}

} // namespace kavendra
