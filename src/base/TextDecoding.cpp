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

constexpr std::string_view byteOrderMarkUTF8 = "\xEF\xBB\xBF";
constexpr std::string_view byteOrderMarkUTF16LE = "\xFF\xFE";
constexpr std::string_view byteOrderMarkUTF16BE = "\xFE\xFF";

constexpr UChar32 byteOrderMark = 0xFEFF; // as a character

/// Returns the number of leading ASCII bytes, rounded down to whole blocks. A block of 64 or 8 bytes is ASCII
/// if no byte has its high bit set, which is tested for all its bytes at once.
std::size_t asciiBlocksSize(const char* bytes, std::size_t size) {
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

/// Corrects a character from ICU's table for the Windows variant of Shift JIS, in which 0x5C is a backslash.
/// That table comes from IBM and permutes three control characters.
UChar correctedShiftJIS(UChar unit) {
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

/// ICU decodes the bytes 0x80 to 0x9F in EUC-JP as control characters. No encoder writes them, and if they
/// were accepted, most binary data would be valid EUC-JP.
bool isC1Control(UChar unit) {
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

/// Converts pieces of UTF-16 to UTF-8 and drops a leading byte-order mark. A surrogate pair may be split
/// between two pieces, so the lead surrogate is kept until its trail surrogate comes.
class UTF8Writer {
public:
    explicit UTF8Writer(std::size_t capacity) : m_text(capacity) {}

    void append(const UChar* units, const UChar* end) {
        m_piece.clear();
        for (; units != end; ++units) {
            if (U16_IS_LEAD(*units))
                m_lead = *units;
            else
                appendCharacter(U16_IS_TRAIL(*units) ? U16_GET_SUPPLEMENTARY(m_lead, *units) : *units);
        }
        m_text.append(m_piece);
    }

    ByteBuffer take() {
        m_text.shrinkToFit();
        return std::move(m_text);
    }

private:
    void appendCharacter(UChar32 character) {
        if (std::exchange(m_isFirst, false) && character == byteOrderMark)
            return;
        std::array<char, U8_MAX_LENGTH> bytes;
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, character);
        m_piece.append(bytes.data(), length);
    }

    ByteBuffer m_text;
    std::string m_piece;
    UChar m_lead = 0;
    bool m_isFirst = true;
};

/// Returns nothing if the bytes are not valid in the encoding. Converts in pieces: ICU stops with
/// U_BUFFER_OVERFLOW_ERROR when `units` is full and continues in the next call.
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
        if (encoding == Encoding::eucJP && std::any_of(units.data(), end, isC1Control))
            return {};
        if (encoding == Encoding::shiftJIS)
            std::transform(units.data(), end, units.data(), correctedShiftJIS);
        writer.append(units.data(), end);
    } while (status == U_BUFFER_OVERFLOW_ERROR);
    return writer.take();
}

/// Whether the text has a comma or a line end, as every CSV file has. Text in a one-byte encoding that is
/// decoded as UTF-16 has none.
bool hasCSVSeparator(std::string_view text) {
    return text.find_first_of(",\n\r") != std::string_view::npos;
}

ByteBuffer withoutByteOrderMark(ByteBuffer text) {
    if (text.view().starts_with(byteOrderMarkUTF8)) {
        std::memmove(text.data(), text.data() + byteOrderMarkUTF8.size(),
                     text.size() - byteOrderMarkUTF8.size());
        text.setSize(text.size() - byteOrderMarkUTF8.size());
    }
    return text;
}

} // namespace

bool isValidUTF8(std::string_view bytes) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const std::size_t size = bytes.size();
    for (std::size_t position = 0; position < size;) {
        position += asciiBlocksSize(bytes.data() + position, size - position);
        // Then 64 bytes one character at a time. A character that begins there may end in the next block.
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
        return withoutByteOrderMark(std::move(bytes));
    // With a byte-order mark, the file is in that encoding or invalid.
    if (bytes.view().starts_with(byteOrderMarkUTF16LE))
        return decode(bytes.view(), Encoding::utf16LittleEndian);
    if (bytes.view().starts_with(byteOrderMarkUTF16BE))
        return decode(bytes.view(), Encoding::utf16BigEndian);
    // ASCII is already covered by UTF-8.
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
