#include "search/SubstringSearch.h"

#include "base/ByteBuffer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

namespace {

std::vector<std::size_t> plainPlaces(std::string_view text, std::string_view word) {
    std::vector<std::size_t> places;
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
        places.push_back(at);
    return places;
}

template <auto places>
std::vector<std::size_t> placesBy(std::string_view text, const SubstringSearch& search) {
    std::vector<std::size_t> found;
    search.forEachMatch<places>(text, [&](std::size_t position) {
        found.push_back(position);
        return position + 1;
    });
    return found;
}

} // namespace

TEST(SubstringSearch, findsEveryPlaceInTextsOfAnyLengthAndAlignment) {
    std::mt19937 random(3);
    const auto text = [&](std::size_t size, std::string_view letters) {
        std::string made(size, 0);
        for (char& letter : made)
            letter = letters[random() % letters.size()];
        return made;
    };
    for (int round = 0; round < 20'000; ++round) {
        const std::string_view letters = round % 2 == 0 ? "ab" : "abcdefgh";
        const ByteBuffer buffer{std::string_view(text(random() % 300, letters))};
        std::string_view searched = buffer.view();
        searched.remove_prefix(random() % (searched.size() + 1));
        searched.remove_suffix(random() % (searched.size() + 1) / 2);
        const bool taken = !searched.empty() && random() % 2 == 0;
        std::string word = taken
                               ? std::string(searched.substr(random() % searched.size(), 1 + random() % 100))
                               : text(1 + random() % 4, letters);
        const SubstringSearch search(word, ByteFrequencies(round % 3 == 0 ? "" : searched));
        const std::vector<std::size_t> expected = plainPlaces(searched, word);
        ASSERT_EQ(placesBy<commonOffsets>(searched, search), expected) << searched << " / " << word;
        ASSERT_EQ(placesBy<commonOffsetsPlain>(searched, search), expected) << searched << " / " << word;
        ASSERT_EQ(search.isIn(searched), !expected.empty());
    }
}

} // namespace kavendra
