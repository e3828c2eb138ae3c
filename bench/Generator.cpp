#include "bench/Generator.h"

#include "data/csv/CSVReader.h"

#include <array>
#include <cstdlib>
#include <random>
#include <string_view>
#include <utility>

namespace kavendra {

namespace {

constexpr std::array<std::string_view, 24> words{
    "Report", "budget",   "Calendar", "design", "Meeting", "notes",  "Project",  "server",
    "Wiki",   "database", "Invoice",  "backup", "Review",  "travel", "Photos",   "archive",
    "Team",   "status",   "Customer", "music",  "Weekly",  "build",  "Contract", "printer"};
constexpr std::array<std::string_view, 8> japaneseWords{"ひらがな",     "カタカナ", "会議資料", "予算",
                                                        "プロジェクト", "しゃしん", "顧客",     "ブラウザ"};
constexpr std::size_t rareWordEvery = 50'000;

class RowGenerator {
public:
    std::string row(std::size_t number) {
        const bool japanese = below(20) == 0;
        const auto word = [&] { return japanese ? pick(japaneseWords) : pick(words); };
        std::string text;
        text.append(word()).append(" ").append(word()).append(" ").append(std::to_string(number));
        text.append(below(20) == 0 ? ",\"/opt/tools, more/" : ",/usr/share/").append(pick(words));
        text.append("/").append(pick(words)).append(text.contains('"') ? "\"," : ",");
        text.append(below(2) == 0 ? "--open " : "--profile=work ").append(std::to_string(below(10'000)));
        text.append(",").append(word()).append(" ").append(pick(words));
        text.append(below(20) == 0 ? std::string(" ") + commonWord : " tool");
        if (number % rareWordEvery == rareWordEvery / 2)
            text.append(" ").append(rareWord);
        return text.append("\n");
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    template <std::size_t count>
    std::string_view pick(const std::array<std::string_view, count>& from) {
        return from[below(count)];
    }

    std::mt19937_64 m_random{20240229};
};

} // namespace

std::string generateCSV(std::size_t rows) {
    RowGenerator generator;
    std::string text = "Title,Command,Params,Keywords\n";
    text.reserve(rows * 96);
    for (std::size_t number = 0; number < rows; ++number)
        text += generator.row(number);
    return text;
}

ItemList generateItems(std::size_t rows) {
    auto block = readCSVItems(ByteBuffer(generateCSV(rows)), "generated.csv", "generated.csv").items;
    if (!block)
        std::abort();
    ItemList items;
    items.append(std::move(*block));
    return items;
}

} // namespace kavendra
