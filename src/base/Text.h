#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text services. Text is UTF-8; bytes that are not valid UTF-8 are kept where a function only cuts, and
/// read as U+FFFD where it maps characters.
namespace kavendra {

/// Returns `text` without the characters of the Unicode White_Space property at both ends.
std::string_view trimmed(std::string_view text);

/// Whether any character of `text` has the Unicode White_Space property.
bool containsWhiteSpace(std::string_view text);

/// Returns the words of `text`: its pieces between characters of the Unicode White_Space property, none
/// empty.
std::vector<std::string_view> splitWords(std::string_view text);

/// Returns the length in bytes of the White_Space character that `text` begins with, 0 when it begins with
/// another one or is empty.
std::size_t whiteSpacePrefix(std::string_view text);

/// Returns `text` in lower case by the Unicode default mapping, whatever the locale.
std::string lowercased(std::string_view text);

/// Returns `text` in Unicode normalisation form C, a run of more than 30 combining marks in pieces.
std::string normalized(std::string_view text);

/// Returns `text` with every Hiragana character turned into its Katakana (ICU "Hiragana-Katakana").
std::string hiraganaToKatakana(std::string_view text);

/// Whether `a` stands before `b` for a reader of the process's locale, letter case disregarded; texts that
/// are equal for such a reader are ordered by their bytes, so the order is the same every time.
bool localizedLess(std::string_view a, std::string_view b);

} // namespace kavendra
