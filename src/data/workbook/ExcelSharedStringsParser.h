#pragma once

#include "data/workbook/WorkbookContent.h"
#include "data/workbook/XMLPart.h"

#include <string>

namespace kavendra {

/// The table of texts that cells name by their index (ECMA-376, part 1, 18.4). Every text inside an item
/// counts: the runs of rich text are joined, and a phonetic reading is joined in.
class ExcelSharedStringsParser final : public XMLHandler {
public:
    /// The table goes to `content.sharedStrings`.
    explicit ExcelSharedStringsParser(WorkbookContent& content) : content(content) {}

    void startElement(const char* name, XMLAttributes attributes) override;
    void characterData(std::string_view text) override;
    void endElement(const char* name) override;

private:
    WorkbookContent& content;
    std::string currentString;
    bool isInsideSharedString = false;
    bool isCapturingText = false;
};

} // namespace kavendra
