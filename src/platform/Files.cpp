#include "platform/Files.h"

#include "base/Text.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <system_error>

namespace kavendra {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t copyPieceSize = std::size_t{256} << 10;

fs::file_status statusOf(const std::string& path) {
    std::error_code ignored;
    return containsNUL(path) ? fs::file_status(fs::file_type::not_found) : fs::status(path, ignored);
}

/// Calls a function of std::filesystem that reports into the error code, unless `path` has a NUL byte.
Result<void> attempt(const std::string& path, const std::function<void(std::error_code&)>& function) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    std::error_code reason;
    function(reason);
    if (reason)
        return systemFailure(path, reason.value());
    return {};
}

/// Returns the size of an open regular file. Fails for other types, and with EFBIG above `maximumSize`.
Result<std::size_t> regularFileSize(const FileDescriptor& file, const std::string& path,
                                    std::size_t maximumSize = std::numeric_limits<std::size_t>::max()) {
    const auto status = regularFileStatus(file, path);
    if (!status)
        return std::unexpected(status.error());
    const auto size = static_cast<std::size_t>(status->st_size);
    if (size > maximumSize)
        return systemFailure(path, EFBIG);
    return size;
}

/// Copies an open file, from its position to its end, to another one. The paths are for error texts.
Result<void> copyContent(const FileDescriptor& from, const std::string& source, const FileDescriptor& to,
                         const std::string& destination) {
    std::vector<char> piece(copyPieceSize);
    for (;;) {
        const ssize_t count = read(from.get(), piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemFailure(source, errno);
        if (count == 0)
            return {};
        const std::string_view content(piece.data(), static_cast<std::size_t>(count));
        if (auto written = writeAll(to, destination, content); !written)
            return written;
    }
}

/// Restricts a directory of this user to mode 0700. Returns false for anything else.
bool makePrivate(const std::string& path) {
    const auto directory = openFile(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat status{};
    return directory && fstat(directory->get(), &status) == 0 && status.st_uid == geteuid() &&
           fchmod(directory->get(), 0700) == 0;
}

} // namespace

bool exists(const std::string& path) {
    return fs::exists(statusOf(path));
}

bool isDirectory(const std::string& path) {
    return fs::is_directory(statusOf(path));
}

bool isApplicationDirectory(const std::string& path) {
    return lowercased(path).ends_with(".app") && isDirectory(path);
}

bool isExecutableFile(const std::string& path) {
    return !containsNUL(path) && !isDirectory(path) && access(path.c_str(), X_OK) == 0;
}

std::string absolutePath(const std::string& path) {
    std::error_code failed;
    const fs::path whole = fs::absolute(path, failed);
    if (failed)
        return path;
    std::string result;
    for (const fs::path& component : whole.relative_path())
        if (!component.empty() && component != ".")
            result.append("/").append(component.native());
    return result.empty() ? "/" : result;
}

Result<FileDescriptor> openRegularFile(const std::string& path, std::size_t maximumSize) {
    auto file = openFile(path, O_RDONLY);
    if (!file)
        return std::unexpected(file.error());
    if (const auto size = regularFileSize(*file, path, maximumSize); !size)
        return std::unexpected(size.error());
    return file;
}

Result<ByteBuffer> readFile(const std::string& path, std::size_t maximumSize) {
    const auto file = openRegularFile(path, maximumSize);
    if (!file)
        return std::unexpected(file.error());
    const auto size = regularFileSize(*file, path);
    if (!size)
        return std::unexpected(size.error());
    // The size is only a hint: a file may grow meanwhile, and files in /proc have size 0.
    ByteBuffer content(*size + 1);
    for (;;) {
        if (content.size() == content.capacity())
            content.reserve(content.capacity() * 2);
        const ssize_t count =
            read(file->get(), content.data() + content.size(), content.capacity() - content.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemFailure(path, errno);
        if (count == 0)
            return content;
        content.setSize(content.size() + static_cast<std::size_t>(count));
        if (content.size() > maximumSize)
            return systemFailure(path, EFBIG);
    }
}

Result<void> createDirectories(const std::string& path) {
    return attempt(path, [&](std::error_code& reason) { fs::create_directories(path, reason); });
}

Result<std::string> privateDirectory(const std::string& path) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return systemFailure(path, errno);
    if (makePrivate(path))
        return path;
    std::string unique = path + "-XXXXXX";
    if (!mkdtemp(unique.data()))
        return systemFailure(path, errno);
    return unique;
}

Result<FileDescriptor> unnamedTemporaryFile() {
    std::string path = joinedPath(temporaryDirectory(), "kavendra-XXXXXX");
    FileDescriptor file(mkostemp(path.data(), O_CLOEXEC));
    if (!file)
        return systemFailure(path, errno);
    unlink(path.c_str());
    return file;
}

Result<std::vector<std::string>> listDirectory(const std::string& path) {
    std::vector<std::string> names;
    const auto listed = attempt(path, [&](std::error_code& reason) {
        for (fs::directory_iterator entry(path, reason); !reason && entry != fs::end(entry);
             entry.increment(reason))
            names.push_back(entry->path().filename().string());
    });
    if (!listed)
        return std::unexpected(listed.error());
    return names;
}

Result<void> copyFile(const std::string& source, const std::string& destination) {
    const auto from = openFile(source, O_RDONLY);
    if (!from)
        return std::unexpected(from.error());
    if (const auto size = regularFileSize(*from, source); !size)
        return std::unexpected(size.error());
    const auto to = openFile(destination, O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (!to)
        return std::unexpected(to.error());
    const auto copied = copyContent(*from, source, *to, destination);
    if (!copied)
        unlink(destination.c_str());
    return copied;
}

Result<void> setPermissions(const std::string& path, unsigned permissions) {
    return attempt(path,
                   [&](std::error_code& reason) { fs::permissions(path, fs::perms(permissions), reason); });
}

Result<void> removeFile(const std::string& path) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    if (unlink(path.c_str()) != 0 && errno != ENOENT)
        return systemFailure(path, errno);
    return {};
}

Result<void> appendToFile(const std::string& path, std::string_view content) {
    const auto file = openFile(path, O_WRONLY | O_APPEND);
    if (!file)
        return std::unexpected(file.error());
    if (const auto size = regularFileSize(*file, path); !size)
        return std::unexpected(size.error());
    return writeAll(*file, path, content);
}

} // namespace kavendra
