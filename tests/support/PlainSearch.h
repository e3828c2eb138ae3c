#pragma once

#include "base/Text.h"
#include "data/ItemList.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The search rule written in the plain way: one folded std::string for each item, std::string::find for each
/// word. Tests and fuzz targets compare SearchIndex with it; benchmarks measure it beside SearchIndex.
class PlainSearch {
public:
    explicit PlainSearch(const ItemList& items) {
        for (std::size_t index = 0; index < items.size(); ++index) {
            std::string text(items.value(index, ItemColumn::title));
            for (const ItemColumn column : {ItemColumn::command, ItemColumn::params, ItemColumn::keywords})
                text.append(" ").append(items.value(index, column));
            m_texts.push_back(fold(text));
        }
    }

    /// Returns the indexes of the items that contain every word, or its Katakana spelling, ascending.
    std::vector<std::uint32_t> matches(std::string_view searchText) const {
        struct Word {
            std::string text, katakana;
        };
        const std::string query = fold(searchText);
        std::vector<Word> words;
        for (const std::string_view word : splitWords(query))
            words.push_back({std::string(word), normalized(hiraganaToKatakana(word))});
        std::vector<std::uint32_t> found;
        for (std::uint32_t index = 0; index < m_texts.size(); ++index) {
            const auto isInItem = [&, &text = m_texts[index]](const Word& word) {
                return text.find(word.text) != std::string::npos ||
                       (word.katakana != word.text && text.find(word.katakana) != std::string::npos);
            };
            if (std::ranges::all_of(words, isInItem))
                found.push_back(index);
        }
        return found;
    }

private:
    static std::string fold(std::string_view text) { return normalized(lowercased(normalized(text))); }

    std::vector<std::string> m_texts;
};

} // namespace kavendra
