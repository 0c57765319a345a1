#include "app/common/folder/settings.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "app/common/folder/folder_lock.h"
#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "app/common/system/environment.h"
#include "app/common/system/file_text.h"
#include "core/foundation/descriptor.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/json_once.h"
#include "core/settings/setting.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::JsonValue;

/// Where a file really is: what a link leads to is written, and the link stays. One that leads nowhere is
/// replaced.
fs::path behindLinks(const fs::path& path) {
    std::error_code missing;
    fs::path found = fs::canonical(path, missing);
    return missing ? path : found;
}

/// A file that its user made read-only is not replaced, though its folder would allow it.
void requireWritable(const fs::path& path) {
    if (::access(path.c_str(), W_OK) != 0 && errno != ENOENT)
        throw fs::filesystem_error("cannot write", path, tapcore::lastError());
}

}  // namespace

fs::path Settings::url(const Environment& environment) {
    const auto directory = configDirectory(environment.variable);
    return required(directory, ", and neither is XDG_CONFIG_HOME") / "tappora" / "settings.json";
}

std::map<std::string, std::string, std::less<>> Settings::parse(std::string_view text) {
    const json document = JsonValue::parse(text);
    if (!document.is_object()) JsonValue(document).fail("not an object");
    tapcore::requireEachOnce(text);
    std::map<std::string, std::string, std::less<>> members;
    for (const auto& [key, value] : document.items()) members[key] = value.dump();
    return members;
}

Settings Settings::read(const Environment& environment) {
    Settings settings;
    settings.path_ = url(environment);
    settings.warn_ = environment.warn;
    const auto text = optionalText(settings.path_, tapcore::readStoredFile(settings.path_));
    if (!text) return settings;
    try {
        settings.values_ = parse(*text);
    } catch (const tapcore::JsonError& error) {
        throw Failure(settings.path_.string(), error.what());
    }
    return settings;
}

Settings Settings::change(const Environment& environment, const std::function<void(Settings&)>& change,
                          const Tell& tell, const LockForWriting& lockForWriting) {
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
    const fs::path file = behindLinks(path_);
    requireWritable(file);
    return tapcore::writeFile(file, document.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
}

json Settings::valueOf(std::string_view key) const {
    const tapcore::Setting& setting = tapcore::settingOf(key);
    const auto found = values_.find(key);
    const json value = found == values_.end() ? json() : JsonValue::parse(found->second);
    if (value.is_null()) return setting.usualValue();
    const std::string why = whyRefused(key, value);
    if (why.empty() && setting.type == tapcore::Setting::Type::integer) return JsonValue(value).integer();
    if (why.empty()) return value;
    warnOf(key, why);
    return setting.usualValue();
}

std::string Settings::whyRefused(std::string_view key, const json& value) {
    const tapcore::Setting& setting = tapcore::settingOf(key);
    if (setting.accepts(value)) return "";
    if (setting.type == tapcore::Setting::Type::word && value.is_string())
        return noSuch(setting.kind, value.get<std::string>(), setting.words());
    return fmt::format("{} is not {}", tapcore::jsonLine(value), setting.bounds());
}

void Settings::warnOf(std::string_view key, std::string_view why) const {
    warn_(fmt::format("{}: {}: {}; the default is used", path_.string(), key, why));
}

std::optional<std::string> Settings::text(std::string_view key) const {
    const json value = valueOf(key);
    return value.is_null() ? std::nullopt : std::optional(value.get<std::string>());
}

bool Settings::flag(std::string_view key) const { return valueOf(key).get<bool>(); }

std::optional<std::int64_t> Settings::integer(std::string_view key) const {
    const json value = valueOf(key);
    return value.is_null() ? std::nullopt : std::optional(JsonValue(value).integer());
}

void Settings::set(std::string_view key, const json& value) { values_[std::string(key)] = value.dump(); }

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
