#include "data/csv/CSVTokenizer.h"

namespace kavendra {

void unescapeCSVField(char* text, CSVField& field) {
    if (field.begin == field.end)
        return;
    bool inQuotes = text[field.begin] == '"';
    if (inQuotes)
        ++field.begin;

    char* const end = text + field.end;
    char* read = text + field.begin;
    char* written = read;
    const auto keepUpTo = [&](char* runEnd) {
        const auto length = static_cast<std::size_t>(runEnd - read);
        if (written != read)
            std::memmove(written, read, length);
        written += length;
        read = runEnd;
    };
    while (read != end) {
        auto* quote = static_cast<char*>(std::memchr(read, '"', static_cast<std::size_t>(end - read)));
        keepUpTo(quote ? quote : end);
        if (!quote)
            break;
        ++read;
        if (inQuotes && read != end && *read == '"') {
            ++read;
            *written++ = '"';
        } else {
            inQuotes = !inQuotes;
        }
    }
    field.end = static_cast<std::size_t>(written - text);
}

} // namespace kavendra
