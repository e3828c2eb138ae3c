#pragma once

#include "base/Result.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Event-driven parsing of the XML parts of a workbook, whoever made them: a document type declaration, which
/// the format forbids and entity attacks need, ends it, and so do elements nested too deeply.
namespace kavendra {

/// Whether an element or attribute has that name, prefix included: there is no namespace processing.
template <std::size_t size>
bool isNamed(const char* name, const char (&expected)[size]) {
    for (std::size_t index = 0; index < size; ++index) // names are short: faster than calling strcmp
        if (name[index] != expected[index])
            return false;
    return true;
}

/// The attributes of an element; they are valid during the event.
class XMLAttributes {
public:
    explicit XMLAttributes(const char* const* namesAndValues) : pairs(namesAndValues) {}

    /// Returns the attribute's value, null when the element has none of that name.
    template <std::size_t size>
    const char* find(const char (&name)[size]) const {
        for (const char* const* pair = pairs; *pair; pair += 2)
            if (isNamed(*pair, name))
                return pair[1];
        return nullptr;
    }

private:
    const char* const* pairs; ///< name, value, name, value and so on, then null
};

/// Receives the events of one part. Text is valid UTF-8.
class XMLHandler {
public:
    virtual ~XMLHandler() = default;

    virtual void startElement(const char* name, XMLAttributes attributes) = 0;
    /// The text of one element may come in several pieces.
    virtual void characterData(std::string_view) {}
    virtual void endElement(const char*) {}

    /// Why the handler wants no more events; null as long as it does.
    const char* problem() const { return problemText; }

protected:
    XMLHandler() = default;
    XMLHandler(const XMLHandler&) = default;
    XMLHandler& operator=(const XMLHandler&) = default;

    void fail(const char* why) { problemText = problemText ? problemText : why; }

private:
    const char* problemText = nullptr;
};

/// Returns about what parsing that piece of XML costs, in units of some 22 ns on a processor of 2023. Tags,
/// attributes, entities and line ends cost most, not bytes: in plain text a unit is eight bytes.
std::size_t xmlCost(std::string_view piece);

/// Puts the next bytes of a part into the buffer, at most that many, and returns how many; 0 at the end.
using ReadPiece = std::function<Result<std::size_t>(char* buffer, std::size_t capacity)>;

/// Parses one part from its beginning to its end. Fails with what `readPiece` fails with, with the handler's
/// problem, or with what is wrong in the XML; `fallbackText` stands for a fault that the parser has no words
/// for. Throws std::bad_alloc.
Result<void> parseXML(const ReadPiece& readPiece, XMLHandler& handler, const char* fallbackText);

} // namespace kavendra
