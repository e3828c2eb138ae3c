#include "base/Text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/putil.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace kavendra {

namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

icu::StringPiece stringPiece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

std::string toUTF8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

icu::UnicodeString fromUTF8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(stringPiece(text));
}

/// Combining marks that follow one another are put in order, which takes a time that grows with the square of
/// their number, so a longer run is cut. No writing needs more than this in a row (Unicode's Stream-Safe Text
/// Format, UAX #15).
constexpr int maximumMarks = 30;
constexpr UChar32 firstMark = 0x300;

/// Returns how many bytes at the beginning of `text` have no more than maximumMarks combining marks in a row.
std::size_t normalizableLength(const icu::Normalizer2& normalizer, std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    std::int32_t next = 0;
    int marks = 0;
    for (std::int32_t position = 0; position < size; position = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character);
        marks = character >= firstMark && normalizer.getCombiningClass(character) != 0 ? marks + 1 : 0;
        if (marks > maximumMarks)
            return static_cast<std::size_t>(position);
    }
    return text.size();
}

void appendNormalized(const icu::Normalizer2& normalizer, std::string_view text, std::string& result,
                      UErrorCode& status) {
    const icu::StringPiece piece = stringPiece(text);
    if (normalizer.isNormalizedUTF8(piece, status)) {
        result += text;
        return;
    }
    icu::StringByteSink<std::string> sink(&result);
    normalizer.normalizeUTF8(0, piece, sink, nullptr, status);
}

/// Returns the length in bytes of the White_Space character at the end of `text`, 0 if there is none.
std::size_t whiteSpaceSuffix(std::string_view text) {
    if (text.empty())
        return 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto position = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), 4));
    const auto* window = bytes + (text.size() - static_cast<std::size_t>(position));
    const std::int32_t end = position;
    UChar32 character = 0;
    U8_PREV(window, 0, position, character);
    return character >= 0 && u_isUWhiteSpace(character) ? static_cast<std::size_t>(end - position) : 0;
}

} // namespace

void initializeTextServices() {
    u_getDataDirectory();
    icu::Locale::getDefault();
}

std::size_t whiteSpacePrefix(std::string_view text) {
    if (text.empty())
        return 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto end = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), 4));
    std::int32_t position = 0;
    UChar32 character = 0;
    U8_NEXT(bytes, position, end, character);
    return character >= 0 && u_isUWhiteSpace(character) ? static_cast<std::size_t>(position) : 0;
}

std::string_view trimmed(std::string_view text) {
    while (const std::size_t length = whiteSpacePrefix(text))
        text.remove_prefix(length);
    while (const std::size_t length = whiteSpaceSuffix(text))
        text.remove_suffix(length);
    return text;
}

std::vector<std::string_view> splitWords(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t wordStart = 0;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t separator = whiteSpacePrefix(text.substr(position));
        if (separator == 0) {
            ++position;
            continue;
        }
        if (position > wordStart)
            words.push_back(text.substr(wordStart, position - wordStart));
        position += separator;
        wordStart = position;
    }
    if (wordStart < text.size())
        words.push_back(text.substr(wordStart));
    return words;
}

bool containsWhiteSpace(std::string_view text) {
    for (std::size_t position = 0; position < text.size(); ++position)
        if (whiteSpacePrefix(text.substr(position)) > 0)
            return true;
    return false;
}

std::string lowercased(std::string_view text) {
    if (isASCII(text)) {
        std::string lower(text);
        for (char& letter : lower)
            if (letter >= 'A' && letter <= 'Z')
                letter = static_cast<char>(letter - 'A' + 'a');
        return lower;
    }
    std::string lower;
    icu::StringByteSink<std::string> sink(&lower, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, stringPiece(text), sink, nullptr, status);
    return U_SUCCESS(status) ? lower : std::string(text);
}

std::string normalized(std::string_view text) {
    if (isASCII(text))
        return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status))
        return std::string(text);
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t length = normalizableLength(*nfc, rest);
        appendNormalized(*nfc, rest.substr(0, length), result, status);
        rest.remove_prefix(length);
    }
    return U_SUCCESS(status) ? result : std::string(text);
}

std::string hiraganaToKatakana(std::string_view text) {
    if (isASCII(text))
        return std::string(text);
    static const std::unique_ptr<icu::Transliterator> transform = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::Transliterator>(
            icu::Transliterator::createInstance("Hiragana-Katakana", UTRANS_FORWARD, status));
    }();
    if (!transform)
        return std::string(text);
    icu::UnicodeString result = fromUTF8(text);
    transform->transliterate(result);
    return toUTF8(result);
}

bool localizedLess(std::string_view a, std::string_view b) {
    static const std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        // The C locale would order all upper-case letters before the lower-case ones.
        const icu::Locale locale = std::string_view(icu::Locale::getDefault().getVariant()) == "POSIX"
                                       ? icu::Locale::getRoot()
                                       : icu::Locale::getDefault();
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(locale, status));
        if (made)
            made->setStrength(icu::Collator::SECONDARY);
        return made;
    }();
    if (collator) {
        const auto order = collator->compare(fromUTF8(a), fromUTF8(b));
        if (order != icu::Collator::EQUAL)
            return order == icu::Collator::LESS;
    }
    return a < b;
}

} // namespace kavendra
