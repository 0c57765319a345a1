#include "core/files/folder_config.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/json_once.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string joined(std::string_view owner, std::uint16_t keyCode) {
    return std::string(owner).append("/").append(std::to_string(keyCode));
}

/// The part of a learned key's name before its code, and the code; nothing for a name without one.
std::optional<std::pair<std::string_view, std::uint16_t>> splitName(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const auto keyCode = parseKeyCode(name.substr(slash + 1));
    if (!keyCode) return std::nullopt;
    return std::pair(name.substr(0, slash), *keyCode);
}

/// Whether a learned key's name belongs to a board, under any layout or none.
bool isOf(std::string_view name, std::string_view boardID) {
    return name.starts_with(boardID) && name.substr(boardID.size()).starts_with('/');
}

FileFormat readFormat(const JsonValue& value) {
    const auto format = FileFormat::parse(value.string());
    if (!format) value.fail("neither org nor markdown: \"" + value.string() + "\"");
    return *format;
}

LearnedKey readLearnedKey(const JsonValue& value) {
    LearnedKey key;
    if (const auto plain = value.optionalMember("plain")) key.plain = plain->string();
    if (const auto shifted = value.optionalMember("shifted")) key.shifted = shifted->string();
    return key;
}

FolderConfig decoded(const JsonValue& value) {
    FolderConfig config;
    if (const auto format = value.optionalMember("format")) config.format = readFormat(*format);
    if (const auto board = value.optionalMember("board")) config.board = board->string();
    if (const auto layout = value.optionalMember("layout")) config.layout = layout->string();
    if (const auto named = value.optionalMember("named_keys")) config.namedKeys = named->boolean();
    if (const auto labels = value.optionalMember("labels"))
        labels->forEachMember(
            [&](const std::string& name, const JsonValue& label) { config.labels[name] = label.string(); });
    if (const auto learned = value.optionalMember("learned"))
        learned->forEachMember([&](const std::string& name, const JsonValue& key) {
            config.learned[name] = readLearnedKey(key);
        });
    return config;
}

/// A text of settings, with the members of a stored one that no field holds: those of a later version.
std::string withOthers(const std::string& text, std::string_view stored) {
    auto all = JsonValue::tryParse(stored);
    if (!all || !all->is_object()) return text;
    all->update(json::parse(text));
    return indentedJson(*all);
}

}  // namespace

fs::path FolderConfig::url(const fs::path& root) { return root / settingsFolder / "config.json"; }

FolderConfig FolderConfig::decode(std::string_view text) {
    const json document = JsonValue::parse(text);
    return decoded(JsonValue(document));
}

FolderConfig FolderConfig::parse(std::string_view text) {
    try {
        return decode(text);
    } catch (const JsonError&) {
        return {};
    }
}

std::string FolderConfig::text() const {
    json learnedKeys = json::object();
    for (const auto& [name, key] : learned)
        learnedKeys[name] = {{"plain", key.plain}, {"shifted", key.shifted}};
    return indentedJson({{"format", format.rawValue()},
                         {"board", board},
                         {"layout", layout},
                         {"labels", labels},
                         {"named_keys", namedKeys},
                         {"learned", learnedKeys}});
}

FolderConfig FolderConfig::read(const fs::path& root, FileProblems* problems) {
    const auto refused = [&](const std::string& why) {
        report(problems, url(root), why + "; the defaults are used");
        return FolderConfig{};
    };
    const FileRead file = readStoredFile(url(root));
    if (file.status == FileRead::Status::missing) return {};
    if (file.status == FileRead::Status::unreadable) return refused(file.error.message());
    try {
        FolderConfig config = decode(file.text);
        if (problems) requireEachOnce(file.text);
        return config;
    } catch (const JsonError& error) {
        return refused(error.what());
    }
}

FolderConfig FolderConfig::readToChange(const fs::path& root) {
    const FileRead file = readStoredFile(url(root));
    if (file.status == FileRead::Status::unreadable) refuse(url(root), file.error);
    return parse(file.text);
}

Written FolderConfig::write(const fs::path& root) const {
    return writeFile(url(root), withOthers(text(), readStoredFile(url(root)).text));
}

void FolderConfig::setLabel(std::uint16_t keyCode, std::string_view boardID, std::string_view label) {
    if (label.empty()) labels.erase(joined(boardID, keyCode));
    else labels[joined(boardID, keyCode)] = label;
}

std::optional<std::string> FolderConfig::label(std::uint16_t keyCode, std::string_view boardID) const {
    const auto found = labels.find(joined(boardID, keyCode));
    if (found == labels.end()) return std::nullopt;
    return found->second;
}

Legends FolderConfig::labelsOf(std::string_view boardID) const {
    Legends all;
    for (const auto& [name, label] : labels) {
        const auto split = splitName(name);
        if (split && split->first == boardID && !label.empty()) all[split->second] = {label};
    }
    return all;
}

void FolderConfig::setLearned(std::uint16_t keyCode, bool shift, std::string_view text,
                              std::string_view boardID, std::string_view layoutID) {
    LearnedKey& key = learned[joined(learnedID(boardID, layoutID), keyCode)];
    (shift ? key.shifted : key.plain) = text;
}

void FolderConfig::forgetLearned(std::string_view boardID) {
    std::erase_if(learned, [&](const auto& item) { return isOf(item.first, boardID); });
}

Legends FolderConfig::learnedKeys(std::string_view boardID, std::string_view layoutID) const {
    const std::string id = learnedID(boardID, layoutID);
    Legends legends;
    for (const auto& [name, key] : learned) {
        const auto split = splitName(name);
        if (!split || split->first != id) continue;
        legends[split->second] =
            key.shifted.empty() ? std::vector{key.plain} : std::vector{key.plain, key.shifted};
    }
    return legends;
}

std::size_t FolderConfig::learnedCount(std::string_view boardID) const {
    std::size_t count = 0;
    for (const auto& item : learned) count += isOf(item.first, boardID) ? 1 : 0;
    return count;
}

void FolderConfig::migrateLearned(std::string_view layoutID) {
    std::map<std::string, LearnedKey> filed;
    for (const auto& [name, key] : learned) {
        const auto split = splitName(name);
        const bool isOld = split && split->first.find('/') == std::string_view::npos;
        if (!isOld) filed[name] = key;
        else filed.try_emplace(joined(learnedID(split->first, layoutID), split->second), key);
    }
    // A key learned under the layout since then was in the map already or replaces the older one here.
    for (const auto& [name, key] : learned)
        if (filed.contains(name)) filed[name] = key;
    learned = std::move(filed);
}

std::string FolderConfig::learnedID(std::string_view boardID, std::string_view layoutID) {
    return std::string(boardID).append("/").append(layoutID);
}

}  // namespace tapcore
