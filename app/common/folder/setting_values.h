#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/folder_config.h"
#include "core/settings/setting.h"

namespace tappora {

class Settings;

/// A setting and what it is set to.
struct SettingValue {
    std::string key;
    const tapcore::Setting* setting = nullptr;  ///< none: nothing reads this key
    nlohmann::json value;                       ///< the one in force; null where there is none, or a family's
    bool isSet = false;                         ///< a value is stored
    std::string whyNotUsed{};  ///< why the one stored is not in force; "" when it is, or there is none

    /// Whether it holds since nothing else was chosen.
    bool isUsual() const { return setting && value == setting->usualValue(); }
};

/// The value in force of a key, which is one of a declared setting, in this machine's settings or those of
/// the folder.
SettingValue settingValue(std::string_view key, const Settings& settings,
                          const tapcore::FolderConfig& config);

/// Every setting with its value, in the order of their declarations; each member of a family that is set,
/// behind the family; and last, the keys that nothing reads.
std::vector<SettingValue> settingValues(const Settings& settings, const tapcore::FolderConfig& config);

/// The folder's settings with a value of a key set, or its default for none.
tapcore::FolderConfig withValue(const tapcore::FolderConfig& config, std::string_view key,
                                const std::optional<nlohmann::json>& value);

}  // namespace tappora
