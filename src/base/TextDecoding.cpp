#include "base/TextDecoding.h"

#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kavendra {

namespace {

constexpr std::string_view markUTF8 = "\xEF\xBB\xBF";
constexpr std::string_view markUTF16LittleEndian = "\xFF\xFE";
constexpr std::string_view markUTF16BigEndian = "\xFE\xFF";

constexpr UChar32 byteOrderMark = 0xFEFF;

/// Returns how many bytes `bytes` begins with that are ASCII, rounded down to a whole block.
std::size_t asciiBlocks(const char* bytes, std::size_t size) {
    std::size_t position = 0;
#ifdef __SSE2__
    for (; position + 64 <= size; position += 64) {
        const auto* block = reinterpret_cast<const __m128i*>(bytes + position);
        const __m128i any =
            _mm_or_si128(_mm_or_si128(_mm_loadu_si128(block), _mm_loadu_si128(block + 1)),
                         _mm_or_si128(_mm_loadu_si128(block + 2), _mm_loadu_si128(block + 3)));
        if (_mm_movemask_epi8(any) != 0)
            return position;
    }
#endif
    for (; position + 8 <= size; position += 8) {
        std::uint64_t block = 0;
        std::memcpy(&block, bytes + position, sizeof block);
        if ((block & 0x8080808080808080) != 0)
            return position;
    }
    return position;
}

/// Shift JIS in its Windows flavour, in which 0x5C is a backslash, as in the paths people write. ICU's table
/// rotates three control characters, as IBM's machines did: this turns them back.
UChar fromShiftJIS(UChar unit) {
    switch (unit) {
    case 0x1C:
        return 0x1A;
    case 0x7F:
        return 0x1C;
    case 0x1A:
        return 0x7F;
    default:
        return unit;
    }
}

/// ICU's EUC-JP passes the bytes 0x80 to 0x9F as control characters, which no encoder writes: with them
/// nearly any bytes would read as Japanese.
bool isControlOfEUC(UChar unit) {
    return unit >= 0x80 && unit <= 0x9F;
}

enum class Encoding { shiftJIS, eucJP, utf16LittleEndian, utf16BigEndian };

const char* converterName(Encoding encoding) {
    switch (encoding) {
    case Encoding::shiftJIS:
        return "ibm-943_P15A-2003";
    case Encoding::eucJP:
        return "euc-jp-2007";
    case Encoding::utf16LittleEndian:
        return "UTF-16LE";
    case Encoding::utf16BigEndian:
        return "UTF-16BE";
    }
    return "";
}

/// Collects UTF-16 as UTF-8; a surrogate pair may come in two calls.
class UTF8Writer {
public:
    explicit UTF8Writer(std::size_t capacity) : text(capacity) {}

    void append(const UChar* units, const UChar* end) {
        chunk.clear();
        for (; units != end; ++units) {
            if (U16_IS_LEAD(*units))
                lead = *units;
            else
                appendCharacter(U16_IS_TRAIL(*units) ? U16_GET_SUPPLEMENTARY(lead, *units) : *units);
        }
        text.append(chunk);
    }

    ByteBuffer take() {
        text.shrinkToFit();
        return std::move(text);
    }

private:
    void appendCharacter(UChar32 character) {
        const bool isMark = std::exchange(first, false) && character == byteOrderMark;
        if (isMark)
            return;
        std::array<char, U8_MAX_LENGTH> bytes;
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, character);
        chunk.append(bytes.data(), length);
    }

    ByteBuffer text;
    std::string chunk;
    UChar lead = 0;
    bool first = true;
};

/// Returns nothing when a byte is not valid in the encoding.
std::optional<ByteBuffer> decode(std::string_view bytes, Encoding encoding) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open(converterName(encoding), &status), ucnv_close);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    if (U_FAILURE(status))
        return {};

    UTF8Writer writer(bytes.size() + bytes.size() / 2);
    std::array<UChar, 16384> units;
    const char* source = bytes.data();
    const char* const sourceEnd = source + bytes.size();
    do {
        status = U_ZERO_ERROR;
        UChar* end = units.data();
        ucnv_toUnicode(converter.get(), &end, units.data() + units.size(), &source, sourceEnd, nullptr, true,
                       &status);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR)
            return {};
        if (encoding == Encoding::eucJP && std::any_of(units.data(), end, isControlOfEUC))
            return {};
        if (encoding == Encoding::shiftJIS)
            std::transform(units.data(), end, units.data(), fromShiftJIS);
        writer.append(units.data(), end);
    } while (status == U_BUFFER_OVERFLOW_ERROR);
    return writer.take();
}

/// Whether the first row of a CSV file has a comma or an end. Text in a one-byte encoding that is read as
/// UTF-16 has neither.
bool hasCSVSeparator(std::string_view text) {
    return text.find_first_of(",\n\r") != std::string_view::npos;
}

ByteBuffer withoutMark(ByteBuffer text) {
    if (text.view().starts_with(markUTF8)) {
        std::memmove(text.data(), text.data() + markUTF8.size(), text.size() - markUTF8.size());
        text.setSize(text.size() - markUTF8.size());
    }
    return text;
}

} // namespace

bool isValidUTF8(std::string_view bytes) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const std::size_t size = bytes.size();
    for (std::size_t position = 0; position < size;) {
        position += asciiBlocks(bytes.data() + position, size - position);
        // Up to the next block: the rest of a character may reach into it.
        const std::size_t blockEnd = std::min(position + 64, size);
        while (position < blockEnd) {
            UChar32 character = 0;
            U8_NEXT(units, position, size, character);
            if (character < 0)
                return false;
        }
    }
    return true;
}

std::optional<ByteBuffer> decodeText(ByteBuffer bytes) {
    if (isValidUTF8(bytes.view()))
        return withoutMark(std::move(bytes));
    // A mark settles the byte order: in the other one such a file would only be garbage.
    if (bytes.view().starts_with(markUTF16LittleEndian))
        return decode(bytes.view(), Encoding::utf16LittleEndian);
    if (bytes.view().starts_with(markUTF16BigEndian))
        return decode(bytes.view(), Encoding::utf16BigEndian);
    // ASCII is not in the list: it is UTF-8.
    for (const Encoding encoding : {Encoding::shiftJIS, Encoding::eucJP})
        if (std::optional<ByteBuffer> text = decode(bytes.view(), encoding))
            return text;
    for (const Encoding encoding : {Encoding::utf16LittleEndian, Encoding::utf16BigEndian})
        if (std::optional<ByteBuffer> text = decode(bytes.view(), encoding);
            text && hasCSVSeparator(text->view()))
            return text;
    return {};
}

} // namespace kavendra
