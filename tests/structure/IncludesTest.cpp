#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// What the files of a folder under src/ may include besides their own folder.
const std::map<std::string, std::set<std::string>> allowed{
    {"base", {}},
    {"platform", {"base"}},
    {"platform/desktop", {"base", "platform"}},
    {"data", {"base", "platform"}},
    {"data/csv", {"base", "platform", "data"}},
    {"data/workbook", {"base", "platform", "data"}},
    {"search", {"base", "platform", "data"}},
    {"config", {"base", "platform", "data"}},
    {"launch", {"base", "platform", "data", "search", "config"}},
    {"app", {"base", "platform", "data", "data/csv", "data/workbook", "search", "config", "launch"}},
    {"ui", {"base", "platform", "data", "search", "config", "launch", "app"}},
};

struct Include {
    fs::path file; ///< relative to src/
    std::string name;
    bool isOwn; ///< written with quotes
};

std::vector<Include> includes() {
    std::vector<Include> found;
    for (const auto& entry : fs::recursive_directory_iterator(SOURCE_DIRECTORY)) {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp")
            continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
            if (line.starts_with("#include "))
                found.push_back({entry.path().lexically_relative(SOURCE_DIRECTORY),
                                 line.substr(10, line.size() - 11), line[9] == '"'});
    }
    return found;
}

/// The layer of a file: its folder, but the folder of what differs between systems belongs to the one above.
std::string folderOf(const fs::path& path) {
    const fs::path folder = path.parent_path();
    const bool isSystem = folder.filename() == "freedesktop" || folder.filename() == "macos";
    return (isSystem ? folder.parent_path() : folder).generic_string();
}

bool mayUseToolkits(const fs::path& file) {
    const std::string folder = folderOf(file);
    return folder == "ui" || folder == "platform/desktop" || folder.empty();
}

bool isToolkit(const std::string& name) {
    return (name.starts_with('Q') && name.size() > 1 && std::isupper(static_cast<unsigned char>(name[1]))) ||
           name.starts_with("Qt") || name.starts_with("gio/") || name.starts_with("glib");
}

} // namespace

TEST(Includes, pointInOneDirection) {
    std::size_t count = 0;
    for (const Include& include : includes()) {
        const std::string from = folderOf(include.file);
        if (!include.isOwn || from.empty()) // main may include everything
            continue;
        ++count;
        const std::string to = folderOf(include.name);
        EXPECT_TRUE(from == to || allowed.at(from).contains(to))
            << include.file << " includes " << include.name;
    }
    EXPECT_GT(count, 100U) << "the sources were not found";
}

TEST(Includes, keepToolkitsOutOfTheCore) {
    for (const Include& include : includes())
        EXPECT_TRUE(!isToolkit(include.name) || mayUseToolkits(include.file))
            << include.file << " includes " << include.name;
}
