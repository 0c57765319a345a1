#include "app/backup/backup.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "app/common/system/sha256.h"
#include "tests/support/message_of.h"

namespace tappora {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using tapcore::messageOf;

const std::string day = "* Keys\n| 9 | 0 | 7 |\n";
const std::string dayName = "folder/days/2026-09-19.org";

Backup sample() {
    return {"tappora 1",
            {{"assistant/history/2026-09-19 101500.org", "café", 1'789'000'000'123'456'789ns},
             {"days/2026-09-19.org", day, 0ns},
             {"reports/2026-09.org", std::string("\0\r\n\xEF\xBB\xBF", 6), 5s},
             {"reports/empty.md", "", 5s}},
            "{\"practice.length\": 45}\n"};
}

json listed(const std::vector<ArchivedFile>& files) {
    json entries = json::object();
    for (const ArchivedFile& file : files)
        entries[file.name] = {{"bytes", file.text.size()}, {"sha256", sha256(file.text)}};
    return entries;
}

/// What an archive with these files and this manifest is refused with; "" when it is taken.
std::string whyRefused(std::vector<ArchivedFile> files, const std::string& manifest) {
    files.push_back({"manifest.json", manifest});
    return messageOf<ArchiveError>([&] { return Backup::unpacked(packed(files, Packing::gzip)); });
}

TEST(Backup, HoldsEveryByteAndTime) {
    for (const Packing packing : {Packing::gzip, Packing::zstd}) {
        const Backup kept = sample();
        const std::string bytes = kept.packed(packing);
        EXPECT_EQ(bytes, sample().packed(packing)) << "the same files give the same archive";
        const Backup read = Backup::unpacked(bytes);
        EXPECT_EQ(read.files, kept.files);
        EXPECT_EQ(read.settings, kept.settings);
        EXPECT_EQ(read.program, "tappora 1");
    }
    EXPECT_EQ(Backup::unpacked(Backup{"p", {}, {}}.packed(Packing::zstd)).settings, std::nullopt);
}

TEST(Backup, ThatIsCutAnywhereIsRefused) {
    for (const Packing packing : {Packing::gzip, Packing::zstd}) {
        const std::string bytes = sample().packed(packing);
        const std::size_t tail = packing == Packing::gzip ? 8 : 0;  // gzip's sums, which may not be looked at
        for (std::size_t size = 0; size + tail < bytes.size(); ++size)
            EXPECT_THROW((void)Backup::unpacked(bytes.substr(0, size)), ArchiveError) << size;
    }
}

TEST(Backup, WithAChangedByteIsRefusedOrStillWhole) {
    for (const Packing packing : {Packing::gzip, Packing::zstd}) {
        const std::string bytes = sample().packed(packing);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ 0x41);
            try {
                const Backup read = Backup::unpacked(changed);
                ASSERT_EQ(read.files.size(), sample().files.size()) << at;
                for (std::size_t i = 0; i < read.files.size(); ++i) {
                    EXPECT_EQ(read.files[i].name, sample().files[i].name) << at;
                    EXPECT_EQ(read.files[i].text, sample().files[i].text) << at;
                }
            } catch (const ArchiveError&) {
            }
        }
    }
}

