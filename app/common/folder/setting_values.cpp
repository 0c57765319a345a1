#include "app/common/folder/setting_values.h"

#include <utility>

#include "app/common/folder/settings.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::FolderConfig;
using tapcore::Setting;

/// Where a folder's setting is in its file: "labels.BOARD/KEYCODE" is a member of "labels".
json::json_pointer placeOf(std::string_view key) {
    json::json_pointer place;
    const std::size_t dot = key.find('.');
    place /= std::string(key.substr(0, dot));
    if (dot != key.npos) place /= std::string(key.substr(dot + 1));
    return place;
}

json documentOf(const FolderConfig& config) { return tapcore::JsonValue::parse(config.text()); }

/// The keys of a family that are set.
std::vector<std::string> membersOf(const Setting& family, const Settings& settings, const json& document) {
    std::vector<std::string> keys;
    if (family.kept == Setting::Kept::withFolder)
        for (const auto& [name, value] : document.at(std::string(family.group())).items())
            keys.push_back(std::string(family.group()).append(".").append(name));
    else
        for (const auto& [key, value] : settings.stored())
            if (tapcore::findSetting(key) == &family) keys.push_back(key);
    return keys;
}

}  // namespace

SettingValue settingValue(std::string_view key, const Settings& settings, const FolderConfig& config) {
    const Setting& setting = tapcore::settingOf(key);
    if (setting.kept == Setting::Kept::onMachine) {
        SettingValue of{std::string(key), &setting, settings.valueOf(key)};
        const auto stored = settings.stored().find(key);
        of.isSet = stored != settings.stored().end();
        if (of.isSet) of.whyNotUsed = Settings::whyRefused(key, json::parse(stored->second));
        return of;
    }
    const json document = documentOf(config);
    const auto place = placeOf(key);
    SettingValue of{std::string(key), &setting,
                    document.contains(place) ? document.at(place) : setting.usualValue()};
    of.isSet = !of.isUsual();  // all of them are written when one is
    return of;
}

std::vector<SettingValue> settingValues(const Settings& settings, const FolderConfig& config) {
    const json document = documentOf(config);
    std::vector<SettingValue> values;
    for (const Setting& setting : tapcore::allSettings()) {
        if (!setting.isFamily) values.push_back(settingValue(setting.key, settings, config));
        if (!setting.isFamily) continue;
        values.push_back({std::string(setting.key), &setting, {}});
        for (const std::string& key : membersOf(setting, settings, document))
            values.push_back(settingValue(key, settings, config));
    }
    for (const auto& [key, value] : settings.stored())
        if (!tapcore::findSetting(key))
            values.push_back({key, nullptr, tapcore::JsonValue::parse(value), true});
    return values;
}

FolderConfig withValue(const FolderConfig& config, std::string_view key, const std::optional<json>& value) {
    json document = documentOf(config);
    const auto place = placeOf(key);
    if (value) document[place] = *value;
    else if (document.contains(place)) document.at(place.parent_pointer()).erase(place.back());
    return FolderConfig::parse(document.dump());
}

}  // namespace tappora
