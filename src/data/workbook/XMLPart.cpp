#include "data/workbook/XMLPart.h"

#include "data/workbook/WorkbookLimits.h"

#include <expat.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace kavendra {

namespace {

constexpr int pieceSize = 64 * 1024;

/// Bytes that the parser of this thread has allocated, and whether the system ran out of memory.
/// Thread-local, because expat passes no context to its allocation functions.
thread_local std::size_t parserMemoryInUse = 0;
thread_local bool systemMemoryRanOut = false;

/// Room in front of each block for its size; as large as the alignment requires.
constexpr std::size_t blockHeader = alignof(std::max_align_t);

/// Allocates, grows or shrinks a block within workbookLimits::parserMemory. Each block is allocated with a
/// header that holds its size; expat gets the address behind the header. Returns null on failure.
void* reallocateBlock(void* block, std::size_t size) {
    char* const oldStart = block ? static_cast<char*>(block) - blockHeader : nullptr;
    const std::size_t oldSize = oldStart ? *reinterpret_cast<std::size_t*>(oldStart) : 0;
    if (size > workbookLimits::parserMemory - (parserMemoryInUse - oldSize))
        return nullptr;
    auto* const start = static_cast<char*>(std::realloc(oldStart, size + blockHeader));
    if (!start) {
        systemMemoryRanOut = true;
        return nullptr;
    }
    *reinterpret_cast<std::size_t*>(start) = size;
    parserMemoryInUse += size - oldSize;
    return start + blockHeader;
}

void* allocateBlock(std::size_t size) {
    return reallocateBlock(nullptr, size);
}

void freeBlock(void* block) {
    if (!block)
        return;
    char* const start = static_cast<char*>(block) - blockHeader;
    parserMemoryInUse -= *reinterpret_cast<std::size_t*>(start);
    std::free(start);
}

/// Passes the parser's events to the handler and stops the parser on a failure.
struct Run {
    XML_Parser parser;
    XMLHandler& handler;
    unsigned depth = 0;
    Result<void> result;

    void stop(Error error) {
        result = std::unexpected(std::move(error));
        XML_StopParser(parser, XML_FALSE);
    }

    /// Drops events that expat sends after the stop. Exceptions must not pass through expat, which is C code.
    template <typename Event>
    void deliver(Event&& event) {
        if (!result)
            return;
        try {
            if (auto handled = event(); !handled)
                stop(std::move(handled.error()));
        } catch (const std::bad_alloc&) {
            systemMemoryRanOut = true;
            stop({});
        }
    }
};

void startElement(void* run, const char* name, const char** attributes) {
    Run& self = *static_cast<Run*>(run);
    self.deliver([&]() -> Result<void> {
        if (++self.depth > workbookLimits::nesting)
            return std::unexpected(Error{"elements nested too deeply"});
        return self.handler.startElement(name, XMLAttributes(attributes));
    });
}

void endElement(void* run, const char* name) {
    Run& self = *static_cast<Run*>(run);
    self.deliver([&] {
        --self.depth;
        return self.handler.endElement(name);
    });
}

void characterData(void* run, const char* text, int length) {
    Run& self = *static_cast<Run*>(run);
    self.deliver([&] { return self.handler.characterData({text, static_cast<std::size_t>(length)}); });
}

void startDoctype(void* run, const char*, const char*, const char*, int) {
    static_cast<Run*>(run)->stop({"document type declarations are not allowed"});
}

/// Returns the size of the incomplete token at the end of the input.
std::size_t unfinishedBytes(XML_Parser parser, std::size_t bytesRead) {
    const XML_Index position = XML_GetCurrentByteIndex(parser);
    return position < 0 ? bytesRead : bytesRead - static_cast<std::size_t>(position);
}

std::unexpected<Error> failure(const Run& run, const char* fallbackText) {
    if (systemMemoryRanOut)
        throw std::bad_alloc();
    if (!run.result)
        return std::unexpected(run.result.error());
    const char* text = XML_ErrorString(XML_GetErrorCode(run.parser));
    return std::unexpected(Error{text ? text : fallbackText});
}

constexpr std::uint8_t byteCost(char byte) {
    const auto unit = static_cast<std::uint8_t>(byte);
    return static_cast<std::uint8_t>((unit <= ' ') + (unit == '<') + 2 * (unit == '=') + 2 * (unit == '>') +
                                     2 * (unit == '&'));
}

} // namespace

std::size_t xmlCost(std::string_view piece) {
    std::size_t cost = piece.size() / 8;
    // The compiler vectorizes loops of a fixed length.
    constexpr std::size_t blockSize = 64;
    std::array<char, blockSize> lastBlock{};
    lastBlock.fill('x');
    for (std::size_t begin = 0; begin < piece.size(); begin += blockSize) {
        const char* block = piece.data() + begin;
        if (piece.size() - begin < blockSize) {
            std::memcpy(lastBlock.data(), block, piece.size() - begin);
            block = lastBlock.data();
        }
        std::uint8_t blockCost = 0;
        for (std::size_t index = 0; index < blockSize; ++index)
            blockCost = static_cast<std::uint8_t>(blockCost + byteCost(block[index]));
        cost += blockCost;
    }
    return cost;
}

Result<void> parseXML(const ReadPiece& readPiece, XMLHandler& handler, const char* fallbackText) {
    systemMemoryRanOut = false;
    const XML_Memory_Handling_Suite memory{allocateBlock, reallocateBlock, freeBlock};
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)> parser(
        XML_ParserCreate_MM(nullptr, &memory, nullptr), XML_ParserFree);
    if (!parser)
        throw std::bad_alloc();
    Run run{.parser = parser.get(), .handler = handler, .result = {}};
    XML_SetUserData(run.parser, &run);
    XML_SetElementHandler(run.parser, startElement, endElement);
    XML_SetCharacterDataHandler(run.parser, characterData);
    XML_SetStartDoctypeDeclHandler(run.parser, startDoctype);

    std::size_t bytesRead = 0;
    for (;;) {
        void* const buffer = XML_GetBuffer(run.parser, pieceSize);
        if (!buffer)
            return failure(run, fallbackText);
        const auto count = readPiece(static_cast<char*>(buffer), pieceSize);
        if (!count)
            return std::unexpected(count.error());
        bytesRead += *count;
        if (XML_ParseBuffer(run.parser, static_cast<int>(*count), *count == 0) != XML_STATUS_OK)
            return failure(run, fallbackText);
        if (*count == 0)
            return {};
        if (unfinishedBytes(run.parser, bytesRead) > workbookLimits::tokenSize)
            return std::unexpected(Error{"a tag or comment is too long"});
    }
}

} // namespace kavendra
