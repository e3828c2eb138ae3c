#include "data/SampleDataFile.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace kavendra {

namespace {

constexpr std::string_view sampleText =
    "Title,Command,Params,Keywords\n"
    "Open Apple,https://www.apple.com/,,browser web apple\n"
    "Open Apple in Safari,/Applications/Safari.app,https://www.apple.com/,browser safari web apple\n"
    "Open Xcode,/Applications/Xcode.app,,app developer ide";

} // namespace

Result<void> writeSampleDataFile(const std::string& directory) {
    if (auto created = createDirectories(directory); !created)
        return created;
    const std::string path = joinedPath(directory, "Sample.csv");
    if (exists(path))
        return {};
    return writeFileAtomically(path, sampleText);
}

} // namespace kavendra
