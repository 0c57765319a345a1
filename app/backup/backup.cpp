#include "app/backup/backup.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "app/common/system/sha256.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/json_once.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::JsonValue;

constexpr std::string_view folderStart = "folder/";
constexpr std::string_view settingsName = "settings/settings.json";
constexpr std::string_view manifestName = "manifest.json";
constexpr std::int64_t formatNumber = 1;

std::string manifestOf(const std::vector<ArchivedFile>& files, const std::string& program) {
    json entries = json::object();
    for (const ArchivedFile& file : files)
        entries[file.name] = {{"bytes", file.text.size()}, {"sha256", sha256(file.text)}};
    return tapcore::indentedJson({{"backup", formatNumber}, {"program", program}, {"files", entries}});
}

/// What a manifest says of a file.
struct Listed {
    std::int64_t bytes;
    std::string digest;
};

struct Manifest {
    std::string program;
    std::map<std::string, Listed, std::less<>> files;
};

Manifest decodeManifest(std::string_view text) {
    tapcore::requireEachOnce(text);
    const json document = JsonValue::parse(text);
    const JsonValue value(document);
    const std::int64_t format = value.member("backup").integer();
    if (format > formatNumber)
        throw ArchiveError("made by a later version of tappora: use that, or a later one");
    if (format != formatNumber) value.member("backup").fail("no such format");
    Manifest manifest{value.member("program").string(), {}};
    value.member("files").forEachMember([&](const std::string& name, const JsonValue& file) {
        manifest.files[name] = {file.member("bytes").integer(), file.member("sha256").string()};
    });
    return manifest;
}

Manifest takeManifest(std::vector<ArchivedFile>& files) {
    if (files.empty() || files.back().name != manifestName)
        throw ArchiveError("cut short, or not a backup: no manifest.json at its end");
    try {
        Manifest manifest = decodeManifest(files.back().text);
        files.pop_back();
        return manifest;
    } catch (const tapcore::JsonError& error) {
        throw ArchiveError(std::string("manifest.json: ") + error.what());
    }
}

/// The files are those of the manifest, each once and as it was.
void requireListed(const std::vector<ArchivedFile>& files, const Manifest& manifest) {
    auto missing = manifest.files;
    for (const ArchivedFile& file : files) {
        const auto listed = missing.find(file.name);
        if (listed == missing.end())
            throw ArchiveError(
                file.name + (manifest.files.contains(file.name) ? ": there twice" : ": not in the manifest"));
        if (listed->second.bytes != static_cast<std::int64_t>(file.text.size()) ||
            listed->second.digest != sha256(file.text))
            throw ArchiveError(file.name + ": damaged: not what the manifest says");
        missing.erase(listed);
    }
    if (!missing.empty()) throw ArchiveError(missing.begin()->first + ": missing in the archive");
}

void takeFile(Backup& backup, ArchivedFile& file) {
    if (file.name == settingsName) backup.settings = std::move(file.text);
    else if (!file.name.starts_with(folderStart))
        throw ArchiveError(file.name + ": not a file of a data folder");
    else
        backup.files.push_back(
            {file.name.substr(folderStart.size()), std::move(file.text), file.lastWritten});
}

}  // namespace

std::string Backup::packed(Packing packing) const {
    std::vector<ArchivedFile> all;
    for (const tapcore::KeptFile& file : files)
        all.push_back({std::string(folderStart) + file.name, file.text, file.lastWritten});
    if (settings) all.push_back({std::string(settingsName), *settings});
    all.push_back({std::string(manifestName), manifestOf(all, program)});
    return tappora::packed(all, packing);
}

Backup Backup::unpacked(std::string_view bytes) {
    auto archived = tappora::unpacked(bytes);
    const Manifest manifest = takeManifest(archived);
    requireListed(archived, manifest);
    Backup backup{manifest.program, {}, {}};
    for (ArchivedFile& file : archived) takeFile(backup, file);
    if (const auto why = tapcore::whyNotOfAFolder(backup.files))
        throw ArchiveError(std::string(folderStart) + *why);
    return backup;
}

}  // namespace tappora
