#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The folders of src/, and which others each may include.
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

/// Returns the folder that a file of src/ counts to: files of one system belong to the folder above.
std::string folderOf(const fs::path& file) {
    const fs::path folder = file.parent_path();
    const bool isSystem = folder.filename() == "freedesktop" || folder.filename() == "macos";
    return (isSystem ? folder.parent_path() : folder).generic_string();
}

} // namespace

TEST(Includes, pointToLowerLayers) {
    constexpr std::string_view include = "#include \"";
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(SOURCE_DIRECTORY)) {
        const fs::path file = entry.path().lexically_relative(SOURCE_DIRECTORY);
        const std::string from = folderOf(file);
        if (!entry.is_regular_file() || from.empty()) // main.cpp may include everything
            continue;
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            if (!line.starts_with(include))
                continue;
            ++count;
            const std::string name = line.substr(include.size(), line.rfind('"') - include.size());
            const std::string to = folderOf(name);
            EXPECT_TRUE(from == to || allowed.at(from).contains(to)) << file << " includes " << name;
        }
    }
    EXPECT_GT(count, 100U) << "the sources were not found";
}
