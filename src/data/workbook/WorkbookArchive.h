#pragma once

#include "base/Result.h"
#include "platform/FileDescriptor.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct zip;
struct zip_file;
struct zip_source;

/// The zip archive that a workbook is. Failures describe what is wrong with the archive, without its name.
namespace kavendra {

/// An entry that is being read.
class ArchiveEntry {
public:
    /// Inflates the next bytes into `buffer`, at most `capacity`, and returns how many; none are left at 0.
    /// Fails when the archive is damaged (checksum and length are known to be right only at the end) or the
    /// entry is longer than the archive says.
    Result<std::size_t> read(char* buffer, std::size_t capacity);

    const std::string& name() const { return entryName; }
    /// The length that the archive gives, which read() holds it to.
    std::size_t size() const { return length; }

private:
    friend class WorkbookArchive;
    struct Close {
        void operator()(zip_file* file) const;
    };

    std::unique_ptr<zip_file, Close> file;
    std::string entryName;
    std::size_t length = 0;
    std::size_t bytesRead = 0;
};

class WorkbookArchive {
public:
    /// Opens the archive that `file` is and reads its list of entries; bytes behind the archive's end do no
    /// harm. What happens to the file while it is read can only make reading fail.
    static Result<WorkbookArchive> open(FileDescriptor file);
    /// The same for bytes in memory, which must outlive the archive.
    static Result<WorkbookArchive> open(std::string_view bytes);

    /// Begins to read the entry of exactly that name, the last of them in the archive's list. Fails with
    /// "missing NAME" when there is none or it is empty, when it is encrypted or packed in an unusual way,
    /// and when all that was read would become longer than a workbook may be. An entry counts each time that
    /// it is read.
    Result<ArchiveEntry> readArchiveEntry(std::string_view name);

    /// The same for an entry that need not be there. Fails also when a name in the list is not UTF-8.
    Result<std::optional<ArchiveEntry>> readOptionalArchiveEntry(std::string_view name);

    /// The length of the archive itself.
    std::size_t fileSize() const { return sizeOfFile; }

    /// The length of all entries together, as the archive gives it.
    std::size_t inflatedSize() const { return sizeOfAll; }

private:
    struct Discard {
        void operator()(zip* archive) const;
    };

    static Result<WorkbookArchive> open(zip_source* source);
    Result<void> listEntries(std::size_t fileSize);

    std::unique_ptr<zip, Discard> archive;
    /// The index of each entry by its name, which belongs to the archive.
    std::map<std::string_view, std::size_t> entries;
    bool namesAreUTF8 = true;
    std::size_t sizeOfFile = 0;
    std::size_t sizeOfAll = 0;
    std::size_t inflatableSize = 0; ///< what may still be read
};

} // namespace kavendra
