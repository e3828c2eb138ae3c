#include "search/SubstringSearch.h"

#include <utility>

namespace kavendra {

namespace {

constexpr std::size_t samplePieces = 64;
constexpr std::size_t samplePieceSize = 4096;

} // namespace

ByteFrequencies::ByteFrequencies(std::string_view text) {
    for (std::size_t piece = 0; piece < samplePieces; ++piece) {
        const std::size_t begin = text.size() / samplePieces * piece;
        for (const char byte : text.substr(begin, samplePieceSize)) {
            ++counts[static_cast<unsigned char>(byte)];
            ++total;
        }
    }
}

double ByteFrequencies::operator[](char byte) const {
    return (counts[static_cast<unsigned char>(byte)] + 1.0) / (total + 1.0);
}

SubstringSearch::SubstringSearch(std::string word, const ByteFrequencies& frequencies)
    : text(std::move(word)) {
    const auto rarer = [&](std::size_t a, std::size_t b) {
        return frequencies[text[a]] < frequencies[text[b]];
    };
    for (std::size_t at = 1; at < text.size(); ++at)
        if (rarer(at, rarestAt))
            rarestAt = at;
    secondAt = rarestAt == 0 ? text.size() - 1 : 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (at != rarestAt && rarer(at, secondAt))
            secondAt = at;
    rarest = text[rarestAt];
    second = text[secondAt];
    expected = frequencies[rarest] * (rarestAt == secondAt ? 1.0 : frequencies[second]);
}

} // namespace kavendra
