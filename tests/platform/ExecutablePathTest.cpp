#include "platform/ExecutablePath.h"

#include "platform/Files.h"
#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(ExecutablePath, namesTheFileThatRuns) {
    const std::string path = executablePath();
    EXPECT_TRUE(path.starts_with('/')) << path;
    EXPECT_TRUE(std::filesystem::equivalent(path, "/proc/self/exe"));
}

TEST(ExecutablePath, namesTheImageThatTheFileIsIn) {
    const std::string file = executablePath();
    const std::string directory = std::filesystem::path(file).parent_path().string();
    struct Case {
        std::string image, mount, expected;
    };
    for (const auto& [image, mount, expected] : {
             Case{"/opt/k.AppImage", directory, "/opt/k.AppImage"},
             Case{"/opt/k.AppImage", "/tmp/.mount_other", file},
             Case{"/opt/k.AppImage", directory.substr(0, directory.size() - 1), file},
             Case{"/opt/k.AppImage", "", file},
             Case{"k.AppImage", directory, file},
         }) {
        setenv("APPIMAGE", image.c_str(), 1);
        setenv("APPDIR", mount.c_str(), 1);
        EXPECT_EQ(executablePath(), expected) << image << " at " << mount;
    }
}

} // namespace kavendra
