#pragma once

#include "fuzz/Require.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace kavendra {

/// A temporary directory for targets that read files, removed when the program ends normally.
class ScratchDirectory {
public:
    ScratchDirectory() {
        path = (std::filesystem::temp_directory_path() / "kavendra-fuzz-XXXXXX").string();
        require(mkdtemp(path.data()) != nullptr);
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    std::string path;
};

inline void writeBytes(const std::string& path, std::string_view bytes) {
    require(static_cast<bool>(std::ofstream(path, std::ios::binary) << bytes));
}

inline std::string readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kavendra
