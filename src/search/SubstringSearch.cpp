#include "search/SubstringSearch.h"

#include <utility>

namespace kavendra {

namespace {

// The sample of a text: pieces at equal distances.
constexpr std::size_t samplePieces = 16;
constexpr std::size_t samplePieceSize = 4096;

} // namespace

void ByteFrequencies::add(std::string_view text) {
    for (std::size_t piece = 0; piece < samplePieces; ++piece) {
        const std::size_t begin = text.size() / samplePieces * piece;
        for (const char byte : text.substr(begin, samplePieceSize)) {
            ++m_counts[static_cast<unsigned char>(byte)];
            ++m_total;
        }
    }
}

double ByteFrequencies::operator[](char byte) const {
    return (m_counts[static_cast<unsigned char>(byte)] + 1.0) / (m_total + 1.0);
}

SubstringSearch::SubstringSearch(std::string word, const ByteFrequencies& frequencies)
    : m_word(std::move(word)) {
    // Of a word of one byte, that byte is used twice.
    const auto rarer = [&](std::size_t a, std::size_t b) {
        return frequencies[m_word[a]] < frequencies[m_word[b]];
    };
    for (std::size_t at = 1; at < m_word.size(); ++at)
        if (rarer(at, m_rarestAt))
            m_rarestAt = at;
    m_secondAt = m_rarestAt == 0 ? m_word.size() - 1 : 0;
    for (std::size_t at = 0; at < m_word.size(); ++at)
        if (at != m_rarestAt && rarer(at, m_secondAt))
            m_secondAt = at;
    m_rarest = m_word[m_rarestAt];
    m_second = m_word[m_secondAt];
    m_expectedShare = frequencies[m_rarest] * (m_rarestAt == m_secondAt ? 1.0 : frequencies[m_second]);
}

} // namespace kavendra
