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
    {"platform", {}},
    {"data", {"platform"}},
    {"search", {"platform", "data"}},
    {"config", {"platform", "data"}},
    {"launch", {"platform", "data", "search", "config"}},
    {"ui", {"platform", "data", "search", "config", "launch"}},
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

std::string folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.begin()->string() : std::string();
}

bool mayUseToolkits(const fs::path& file) {
    const std::string folder = file.parent_path().generic_string();
    if (file.stem() == "ContentView" || file.stem() == "WindowMenus") // the window's model
        return false;
    return folder == "ui" || folder.starts_with("platform/desktop") || folder.empty();
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
