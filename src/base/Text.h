#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text services for UTF-8. Functions that only split text keep invalid bytes; functions that map characters
/// read them as U+FFFD.
namespace kavendra {

/// Lets ICU read the locale and the environment, which it does once. Call it before there are other threads,
/// which may change both. The functions below may be called on any thread.
void initializeTextServices();

/// Returns `text` without Unicode White_Space characters at both ends.
std::string_view trimmed(std::string_view text);

/// Whether `text` has a Unicode White_Space character.
bool containsWhiteSpace(std::string_view text);

/// Returns the non-empty parts of `text` between Unicode White_Space characters.
std::vector<std::string_view> splitWords(std::string_view text);

/// Returns the length in bytes of the White_Space character at the beginning of `text`, 0 if there is none.
std::size_t whiteSpacePrefix(std::string_view text);

/// Returns `text` in lower case by the Unicode default mapping, independent of the locale.
std::string lowercased(std::string_view text);

/// Returns `text` in Unicode normalisation form C, a run of more than 30 combining marks in pieces.
std::string normalized(std::string_view text);

/// Returns `text` with Hiragana converted to Katakana (ICU "Hiragana-Katakana").
std::string hiraganaToKatakana(std::string_view text);

/// Whether `a` is before `b` in the collation order of the process's locale, ignoring case. Texts that are
/// equal in that order are ordered by their bytes, so the order is always the same.
bool localizedLess(std::string_view a, std::string_view b);

} // namespace kavendra
