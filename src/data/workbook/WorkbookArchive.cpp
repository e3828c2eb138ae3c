#include "data/workbook/WorkbookArchive.h"

#include "base/TextDecoding.h"
#include "data/workbook/WorkbookLimits.h"
#include "data/workbook/ZipEndRecords.h"

#include <zip.h>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace kavendra {

namespace {

/// The bytes of an entry beside its data and its name: a header in front of the data, one in the directory.
constexpr std::size_t directoryHeader = 46;
constexpr std::size_t entryOverhead = 30 + directoryHeader;

// libzip reads 65,536 entries more than the end record counts when the directory has them.
static_assert(workbookLimits::directorySize < 65'536 * directoryHeader);

std::unexpected<Error> failure(std::string_view text) {
    return std::unexpected(Error{std::string(text)});
}

std::size_t saturatingSum(std::size_t a, std::size_t b) {
    return a > std::numeric_limits<std::size_t>::max() - b ? std::numeric_limits<std::size_t>::max() : a + b;
}

class LibraryError {
public:
    explicit LibraryError(int code = ZIP_ER_OK) { zip_error_init_with_code(&m_error, code); }
    ~LibraryError() { zip_error_fini(&m_error); }
    LibraryError(const LibraryError&) = delete;
    LibraryError& operator=(const LibraryError&) = delete;

    zip_error_t* get() { return &m_error; }

private:
    zip_error_t m_error{};
};

} // namespace

void ArchiveEntry::Close::operator()(zip_file* file) const {
    zip_fclose(file);
}

Result<std::size_t> ArchiveEntry::read(char* buffer, std::size_t capacity) {
    const zip_int64_t count = zip_fread(m_file.get(), buffer, capacity);
    if (count < 0)
        return failure(zip_file_strerror(m_file.get()));
    m_bytesRead += static_cast<std::size_t>(count);
    if (m_bytesRead > m_length || (count == 0 && m_bytesRead < m_length))
        return failure("not as long as the archive says");
    return static_cast<std::size_t>(count);
}

void WorkbookArchive::Discard::operator()(zip* archive) const {
    zip_discard(archive);
}

Result<WorkbookArchive> WorkbookArchive::open(FileDescriptor file) {
    FILE* const stream = fdopen(file.get(), "rb");
    if (!stream)
        return failure(zip_error_strerror(LibraryError(ZIP_ER_MEMORY).get()));
    file.release();
    LibraryError error;
    zip_source_t* source = zip_source_filep_create(stream, 0, -1, error.get());
    if (!source) {
        std::fclose(stream);
        return failure(zip_error_strerror(error.get()));
    }
    return open(source);
}

Result<WorkbookArchive> WorkbookArchive::open(std::string_view bytes) {
    LibraryError error;
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, error.get());
    if (!source)
        return failure(zip_error_strerror(error.get()));
    return open(source);
}

Result<WorkbookArchive> WorkbookArchive::open(zip_source_t* source) {
    const auto fail = [source](const char* text) {
        const auto failed = failure(text); // copies the text, which may belong to the source
        zip_source_free(source);
        return failed;
    };
    zip_stat_t status;
    if (zip_source_open(source) != 0 || zip_source_stat(source, &status) != 0)
        return fail(zip_error_strerror(zip_source_error(source)));
    const ClaimedDirectories claims = claimedDirectories(source, status.size);
    zip_source_close(source);
    if (claims.entries > workbookLimits::entries || claims.bytes > workbookLimits::directorySize)
        return fail("too many entries");

    LibraryError error;
    WorkbookArchive opened;
    // Without ZIP_CHECKCONS, which refuses files of many programs; see docs/decisions/reading-workbooks.md.
    opened.m_archive.reset(zip_open_from_source(source, ZIP_RDONLY, error.get()));
    if (!opened.m_archive)
        return fail(zip_error_strerror(error.get()));
    if (const auto listed = opened.listEntries(status.size); !listed)
        return std::unexpected(listed.error());
    return opened;
}

Result<void> WorkbookArchive::listEntries(std::size_t fileSize) {
    m_fileSize = fileSize;
    const auto count = static_cast<std::size_t>(zip_get_num_entries(m_archive.get(), 0));
    std::size_t packedSize = 0;
    for (std::size_t index = 0; index < count; ++index) {
        zip_stat_t status;
        const char* rawName = zip_get_name(m_archive.get(), index, ZIP_FL_ENC_RAW);
        if (!rawName || zip_stat_index(m_archive.get(), index, 0, &status) != 0)
            return failure(zip_strerror(m_archive.get()));
        const std::string_view name = rawName;
        m_namesAreUTF8 = m_namesAreUTF8 && isValidUTF8(name);
        m_entries.insert_or_assign(name, index);
        m_inflatedSize = saturatingSum(m_inflatedSize, status.size);
        packedSize =
            saturatingSum(packedSize, saturatingSum(status.comp_size, entryOverhead + 2 * name.size()));
    }
    // libzip does not detect entries that share bytes, by which a small file can contain large parts.
    if (packedSize > fileSize)
        return failure("entries overlap");
    m_inflatableSize =
        std::min(workbookLimits::inflatedSize,
                 workbookLimits::inflatedAlways + workbookLimits::inflatedTimesFile * fileSize);
    return {};
}

Result<ArchiveEntry> WorkbookArchive::readArchiveEntry(std::string_view name) {
    const std::string text(name);
    const auto listed = m_entries.find(name);
    if (listed == m_entries.end())
        return failure("missing " + text);
    zip_stat_t status;
    if (zip_stat_index(m_archive.get(), listed->second, 0, &status) != 0)
        return failure(text + ": " + zip_strerror(m_archive.get()));
    if (status.size == 0)
        return failure("missing " + text);
    if (status.encryption_method != ZIP_EM_NONE)
        return failure(text + ": encrypted");
    // Workbooks use no other methods, and some of these allocate as much memory as the entry says.
    if (status.comp_method != ZIP_CM_DEFLATE && status.comp_method != ZIP_CM_STORE)
        return failure(text + ": unknown compression method");
    if (status.size > m_inflatableSize)
        return failure(text + ": too large");
    m_inflatableSize -= status.size;

    ArchiveEntry entry;
    entry.m_file.reset(zip_fopen_index(m_archive.get(), listed->second, 0));
    if (!entry.m_file)
        return failure(text + ": " + zip_strerror(m_archive.get()));
    entry.m_name = text;
    entry.m_length = status.size;
    return entry;
}

Result<std::optional<ArchiveEntry>> WorkbookArchive::readOptionalArchiveEntry(std::string_view name) {
    if (!m_namesAreUTF8)
        return failure("failed to read archive entries");
    if (!m_entries.contains(name))
        return std::nullopt;
    auto entry = readArchiveEntry(name);
    if (!entry)
        return std::unexpected(entry.error());
    return std::move(*entry);
}

} // namespace kavendra
