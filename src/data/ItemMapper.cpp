#include "data/ItemMapper.h"

#include <utility>

namespace kavendra {

void ItemMapper::addHeaderCell(std::string_view name) {
    if (!m_columns.empty())
        addToHeaderLine(" | ");
    addToHeaderLine(name);
    const auto position = std::ranges::find(requiredColumns, name) - requiredColumns.begin();
    const auto column = static_cast<std::uint8_t>(position);
    const bool counts = column < requiredColumns.size() && !std::exchange(m_hasColumn[column], true);
    m_columns.push_back(counts ? column : otherColumn);
}

std::optional<std::string_view> ItemMapper::missingColumn() const {
    const auto missing = std::ranges::find(m_hasColumn, false);
    if (missing == m_hasColumn.end())
        return {};
    return requiredColumns[static_cast<std::size_t>(missing - m_hasColumn.begin())];
}

void ItemMapper::addToHeaderLine(std::string_view text) {
    if (m_isHeaderLineCut)
        return;
    m_isHeaderLineCut = m_headerLine.size() + text.size() > m_maximumHeaderLine;
    m_headerLine += m_isHeaderLineCut ? "…" : text;
}

} // namespace kavendra
