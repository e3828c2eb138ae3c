#include "base/HostName.h"

#include <unicode/bytestream.h>
#include <unicode/idna.h>

#include <memory>

namespace kavendra {

namespace {

/// In UTF-8; DNS limits the ASCII form to 253 bytes. The time to convert a label is quadratic in its length.
constexpr std::size_t maximumNameSize = 1024;

} // namespace

std::optional<std::string> asciiHostName(std::string_view name) {
    if (name.size() > maximumNameSize)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    constexpr std::uint32_t options =
        UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_NONTRANSITIONAL_TO_ASCII;
    const std::unique_ptr<icu::IDNA> mapping(icu::IDNA::createUTS46Instance(options, status));
    if (U_FAILURE(status))
        return std::nullopt;
    std::string ascii;
    icu::StringByteSink<std::string> sink(&ascii);
    icu::IDNAInfo info;
    mapping->nameToASCII_UTF8(icu::StringPiece(name.data(), static_cast<std::int32_t>(name.size())), sink,
                              info, status);
    if (U_FAILURE(status) || info.hasErrors())
        return std::nullopt;
    return ascii;
}

} // namespace kavendra
