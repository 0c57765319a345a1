#include "app/common/settings.h"

#include <nlohmann/json.hpp>

#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::FileRead;

/// A folder that a variable names by an absolute path; others do not count (XDG Base Directory
/// Specification).
std::optional<fs::path> absoluteFolder(const Environment& environment, const std::string& name) {
    const auto value = environment.variable(name);
    if (!value || !fs::path(*value).is_absolute()) return std::nullopt;
    return *value;
}

std::map<std::string, std::string, std::less<>> parsed(const std::string& text) {
    std::map<std::string, std::string, std::less<>> values;
    const nlohmann::json document = tapcore::JsonValue::parse(text);
    tapcore::JsonValue(document).forEachMember([&](const std::string& name, const tapcore::JsonValue& value) {
        if (value.raw().is_string()) values.emplace(name, value.string());
    });
    return values;
}

}  // namespace

fs::path Settings::file(const Environment& environment) {
    if (const auto folder = absoluteFolder(environment, "XDG_CONFIG_HOME"))
        return *folder / "tappora/settings.json";
    const auto home = absoluteFolder(environment, "HOME");
    return home ? *home / ".config/tappora/settings.json" : fs::path();
}

Settings Settings::read(const Environment& environment) {
    const fs::path path = file(environment);
    const FileRead read = path.empty() ? FileRead() : tapcore::readFile(path);
    if (read.status == FileRead::Status::missing) return {};
    if (read.status == FileRead::Status::unreadable) throw Failure(path.string(), read.error.message());
    try {
        return Settings(parsed(read.text));
    } catch (const tapcore::JsonError& error) {
        throw Failure(path.string(), error.what());
    }
}

std::optional<std::string> Settings::text(std::string_view name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace tappora
