#include "platform/desktop/KeyFile.h"

#include "platform/Files.h"

#include <string_view>

namespace kavendra {

namespace {

/// Size limit for a desktop entry.
constexpr std::size_t maximumEntrySize = std::size_t{1} << 20;

/// Quotes an argument for the Exec key: in double quotes, special characters escaped by a backslash, and "%",
/// which begins a field code, doubled.
std::string quotedArgument(std::string_view argument) {
    std::string quoted = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").contains(character))
            quoted += '\\';
        if (character == '%')
            quoted += '%';
        quoted += character;
    }
    return quoted + '"';
}

} // namespace

KeyFile readDesktopEntry(const std::string& path) {
    const auto content = readFile(path, maximumEntrySize);
    if (!content)
        return nullptr;
    KeyFile entry(g_key_file_new());
    const bool isEntry =
        g_key_file_load_from_data(entry.get(), content->data(), content->size(), G_KEY_FILE_NONE, nullptr) &&
        g_key_file_has_group(entry.get(), G_KEY_FILE_DESKTOP_GROUP);
    return isEntry ? std::move(entry) : nullptr;
}

// The program name must not contain "=", and GLib searches for the program before it replaces "%%" by "%": a
// path with one of them is started by a shell.
std::string execLine(const std::string& executable) {
    const std::string program = quotedArgument(executable);
    return executable.find_first_of("=%") == std::string::npos
               ? program
               : "sh -c " + quotedArgument("exec \"$0\" \"$@\"") + " " + program;
}

} // namespace kavendra
