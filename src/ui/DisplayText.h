#pragma once

#include <QString>

#include <string_view>

namespace kavendra {

/// Returns UTF-8 text for a widget; bytes that are not UTF-8 show as replacement characters.
QString displayText(std::string_view text);

/// Returns the beginning of a text on one line: line breaks and other controls show as spaces, and no more
/// than a widget could show of it is laid out.
QString singleLine(std::string_view text);

/// Returns `text` with places in its long words where a line may break: otherwise what shows it would have to
/// be as wide as the word.
QString breakable(QString text);

/// Returns `text` for a tooltip: as it stands, where a tooltip would take markup in it for markup.
QString toolTipText(const QString& text);

} // namespace kavendra
