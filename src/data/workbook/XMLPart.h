#pragma once

#include "base/Result.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Event-driven parsing of the XML parts of a workbook. Fails on document type declarations, which the format
/// forbids and entity attacks need, and on elements nested too deeply.
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

/// Returns about what parsing that piece of XML costs, in units of some 22 ns on a processor of 2023. Tags,
/// attributes, entities and line ends cost most, not bytes: in plain text a unit is eight bytes.
std::size_t xmlCost(std::string_view piece);

/// Puts the next bytes of a part into the buffer, at most that many, and returns how many; 0 at the end.
using ReadPiece = std::function<Result<std::size_t>(char* buffer, std::size_t capacity)>;

/// Parses one part from its beginning to its end. Fails with the failure of `readPiece` or of the
/// handler, or with the error in the XML; `fallbackText` is used for an error without a text in the parser.
/// Throws std::bad_alloc.
Result<void> parseXML(const ReadPiece& readPiece, XMLHandler& handler, const char* fallbackText);

} // namespace kavendra
