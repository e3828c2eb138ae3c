#include "base/Text.h"

#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <memory>

namespace kavendra {

namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::string toUTF8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

icu::UnicodeString fromUTF8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

/// Marks that follow one another are put in order, which takes a time that grows with the square of their
/// number. No writing needs more than a few (UAX #15 takes 30 for safe), so a longer run is cut.
constexpr std::int32_t maximumMarks = 1000;

/// Returns `text` normalised in pieces, none of which has more than maximumMarks marks in a row.
icu::UnicodeString normalizedInPieces(const icu::Normalizer2& normalizer, const icu::UnicodeString& text,
                                      UErrorCode& status) {
    if (text.length() <= maximumMarks)
        return normalizer.normalize(text, status);
    icu::UnicodeString result;
    std::int32_t pieceBegin = 0, marks = 0;
    for (std::int32_t position = 0; position < text.length(); position = text.moveIndex32(position, 1)) {
        marks = normalizer.getCombiningClass(text.char32At(position)) != 0 ? marks + 1 : 0;
        if (marks > maximumMarks) {
            result += normalizer.normalize(text.tempSubStringBetween(pieceBegin, position), status);
            pieceBegin = position;
            marks = 0;
        }
    }
    return result += normalizer.normalize(text.tempSubStringBetween(pieceBegin), status);
}

/// Returns the length of the White_Space character that ends `text`, 0 when another one does.
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
    return toUTF8(fromUTF8(text).toLower(icu::Locale::getRoot()));
}

std::string normalized(std::string_view text) {
    if (isASCII(text))
        return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status))
        return std::string(text);
    const icu::UnicodeString result = normalizedInPieces(*nfc, fromUTF8(text), status);
    return U_SUCCESS(status) ? toUTF8(result) : std::string(text);
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
        // The C locale's collation puts all capitals first, which is no order for a reader.
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
