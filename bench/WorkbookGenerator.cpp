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
    explicit SheetWriter(WorkbookForm form) : m_form(form) {}

    void row(const std::array<std::string_view, requiredColumns.size()>& texts) {
        const std::string number = std::to_string(++m_rowCount);
        m_sheet += "<row r=\"" + number + "\"";
        if (m_form == WorkbookForm::spreadsheetProgram)
            m_sheet += " spans=\"1:4\" ht=\"15\" customHeight=\"1\" x14ac:dyDescent=\"0.25\"";
        m_sheet += ">";
        for (std::size_t column = 0; column < texts.size(); ++column)
            cell(static_cast<char>('A' + column) + number, texts[column]);
        m_sheet += "</row>";
    }

    const std::string& sheet() const { return m_sheet; }
    const std::string& sharedStrings() const { return m_sharedStrings; }

private:
    void cell(const std::string& reference, std::string_view text) {
        m_sheet += "<c r=\"" + reference;
        if (m_form == WorkbookForm::inlineStrings) {
            m_sheet.append("\" t=\"inlineStr\"><is><t>").append(text).append("</t></is></c>");
            return;
        }
        m_sheet += m_form == WorkbookForm::spreadsheetProgram ? "\" s=\"1\" t=\"s\"><v>" : "\" t=\"s\"><v>";
        m_sheet += std::to_string(sharedStringIndex(text)) + "</v></c>";
    }

    std::size_t sharedStringIndex(std::string_view text) {
        const auto [known, isNew] = m_indexOf.try_emplace(std::string(text), m_indexOf.size());
        if (isNew)
            m_sharedStrings.append("<si><t>").append(text).append("</t></si>");
        return known->second;
    }

    WorkbookForm m_form;
    std::string m_sheet;
    std::string m_sharedStrings;
    std::size_t m_rowCount = 0;
    std::unordered_map<std::string, std::size_t> m_indexOf;
};

} // namespace

std::string generateWorkbook(std::size_t rows, WorkbookForm form) {
    const ItemList items = generateItems(rows);
    SheetWriter writer(form);
    writer.row(requiredColumns);
    for (std::size_t index = 0; index < items.size(); ++index)
        writer.row({items.value(index, ItemColumn::title), items.value(index, ItemColumn::command),
                    items.value(index, ItemColumn::params), items.value(index, ItemColumn::keywords)});
    return makeZip(zipEntries(workbookParts({writer.sheet()}, writer.sharedStrings())));
}

} // namespace kavendra