TEST(Backup, MustBeWhatItsManifestSays) {
    const std::vector<ArchivedFile> one = {{dayName, day}};
    const json entry = listed(one);
    const auto manifest = [](const json& files, const json& format = 1) {
        return json{{"backup", format}, {"program", "p"}, {"files", files}}.dump();
    };
    json wrongSize = entry, wrongSum = entry, more = entry;
    wrongSize[dayName]["bytes"] = 5;
    wrongSum[dayName]["sha256"] = std::string(64, '0');
    more["folder/days/2026-09-18.org"] = entry[dayName];
    const std::string twice = "{\"backup\": 1, \"program\": \"p\", \"files\": {\"" + dayName +
                              "\": " + entry[dayName].dump() + ", \"" + dayName +
                              "\": " + entry[dayName].dump() + "}}";
    const struct {
        std::vector<ArchivedFile> files;
        std::string manifest;
        std::string why;
    } cases[] = {
        {one, manifest(entry), ""},
        {one, manifest(wrongSize), dayName + ": damaged: not what the manifest says"},
        {one, manifest(wrongSum), dayName + ": damaged: not what the manifest says"},
        {one, manifest(more), "folder/days/2026-09-18.org: missing in the archive"},
        {one, manifest(json::object()), dayName + ": not in the manifest"},
        {{one[0], one[0]}, manifest(entry), dayName + ": there twice"},
        {one, manifest(entry, 2), "made by a later version of tappora: use that, or a later one"},
        {one, manifest(entry, 0), "manifest.json: backup: no such format"},
        {one, manifest(entry, "1"), "manifest.json: backup: not an integer: \"1\""},
        {one, manifest(json::array()), "manifest.json: files: not an object: []"},
        {one, "{}", "manifest.json: the document: \"backup\" is missing"},
        {one, twice, "manifest.json: " + dayName + ": set twice"},
    };
    for (const auto& [files, text, why] : cases) EXPECT_EQ(whyRefused(files, text), why) << text;
    EXPECT_EQ(messageOf<ArchiveError>([&] { return Backup::unpacked(packed(one, Packing::zstd)); }),
              "cut short, or not a backup: no manifest.json at its end");
}

TEST(Backup, HoldsNothingButADataFolderAndSettings) {
    const std::pair<const char*, const char*> cases[] = {
        {"folder/days/../../.bashrc", "folder/days/../../.bashrc: not a file of a data folder"},
        {"folder/days/.2026-09-19.merging", "folder/days/.2026-09-19.merging: not a file of a data folder"},
        {"settings/claude.key", "settings/claude.key: not a file of a data folder"},
        {"/folder/days/a", "/folder/days/a: not a file of a data folder"},
        {"folder/Air/days/a", "folder/Air: not a machine's folder"},
        {"", ": not a file of a data folder"},
    };
    for (const auto& [name, why] : cases) {
        const std::vector<ArchivedFile> files = {{name, "x"}};
        const std::string manifest = json{{"backup", 1}, {"program", "p"}, {"files", listed(files)}}.dump();
        EXPECT_EQ(whyRefused(files, manifest), why) << name;
    }
}

TEST(TarArchive, TakesNoMoreThanItsLimits) {
    const std::vector<ArchivedFile> files = {{"a", "12345"}, {"b", "12345"}, {"c", ""}};
    const std::string bytes = packed(files, Packing::zstd);
    const std::pair<ArchiveLimits, const char*> cases[] = {
        {{3, 5, 10}, ""},
        {{2, 5, 10}, "holds more than 2 files"},
        {{3, 4, 10}, "a: larger than 4 bytes"},
        {{3, 5, 9}, "holds more than 9 bytes"},
    };
    for (const auto& [limits, why] : cases) {
        EXPECT_EQ(messageOf<ArchiveError>([&] { return unpacked(bytes, limits); }), why);
        EXPECT_EQ(messageOf<ArchiveError>([&] { return packed(files, Packing::gzip, limits); }), why);
    }
}

TEST(TarArchive, IsPackedByTheEndingOfItsName) {
    const std::pair<const char*, std::optional<Packing>> cases[] = {
        {"a.tar.gz", Packing::gzip},
        {"a.tgz", Packing::gzip},
        {"d/a.b.tar.zst", Packing::zstd},
        {"a.tzst", Packing::zstd},
        {"a.tar", {}},
        {".tar.gz", {}},
        {"a.TAR.GZ", {}},
        {"tar.gz", {}},
        {"", {}},
    };
    for (const auto& [name, packing] : cases) EXPECT_EQ(packingOf(name), packing) << name;
}

}  // namespace
}  // namespace tappora
