#pragma once

#include "base/Result.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Event-driven parser for the XML parts of a workbook. Fails on elements nested too deeply and on document
/// type declarations: the format forbids them, and entity attacks need them.
namespace kavendra {

/// The attributes of an element, valid during its event.
class XMLAttributes {
public:
    explicit XMLAttributes(const char* const* namesAndValues) : m_pairs(namesAndValues) {}

    /// Returns the value of the attribute with that name, prefix included.
    std::optional<std::string_view> find(std::string_view name) const {
        for (const char* const* pair = m_pairs; *pair; pair += 2)
            if (*pair == name)
                return pair[1];
        return {};
    }

private:
    const char* const* m_pairs; ///< name, value, name, value and so on, then null
};

/// Receives the events of one part. Element names include their prefix; there is no namespace processing.
/// Text is valid UTF-8. A failure ends the parsing.
class XMLHandler {
public:
    virtual ~XMLHandler() = default;

    virtual Result<void> startElement(std::string_view name, XMLAttributes attributes) = 0;
    /// The text of one element may come in several pieces.
    virtual Result<void> characterData(std::string_view) { return {}; }
    virtual Result<void> endElement(std::string_view) { return {}; }

protected:
    XMLHandler() = default;
    XMLHandler(const XMLHandler&) = default;
    XMLHandler& operator=(const XMLHandler&) = default;
};

/// Estimates the processor time for parsing a piece of XML, in units of about 22 ns on a processor of 2023.
/// Eight bytes of plain text cost one unit; tags, attributes, entities and line ends cost more.
std::size_t xmlCost(std::string_view piece);

/// Reads at most `capacity` bytes into `buffer`. Returns their number, 0 at the end of the part.
using ReadPiece = std::function<Result<std::size_t>(char* buffer, std::size_t capacity)>;

/// Parses a whole part. Fails with the error of `readPiece`, of the handler or of the XML parser;
/// `fallbackText` is used if the parser has no text for its error. Throws std::bad_alloc.
Result<void> parseXML(const ReadPiece& readPiece, XMLHandler& handler, const char* fallbackText);

} // namespace kavendra
