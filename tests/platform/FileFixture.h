#pragma once

#include "platform/Files.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kavendra {

class FileFixture : public testing::Test {
protected:
    static constexpr uid_t nobody = 65534;

    /// Returns an error text with "." for the test's directory.
    std::string reasonOf(const auto& result) const {
        const std::string description = result ? "no failure" : result.error().description;
        const bool isHere = description.starts_with(directory.path());
        return isHere ? "." + description.substr(directory.path().size()) : description;
    }

    std::vector<std::string> names(const std::string& subdirectory = {}) const {
        auto result = *listDirectory(directory.path(subdirectory));
        std::ranges::sort(result);
        return result;
    }

    /// Returns the status of a file; follows symbolic links.
    struct stat statusOf(const std::string& path) const {
        struct stat status{};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status;
    }

    std::string makeLink(const std::string& target, const std::string& name) const {
        EXPECT_EQ(symlink(target.c_str(), directory.path(name).c_str()), 0);
        return directory.path(name);
    }

    std::string makePipe() const {
        EXPECT_EQ(mkfifo(directory.path("pipe").c_str(), 0600), 0);
        return directory.path("pipe");
    }

    TemporaryDirectory directory;
};

} // namespace kavendra
