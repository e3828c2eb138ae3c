#pragma once

#include <QString>

#include <string_view>

namespace kavendra {

/// Returns UTF-8 text for a widget; bytes that are not UTF-8 show as replacement characters.
QString displayText(std::string_view text);

/// Returns the beginning of a text on one line: line breaks and other controls show as spaces, and no more
/// than a widget could show of it is laid out.
QString singleLine(std::string_view text);

} // namespace kavendra
