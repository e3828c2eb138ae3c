#include "platform/FileReplacement.h"

#include "base/UUID.h"
#include "platform/FileDescriptor.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

namespace kavendra {

namespace {

constexpr int maximumLinks = 40; // as Linux, path_resolution(7)
constexpr int maximumAttempts = 3;

/// Limit of the padding of a file that is written in place; far more than a settings file holds.
constexpr std::size_t maximumPadding = std::size_t{4} << 20;

std::string temporaryNamePrefix(std::string_view target) {
    return "." + std::string(lastPathComponent(target)) + ".kavendra-tmp-";
}

bool isUUIDText(std::string_view text) {
    return text.size() == UUID().text().size() &&
           text.find_first_not_of("0123456789ABCDEF-") == std::string_view::npos;
}

/// Removes temporary files of `target` that killed processes have left. A process that is still writing holds
/// a lock on its file.
void removeLeftovers(const std::string& target) {
    const std::string prefix = temporaryNamePrefix(target);
    for (const std::string& name :
         listDirectory(std::string(parentPath(target))).value_or(std::vector<std::string>())) {
        if (!name.starts_with(prefix) || !isUUIDText(std::string_view(name).substr(prefix.size())))
            continue;
        const std::string path = joinedPath(parentPath(target), name);
        const auto file = openFile(path, O_WRONLY | O_NOFOLLOW);
        const auto status = file ? regularFileStatus(*file, path) : std::unexpected(file.error());
        if (status && status->st_uid == geteuid() && flock(file->get(), LOCK_EX | LOCK_NB) == 0)
            unlink(path.c_str());
    }
}

/// A locked file in the directory of `target`, to be renamed to it; removed by the destructor otherwise.
class TemporaryFile {
public:
    /// Creates an empty file. On failure the object is false and error() is the errno value.
    TemporaryFile(const std::string& target, mode_t permissions, Flush flush = Flush::yes)
        : m_target(target), m_flush(flush) {
        removeLeftovers(target);
        const std::string prefix = joinedPath(parentPath(target), temporaryNamePrefix(target));
        // Try again if another process has removed the file before it was locked.
        for (int attempt = 0; attempt < maximumAttempts && !hasName(); ++attempt) {
            m_path = prefix + UUID::random().text();
            m_file =
                FileDescriptor(open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
            if (!m_file) {
                m_reason = errno;
                return;
            }
            flock(m_file.get(), LOCK_EX | LOCK_NB); // if it fails, it also fails in removeLeftovers
        }
    }
    ~TemporaryFile() {
        if (m_file && !m_path.empty())
            unlink(m_path.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    explicit operator bool() const { return static_cast<bool>(m_file); }
    int error() const { return m_reason; }

    /// Copies owner, group and mode. Returns false if that is not allowed.
    bool takeOwnerAndMode(const struct stat& old) {
        struct stat own{};
        if (fstat(m_file.get(), &own) != 0)
            return false;
        const bool isSame = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
        return (isSame || fchown(m_file.get(), old.st_uid, old.st_gid) == 0) &&
               fchmod(m_file.get(), old.st_mode & 07777) == 0;
    }

    Result<void> write(std::string_view content) {
        if (auto written = writeAll(m_file, m_target, content); !written)
            return written;
        if (m_flush == Flush::yes && fsync(m_file.get()) != 0)
            return systemFailure(m_target, errno);
        return {};
    }

    /// Renames the file to the target. Returns false on failure; error() is the errno value.
    bool takePlace() {
        if (rename(m_path.c_str(), m_target.c_str()) != 0) {
            m_reason = errno;
            return false;
        }
        m_path.clear();
        if (m_flush == Flush::no)
            return true;
        // Flushes the rename. An error is ignored: a power cut could only bring the old file back.
        if (const auto directory = openFile(std::string(parentPath(m_target)), O_RDONLY | O_DIRECTORY))
            fsync(directory->get());
        return true;
    }

private:
    bool hasName() const {
        struct stat status{};
        return m_file && fstat(m_file.get(), &status) == 0 && status.st_nlink > 0;
    }

    std::string m_target;
    std::string m_path;
    Flush m_flush;
    FileDescriptor m_file;
    int m_reason = 0;
};

/// Whether an errno value of open(2) or rename(2) means that the directory does not allow a new file.
bool isRefusal(int reason) {
    constexpr std::array reasons{EACCES, EPERM, EROFS, EBUSY, ENAMETOOLONG};
    return std::ranges::find(reasons, reason) != reasons.end();
}

/// Writes `content` at a position of an open file and flushes it.
Result<void> writeAt(std::size_t position, const FileDescriptor& file, const std::string& path,
                     std::string_view content) {
    if (lseek(file.get(), static_cast<off_t>(position), SEEK_SET) < 0)
        return systemFailure(path, errno);
    if (auto written = writeAll(file, path, content); !written)
        return written;
    if (fsync(file.get()) != 0)
        return systemFailure(path, errno);
    return {};
}

/// Overwrites an open text file. The shorter of the two contents is padded with line feeds: the file first
/// grows to its new size, so that a full disk is detected before the old content is changed; and if the
/// process is killed before the file is truncated, the new text is complete, with empty lines at its end.
Result<void> writeInPlace(const FileDescriptor& file, const std::string& path, std::string_view content,
                          std::size_t oldSize) {
    if (content.size() > oldSize) {
        auto extended = writeAt(oldSize, file, path, std::string(content.size() - oldSize, '\n'));
        if (!extended && ftruncate(file.get(), static_cast<off_t>(oldSize)) != 0)
            return systemFailure(path, errno);
        if (!extended)
            return extended;
    }
    std::string padded(content);
    if (oldSize > content.size())
        padded.append(std::min(oldSize - content.size(), maximumPadding), '\n');
    if (auto written = writeAt(0, file, path, padded); !written)
        return written;
    if (ftruncate(file.get(), static_cast<off_t>(content.size())) != 0 || fsync(file.get()) != 0)
        return systemFailure(path, errno);
    return {};
}

/// Returns the target of the symbolic links at `path`, which may be missing. Fails with ELOOP.
Result<std::string> followingLinks(const std::string& path) {
    std::string result = path;
    for (int links = 0; links < maximumLinks; ++links) {
        std::error_code isNoLink;
        const std::filesystem::path next = std::filesystem::read_symlink(result, isNoLink);
        if (isNoLink)
            return result;
        result = next.is_absolute() ? next.string() : joinedPath(parentPath(result), next.string());
    }
    return systemFailure(path, ELOOP);
}

} // namespace

Result<void> replaceFile(const std::string& path, std::string_view content) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    const auto target = followingLinks(path);
    if (!target)
        return std::unexpected(target.error());
    if (!exists(*target))
        return writeFileAtomically(*target, content);
    const auto file = openFile(*target, O_WRONLY);
    if (!file)
        return std::unexpected(file.error());
    const auto status = regularFileStatus(*file, *target);
    if (!status)
        return std::unexpected(status.error());
    if (status->st_nlink == 1) {
        TemporaryFile temporary(*target, 0600);
        if (temporary && temporary.takeOwnerAndMode(*status)) {
            if (auto written = temporary.write(content); !written)
                return written;
            if (temporary.takePlace())
                return {};
        }
        if (temporary.error() != 0 && !isRefusal(temporary.error()))
            return systemFailure(*target, temporary.error());
    }
    return writeInPlace(*file, *target, content, static_cast<std::size_t>(status->st_size));
}

Result<void> writeFileAtomically(const std::string& path, std::string_view content, mode_t permissions,
                                 Flush flush) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    TemporaryFile temporary(path, permissions, flush);
    if (!temporary)
        return systemFailure(path, temporary.error());
    if (auto written = temporary.write(content); !written)
        return written;
    if (!temporary.takePlace())
        return systemFailure(path, temporary.error());
    return {};
}

} // namespace kavendra
