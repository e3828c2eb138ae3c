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

/// The zip archive of a workbook. Error texts do not contain its name.
namespace kavendra {

/// An entry that is being read.
class ArchiveEntry {
public:
    /// Inflates at most `capacity` bytes into `buffer`. Returns their number, 0 at the end. Fails if the
    /// archive is damaged (checksum and length are checked only at the end) or the entry is longer than the
    /// archive says.
    Result<std::size_t> read(char* buffer, std::size_t capacity);

    const std::string& name() const { return m_name; }
    /// The length in the archive's directory; read() checks it.
    std::size_t size() const { return m_length; }

private:
    friend class WorkbookArchive;
    struct Close {
        void operator()(zip_file* file) const;
    };

    std::unique_ptr<zip_file, Close> m_file;
    std::string m_name;
    std::size_t m_length = 0;
    std::size_t m_bytesRead = 0;
};

class WorkbookArchive {
public:
    /// Opens the archive and reads its list of entries; bytes after the archive's end are ignored. If the
    /// file changes while it is read, reading fails.
    static Result<WorkbookArchive> open(FileDescriptor file);
    /// The same for bytes in memory, which must outlive the archive.
    static Result<WorkbookArchive> open(std::string_view bytes);

    /// Opens the entry with this name; of several, the last one. Fails with "missing NAME" if there is none
    /// or it is empty. Fails if the entry is encrypted or its compression method is neither stored nor
    /// deflate, and if all entries opened so far exceed workbookLimits::inflatedSize in total.
    Result<ArchiveEntry> readArchiveEntry(std::string_view name);

    /// Returns nothing if there is no such entry. Fails also if a name in the list is not UTF-8.
    Result<std::optional<ArchiveEntry>> readOptionalArchiveEntry(std::string_view name);

    /// The length of the archive itself.
    std::size_t fileSize() const { return m_fileSize; }

    /// The sum of the lengths in the archive's directory.
    std::size_t inflatedSize() const { return m_inflatedSize; }

private:
    struct Discard {
        void operator()(zip* archive) const;
    };

    static Result<WorkbookArchive> open(zip_source* source);
    Result<void> listEntries(std::size_t fileSize);

    std::unique_ptr<zip, Discard> m_archive;
    /// The index of each entry by its name; the archive owns the names.
    std::map<std::string_view, std::size_t> m_entries;
    bool m_namesAreUTF8 = true;
    std::size_t m_fileSize = 0;
    std::size_t m_inflatedSize = 0;
    std::size_t m_inflatableSize = 0; ///< remaining bytes that may be read
};

} // namespace kavendra
