#include "base/Text.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchDirectory.h"
#include "launch/TypedPath.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <cstdint>

using namespace kavendra;

namespace {

/// A home directory with some files, also used as the working directory.
struct Home : ScratchDirectory {
    Home() {
        setenv("HOME", path.c_str(), 1);
        std::filesystem::current_path(path);
        for (const char* directory : {"a", "b c", "it's", "-rf", "日本", "a/.b"})
            std::filesystem::create_directory(directory);
        for (const char* file : {"x", "a/y.csv", "q\"", "b c/ z "})
            writeBytes(file, {});
        std::filesystem::create_symlink("nowhere", "dangling");
        std::filesystem::create_symlink("..", "a/up");
    }
};

bool endsLikeTyping(std::string_view path) {
    return trimmed(path) != path || path.ends_with('"') || path.ends_with('\'');
}

} // namespace

/// A typed path is absolute and exists. Its text, also in quotes, gives the same path again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Home home;
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (text.contains("proc"))
        return 0; // the content of /proc changes between calls
    const auto path = typedPathOf(text);
    const auto file = typedPathFileOf(text);
    const auto directory = typedPathDirectoryOf(text);
    require(directory.has_value() == path.has_value());
    if (trimmed(text) == text)
        require(typedPathOf(" '\"" + text + "\"'\n") == path);
    if (!path)
        return 0;

    require(path->starts_with('/') && exists(*path) && isDirectory(*directory));
    require(file ? *file == *path && !isDirectory(*path) : *directory == *path);
    require(!path->contains("//") && !path->ends_with("/.") && !path->contains("/./"));
    require(*path == "/" || joinedPath(parentPath(*path), lastPathComponent(*path)) == *path);
    if (!endsLikeTyping(*path))
        require(typedPathOf(*path) == path);
    return 0;
}
