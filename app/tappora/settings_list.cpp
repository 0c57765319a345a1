// What is set: listing and showing.

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>

#include "app/common/folder/setting_values.h"
#include "app/common/folder/settings.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/settings_tasks.h"
#include "core/files/folder_config.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::Setting;

/// The settings of the data folder; what is wrong with them is warned of.
tapcore::FolderConfig configOf(const FolderOptions& folder, const Environment& environment) {
    const auto root = openStore(folder, environment).root;
    tapcore::FileProblems problems;
    auto config = tapcore::FolderConfig::read(root, &problems);
    complainOf(problems, environment.warn);
    return config;
}

std::string typeOf(const Setting& setting) {
    switch (setting.type) {
        case Setting::Type::flag:
            return "flag";
        case Setting::Type::integer:
            return "integer";
        case Setting::Type::word:
            return "word";
        case Setting::Type::list:
            return "list";
        case Setting::Type::key:
            return "key";
        case Setting::Type::text:
            return "text";
    }
    return "";
}

json toJson(const SettingValue& of) {
    json entry = {{"key", of.key}};
    if (!of.value.is_null()) entry["value"] = of.value;
    if (of.isSet) entry["set"] = true;
    if (!of.whyNotUsed.empty()) entry["notUsed"] = of.whyNotUsed;
    if (!of.setting) return entry;
    const Setting& setting = *of.setting;
    entry.update({{"does", std::string(setting.does) + (setting.isPrograms ? "; the program sets it" : "")},
                  {"usedBy", setting.usedBy},
                  {"type", typeOf(setting)},
                  {"bounds", setting.bounds()},
                  {"family", setting.key == of.key && setting.isFamily},
                  {"withFolder", setting.kept == Setting::Kept::withFolder}});
    if (!setting.usual.empty()) entry["default"] = setting.usualValue();
    if (!setting.usualWords.empty()) entry["usually"] = setting.usualWords;
    return entry;
}

/// "  practice.length          30", with a "*" before what is not the default, and a "!" before a default
/// that is used in place of what is stored.
std::string lineOf(const SettingValue& of) {
    const bool travels = of.setting && of.setting->kept == Setting::Kept::withFolder;
    std::string value = of.value.is_null() ? fmt::format("({})", of.setting->usualWords)
                                           : harmlessLine(tapcore::settingText(of.value));
    if (!of.setting) value += "  (nothing reads this)";
    else if (!of.isUsual() && !of.setting->usual.empty())
        value += fmt::format("  (usually {})", of.setting->usual);
    if (!of.whyNotUsed.empty()) value += fmt::format("  ({})", harmlessLine(of.whyNotUsed));
    const char mark = !of.whyNotUsed.empty() ? '!' : of.isUsual() ? ' ' : '*';
    return fmt::format("{} {:<28} {}{}\n", mark, harmlessLine(of.key), value,
                       travels ? "  [with the folder]" : "");
}

}  // namespace

void requireSetting(const std::string& key) {
    if (!tapcore::findSetting(key))
        throw UsageError(fmt::format("no such setting: {}; see tappora settings", key));
}

void listSettings(const FolderOptions& folder, const Environment& environment, bool isJson) {
    const auto values = settingValues(Settings::read(environment), configOf(folder, environment));
    json entries = json::array();
    for (const SettingValue& of : values) {
        entries.push_back(toJson(of));
        const bool isPattern = of.setting && of.setting->isFamily && of.key == of.setting->key;
        if (!isJson && !isPattern) print(lineOf(of));
    }
    if (isJson) print(tapcore::jsonText(entries));
}

void showSetting(const std::string& key, const FolderOptions& folder, const Environment& environment,
                 bool isJson) {
    requireSetting(key);
    const SettingValue of = settingValue(key, Settings::read(environment), configOf(folder, environment));
    if (isJson) return print(tapcore::jsonText(toJson(of)));
    if (of.value.is_null())
        throw Failure(key, fmt::format("not set; by default: {}", of.setting->usualWords));
    print(tapcore::settingText(of.value) + "\n");
}

}  // namespace tappora
