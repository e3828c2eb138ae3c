#include "search/SearchParts.h"

#include "base/Parallel.h"
#include "data/DataFile.h"
#include "data/LoadLimits.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <numeric>
#include <string_view>
#include <utility>

namespace kavendra {

namespace {

/// A part to be made.
struct PlannedPart {
    SearchTextSource source;
    std::size_t allowedMemory; ///< of all parts up to this one
};

/// Divides the rows of each block evenly.
std::vector<PlannedPart> plannedParts(const ItemList& items, std::size_t partSize) {
    std::vector<PlannedPart> parts;
    std::size_t fileSize = 0, blockBegin = 0;
    for (const ItemBlock& block : items.blocks()) {
        fileSize += block.fileSize;
        const std::size_t rows = block.rows.size(), count = (rows + partSize - 1) / partSize;
        for (std::size_t part = 0; part < count; ++part) {
            const std::size_t begin = rows * part / count, end = rows * (part + 1) / count;
            parts.push_back({.source = {.block = &block,
                                        .rows = std::span(block.rows).subspan(begin, end - begin),
                                        .firstItem = static_cast<std::uint32_t>(blockBegin + begin)},
                             .allowedMemory = loadLimits::itemMemory(fileSize)});
        }
        blockBegin += rows;
    }
    return parts;
}

/// Charges the memory of parts that are made at the same time. The answer is the same in whatever order they
/// are made: a part exceeds the limit if it and all parts before it do.
class MemoryCharge {
public:
    explicit MemoryCharge(const std::vector<PlannedPart>& parts)
        : m_parts(parts), m_charged(parts.size()), m_end(parts.size()) {}

    /// Sets the memory of a part. Returns false if the part is not needed any more, because it or one before
    /// it exceeds the limit.
    bool charge(std::size_t part, std::size_t memory) {
        const std::scoped_lock lock(m_mutex);
        m_total += memory - std::exchange(m_charged[part], memory);
        if (m_total > m_parts[part].allowedMemory && chargedUpTo(part) > m_parts[part].allowedMemory)
            m_end = std::min(m_end, part);
        return part < m_end;
    }

    /// Returns the block of the first part that exceeds the limit, when all parts are made or not needed.
    const ItemBlock* exceedingBlock() const {
        std::size_t total = 0;
        for (std::size_t part = 0; part < m_parts.size(); ++part) {
            total += m_charged[part];
            if (total > m_parts[part].allowedMemory)
                return m_parts[part].source.block;
        }
        return nullptr;
    }

private:
    std::size_t chargedUpTo(std::size_t part) const {
        return std::accumulate(m_charged.begin(), m_charged.begin() + static_cast<std::ptrdiff_t>(part) + 1,
                               std::size_t{0});
    }

    const std::vector<PlannedPart>& m_parts;
    std::mutex m_mutex;
    std::vector<std::size_t> m_charged; ///< for each part
    std::size_t m_total = 0;            ///< of m_charged
    std::size_t m_end;                  ///< the first part known to exceed the limit
};

/// Makes all parts that the charge allows. Throws std::bad_alloc.
std::vector<SearchText> madeParts(const std::vector<PlannedPart>& planned, MemoryCharge& charge) {
    std::vector<SearchText> parts(planned.size());
    std::atomic<bool> isMemoryShort = false;
    forEachInParallel(planned.size(), [&](std::size_t part) {
        const auto mayTake = [&](std::size_t memory) {
            return charge.charge(part, memory) && !isMemoryShort;
        };
        try {
            parts[part] = makeSearchText(planned[part].source, mayTake);
        } catch (const std::bad_alloc&) {
            isMemoryShort = true;
        }
    });
    if (isMemoryShort)
        throw std::bad_alloc();
    return parts;
}

/// Returns the name of the file whose items take the most memory.
std::string_view largestSource(const ItemList& items) {
    const auto memory = [](const ItemBlock& block) {
        return block.text.size() + block.rows.size() * loadLimits::itemCost;
    };
    const auto largest = std::ranges::max_element(items.blocks(), {}, memory);
    return largest == items.blocks().end() ? std::string_view() : largest->source;
}

} // namespace

Result<std::vector<SearchText>> makeSearchParts(const ItemList& items, std::size_t partSize) {
    try {
        const std::vector<PlannedPart> planned = plannedParts(items, partSize);
        MemoryCharge charge(planned);
        std::vector<SearchText> parts = madeParts(planned, charge);
        if (const ItemBlock* const block = charge.exceedingBlock())
            return invalidDataFile(block->source, "too much text for the size of the file");
        // Fails here while the load can still be refused: Qt ends the program when it gets no memory.
        const ByteBuffer memoryOfTheWindow(items.size() * loadLimits::shownItemCost);
        return parts;
    } catch (const std::bad_alloc&) {
        return notEnoughMemory(largestSource(items));
    }
}

} // namespace kavendra
