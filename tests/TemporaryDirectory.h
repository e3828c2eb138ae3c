#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace kavendra {

/// A temporary directory, removed with its content.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kavendra-test-XXXXXX").string();
        m_path = mkdtemp(pattern.data());
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& path() const { return m_path; }
    std::string path(std::string_view name) const { return m_path + "/" + std::string(name); }

    /// Writes a file, with the directories above it, and returns its path.
    std::string write(std::string_view name, std::string_view content) const {
        std::error_code ignored;
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path(), ignored);
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    std::string writeProgram(std::string_view name, std::string_view content = "#!/bin/sh\n") const {
        std::filesystem::permissions(write(name, content), std::filesystem::perms(0755));
        return path(name);
    }

    std::string read(std::string_view name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string m_path;
};

} // namespace kavendra
