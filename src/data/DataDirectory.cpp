#include "data/DataDirectory.h"

#include "base/Text.h"
#include "data/DataErrors.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <utility>

namespace kavendra {

namespace {

constexpr std::string_view sampleText =
    "Title,Command,Params,Keywords\n"
    "Open Apple,https://www.apple.com/,,browser web apple\n"
    "Open Apple in Safari,/Applications/Safari.app,https://www.apple.com/,browser safari web apple\n"
    "Open Xcode,/Applications/Xcode.app,,app developer ide";

} // namespace

Result<void> ensureDataDirectory(const std::string& path) {
    return exists(path) ? Result<void>{} : createDirectories(path);
}

Result<std::vector<DataFile>> listDataFiles(const std::string& path) {
    if (!isDirectory(path))
        return LaunchError::dataDirectoryNotFound(path);
    auto names = listDirectory(path);
    if (!names)
        return std::unexpected(names.error());
    std::ranges::sort(*names, localizedLess);
    std::vector<DataFile> files;
    for (std::string& name : *names) {
        const auto kind = dataFileKind(name);
        if (kind && !name.starts_with(ignorePrefix))
            files.push_back({.path = joinedPath(path, name), .name = std::move(name), .kind = *kind});
    }
    return files;
}

Result<void> writeSampleDataFile(const std::string& directory) {
    if (auto created = createDirectories(directory); !created)
        return created;
    const std::string path = joinedPath(directory, "Sample.csv");
    if (exists(path))
        return {};
    return writeFileAtomically(path, sampleText);
}

} // namespace kavendra
