#include "app/backup/tar_archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include "core/foundation/owned.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

using std::chrono::nanoseconds;
using Reader = tapcore::Owned<archive, archive_read_free>;
using Writer = tapcore::Owned<archive, archive_write_free>;
using Entry = tapcore::Owned<archive_entry, archive_entry_free>;

constexpr std::int64_t second = 1'000'000'000;

[[noreturn]] void refuseDamaged() {
    throw ArchiveError("damaged, or not a tar archive packed by gzip or zstd");
}

/// Counts what an archive holds against its limits.
class Bounds {
  public:
    explicit Bounds(const ArchiveLimits& limits) : limits_(limits) {}

    void addEntry() {
        if (++entries_ > limits_.entries)
            throw ArchiveError(fmt::format("holds more than {} files", limits_.entries));
        bytesOfFile_ = 0;
    }

    void addBytes(std::size_t more, std::string_view name) {
        bytesOfFile_ += more;
        bytes_ += more;
        if (bytesOfFile_ > limits_.bytesOfFile)
            throw ArchiveError(fmt::format("{}: larger than {} bytes", name, limits_.bytesOfFile));
        if (bytes_ > limits_.bytes)
            throw ArchiveError(fmt::format("holds more than {} bytes", limits_.bytes));
    }

  private:
    const ArchiveLimits& limits_;
    std::size_t entries_ = 0;
    std::size_t bytesOfFile_ = 0;
    std::size_t bytes_ = 0;
};

/// When a file was written; nothing for a time that no file has.
std::optional<nanoseconds> timeOf(archive_entry* entry) {
    const std::int64_t seconds = archive_entry_mtime(entry);
    const bool isUsual = seconds >= 0 && seconds < std::numeric_limits<std::int64_t>::max() / second;
    if (!archive_entry_mtime_is_set(entry) || !isUsual) return std::nullopt;
    return nanoseconds(seconds * second + archive_entry_mtime_nsec(entry));
}

std::string nameOf(archive_entry* entry) {
    const char* name = archive_entry_pathname(entry);  // its bytes, or nothing, when others wrote it as UTF-8
    if (!name) name = archive_entry_pathname_utf8(entry);
    if (!name) refuseDamaged();
    return name;
}

std::string textOf(archive* reader, const std::string& name, Bounds& bounds) {
    std::string text;
    std::array<char, 65536> buffer;
    for (;;) {
        const la_ssize_t got = archive_read_data(reader, buffer.data(), buffer.size());
        if (got < 0) refuseDamaged();
        if (got == 0) return text;
        bounds.addBytes(static_cast<std::size_t>(got), name);
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

/// Nothing for a folder.
std::optional<ArchivedFile> readEntry(archive* reader, archive_entry* entry, Bounds& bounds) {
    bounds.addEntry();
    std::string name = nameOf(entry);
    const bool isLink = archive_entry_hardlink(entry) || archive_entry_symlink(entry);
    if (!isLink && archive_entry_filetype(entry) == AE_IFDIR) return std::nullopt;
    if (isLink || archive_entry_filetype(entry) != AE_IFREG)
        throw ArchiveError(name + ": a link or a device, which no backup holds");
    std::string text = textOf(reader, name, bounds);
    return ArchivedFile{std::move(name), std::move(text), timeOf(entry)};
}

bool hasPlainName(const ArchivedFile& file) { return tapcore::isAscii(file.name); }

void require(int outcome, archive* of) {
    if (outcome != ARCHIVE_OK) throw ArchiveError(archive_error_string(of));
}

la_ssize_t appendTo(archive*, void* text, const void* data, std::size_t size) {
    static_cast<std::string*>(text)->append(static_cast<const char*>(data), size);
    return static_cast<la_ssize_t>(size);
}

void writeEntry(archive* writer, const ArchivedFile& file) {
    const Entry entry(archive_entry_new());
    archive_entry_set_pathname(entry.get(), file.name.c_str());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), S_IRUSR | S_IWUSR);
    archive_entry_set_size(entry.get(), static_cast<la_int64_t>(file.text.size()));
    const std::int64_t time = file.lastWritten.value_or(nanoseconds(0)).count();
    archive_entry_set_mtime(entry.get(), time / second, static_cast<long>(time % second));
    require(archive_write_header(writer, entry.get()), writer);
    if (archive_write_data(writer, file.text.data(), file.text.size()) !=
        static_cast<la_ssize_t>(file.text.size()))
        throw ArchiveError(archive_error_string(writer));
}

}  // namespace

std::optional<Packing> packingOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    const auto endsIn = [&](std::string_view ending) {
        return name.size() > ending.size() && name.ends_with(ending);
    };
    if (endsIn(".tar.gz") || endsIn(".tgz")) return Packing::gzip;
    if (endsIn(".tar.zst") || endsIn(".tzst")) return Packing::zstd;
    return std::nullopt;
}

std::string packed(const std::vector<ArchivedFile>& files, Packing packing, const ArchiveLimits& limits) {
    Bounds bounds(limits);
    std::string bytes;
    const Writer writer(archive_write_new());
    archive* const to = writer.get();
    require(archive_write_set_format_pax(to), to);
    // Names are written as the bytes that they are, whatever the locale; other programs warn of that.
    if (!std::all_of(files.begin(), files.end(), hasPlainName))
        require(archive_write_set_format_option(to, "pax", "hdrcharset", "BINARY"), to);
    require(archive_write_set_bytes_in_last_block(to, 1), to);  // zstd cannot read what is padded
    require(packing == Packing::gzip ? archive_write_add_filter_gzip(to) : archive_write_add_filter_zstd(to),
            to);
    // The same files give the same bytes.
    if (packing == Packing::gzip)
        require(archive_write_set_filter_option(to, "gzip", "timestamp", nullptr), to);
    require(archive_write_open(to, &bytes, nullptr, appendTo, nullptr), to);
    for (const ArchivedFile& file : files) {
        bounds.addEntry();
        bounds.addBytes(file.text.size(), file.name);
        writeEntry(to, file);
    }
    require(archive_write_close(to), to);
    return bytes;
}

std::vector<ArchivedFile> unpacked(std::string_view bytes, const ArchiveLimits& limits) {
    const Reader reader(archive_read_new());
    archive* const from = reader.get();
    require(archive_read_support_filter_gzip(from), from);
    require(archive_read_support_filter_zstd(from), from);
    require(archive_read_support_format_tar(from), from);
    if (archive_read_open_memory(from, bytes.data(), bytes.size()) != ARCHIVE_OK) refuseDamaged();
    std::vector<ArchivedFile> files;
    Bounds bounds(limits);
    archive_entry* entry = nullptr;
    for (;;) {
        const int outcome = archive_read_next_header(from, &entry);
        if (outcome == ARCHIVE_EOF) return files;
        if (outcome != ARCHIVE_OK && outcome != ARCHIVE_WARN) refuseDamaged();  // names are warned of
        if (auto file = readEntry(from, entry, bounds)) files.push_back(std::move(*file));
    }
}

}  // namespace tappora
