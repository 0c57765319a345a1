#include "app/common/folder/settings.h"

#include <nlohmann/json.hpp>

#include "app/common/folder/folder_lock.h"
#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::JsonValue;

/// A stored value read by `read`; nothing when it is missing or null.
template <class Value, class Read>
std::optional<Value> readValue(const std::map<std::string, std::string, std::less<>>& values,
                               std::string_view key, const fs::path& path, Read read) {
    const auto found = values.find(key);
    if (found == values.end()) return std::nullopt;
    const json document = {{found->first, JsonValue::parse(found->second)}};
    try {
        const auto member = JsonValue(document).optionalMember(key);
        return member ? std::optional<Value>(read(*member)) : std::nullopt;
    } catch (const tapcore::JsonError& error) {
        throw Failure(path.string(), error.what());
    }
}

}  // namespace

fs::path Settings::url(const Environment& environment) {
    const auto directory = configDirectory(environment.variable);
    return required(directory, ", and neither is XDG_CONFIG_HOME") / "tappora" / "settings.json";
}

Settings Settings::read(const Environment& environment) {
    Settings settings;
    settings.path_ = url(environment);
    const auto text = optionalText(settings.path_, tapcore::readStoredFile(settings.path_));
    if (!text) return settings;
    try {
        const json document = JsonValue::parse(*text);
        if (!document.is_object()) JsonValue(document).fail("not an object");
        for (const auto& [key, value] : document.items()) settings.values_[key] = value.dump();
    } catch (const tapcore::JsonError& error) {
        throw Failure(settings.path_.string(), error.what());
    }
    return settings;
}

Settings Settings::change(const Environment& environment, const std::function<void(Settings&)>& change,
                          const Tell& tell) {
    const fs::path folder = url(environment).parent_path();
    complainOf(tapcore::makeFolders(folder), tell);
    const FolderLock lock = lockForWriting(environment, folder);
    Settings settings = read(environment);
    const auto before = settings.values_;
    change(settings);
    if (settings.values_ != before) complainOf(settings.write(), tell);
    return settings;
}

tapcore::Written Settings::write() const {
    json document = json::object();
    for (const auto& [key, value] : values_) document[key] = JsonValue::parse(value);
    return tapcore::writeFile(path_, document.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
}

std::optional<std::string> Settings::text(std::string_view key) const {
    return readValue<std::string>(values_, key, path_, [](const JsonValue& value) { return value.string(); });
}

std::optional<bool> Settings::flag(std::string_view key) const {
    return readValue<bool>(values_, key, path_, [](const JsonValue& value) { return value.boolean(); });
}

std::optional<std::int64_t> Settings::integer(std::string_view key) const {
    return readValue<std::int64_t>(values_, key, path_,
                                   [](const JsonValue& value) { return value.integer(); });
}

void Settings::setText(std::string_view key, std::string_view value) {
    values_[std::string(key)] = tapcore::jsonLine(value);
}

void Settings::setFlag(std::string_view key, bool value) {
    values_[std::string(key)] = value ? "true" : "false";
}

void Settings::setInteger(std::string_view key, std::int64_t value) {
    values_[std::string(key)] = std::to_string(value);
}

void Settings::remove(std::string_view key) { values_.erase(std::string(key)); }

}  // namespace tappora
