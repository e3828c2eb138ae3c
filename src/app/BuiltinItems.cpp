#include "app/BuiltinItems.h"

#include <set>
#include <utility>

namespace kavendra {

void keepAvailableItems(ItemBlock& items, const BuiltinCommand& commandHere) {
    constexpr auto title = static_cast<std::size_t>(ItemColumn::title);
    constexpr auto command = static_cast<std::size_t>(ItemColumn::command);
    std::set<std::string> titles;
    for (ItemRow row : std::exchange(items.rows, {})) {
        std::string titleText(items.value(row, title));
        if (titles.contains(titleText))
            continue;
        const auto here = commandHere(std::string(items.value(row, command)));
        if (!here)
            continue;
        row[command] = {.offset = static_cast<std::uint32_t>(items.text.size()),
                        .length = static_cast<std::uint32_t>(here->size())};
        items.text.append(*here);
        items.rows.push_back(row);
        titles.insert(std::move(titleText));
    }
}

} // namespace kavendra
