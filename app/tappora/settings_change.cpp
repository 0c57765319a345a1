// Setting, unsetting and editing what is set. What a setting does not accept is never stored.

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <system_error>

#include "app/common/command_line/confirm.h"
#include "app/common/folder/folder_settings.h"
#include "app/common/folder/setting_values.h"
#include "app/common/folder/settings.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/settings_checks.h"
#include "app/tappora/settings_tasks.h"
#include "core/files/folder_config.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::FolderConfig;
using tapcore::Setting;

constexpr std::string_view idKey = "machine.id";
constexpr std::string_view nothingSet = "{}\n";

bool travels(const Setting& setting) { return setting.kept == Setting::Kept::withFolder; }

/// The value that a text means; UsageError, naming the file that it would be in, for one that is refused.
json valueFor(const std::string& key, const std::string& text, const fs::path& file) {
    if (text.empty())
        throw UsageError(fmt::format("{}: {}: empty; tappora settings unset goes back to the default",
                                     file.string(), key));
    const auto value = tapcore::settingOf(key).parse(text);
    if (value) return *value;
    const auto number = tapcore::parseInteger(text);
    const std::string why = Settings::whyRefused(key, number ? json(*number) : json(text));
    throw UsageError(fmt::format("{}: {}: {}", file.string(), key, why));
}

/// The text to store; refuses, with the file that it would be in, what only names in the world can tell.
std::string usable(const std::string& key, const std::string& text, const fs::path& file,
                   const FolderOptions& folder, const Environment& environment) {
    try {
        return usableText(key, text, folder, environment);
    } catch (const UsageError& error) {
        throw UsageError(fmt::format("{}: {}", file.string(), error.what()));
    }
}

/// Takes keys back to their defaults, wherever they are stored.
void forget(const std::vector<std::string>& keys, const FolderOptions& folder,
            const Environment& environment) {
    std::vector<std::string> travelling, own;
    for (const std::string& key : keys) {
        const Setting* const setting = tapcore::findSetting(key);
        (setting && travels(*setting) ? travelling : own).push_back(key);
    }
    if (!travelling.empty())
        changeFolderSettings(folder, environment, [&](FolderConfig& config) {
            for (const std::string& key : travelling) config = withValue(config, key, std::nullopt);
        });
    if (!own.empty())
        Settings::change(environment, [&](Settings& all) {
            for (const std::string& key : own) all.remove(key);
        });
}

/// Runs the user's editor on a file, by the shell, since the variable may hold options too.
void runEditor(const std::string& editor, const fs::path& file) {
    const std::string command = editor + " \"$1\"";
    const pid_t child = ::fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        ::execl("/bin/sh", "sh", "-c", command.c_str(), "sh", file.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status)) throw Failure(editor, "was ended by a signal; nothing was checked");
    if (const int code = WEXITSTATUS(status); code != 0)
        throw Failure(editor, fmt::format("failed with status {}; nothing was checked", code));
}

std::string editorOf(const Environment& environment) {
    for (const char* name : {"VISUAL", "EDITOR"})
        if (const auto editor = environment.variable(name); editor && !editor->empty()) return *editor;
    throw Failure("EDITOR", "not set: name your editor in it, as in EDITOR=nano");
}

/// The stored keys that a reset takes back: those of a group, or all but the machine's id. Keys that nothing
/// reads stay.
std::vector<std::string> keysOf(const std::optional<std::string>& group, const FolderOptions& folder,
                                const Environment& environment) {
    const FolderConfig config = FolderConfig::read(openStore(folder, environment).root);
    const Settings settings = Settings::read(environment);
    std::vector<std::string> keys;
    for (const SettingValue& of : settingValues(settings, config)) {
        if (!of.setting) continue;
        const bool isSet =
            travels(*of.setting) ? !of.value.is_null() && !of.isUsual() : settings.stored().contains(of.key);
        const bool isMeant = group ? of.setting->group() == *group : !travels(*of.setting) && of.key != idKey;
        if (isSet && isMeant) keys.push_back(of.key);
    }
    return keys;
}

void requireGroup(const std::string& group) {
    std::vector<std::string> groups;
    for (const Setting& setting : tapcore::allSettings())
        if (groups.empty() || groups.back() != setting.group()) groups.emplace_back(setting.group());
    if (std::find(groups.begin(), groups.end(), group) == groups.end())
        throw UsageError("GROUP: " + noSuch("group", group, groups));
}

/// Why a stored value cannot be used; "" when it can.
std::string whyUnusable(const std::string& key, const json& value, const Environment& environment) {
    const std::string why = Settings::whyRefused(key, value);
    if (!why.empty()) return fmt::format("{}: {}", key, why);
    try {
        if (value.is_string()) (void)usableText(key, value.get<std::string>(), {}, environment);
        return "";
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// How many of the stored values cannot be used; says which and why.
std::size_t checkStored(const Settings& settings, const Environment& environment) {
    std::size_t wrong = 0;
    for (const auto& [key, text] : settings.stored()) {
        if (!tapcore::findSetting(key)) {
            complain(fmt::format("{}: {}: nothing reads this; see tappora settings", settings.path().string(),
                                 harmlessLine(key)));
            continue;
        }
        const std::string why = whyUnusable(key, json::parse(text), environment);
        if (why.empty()) continue;
        complain(fmt::format("{}: {}", settings.path().string(), why));
        ++wrong;
    }
    return wrong;
}

}  // namespace

void setSetting(const std::string& key, const std::string& text, const FolderOptions& folder,
                const Environment& environment) {
    requireSetting(key);
    if (tapcore::settingOf(key).isPrograms)
        throw UsageError(harmlessLine(key) + ": the program sets it; tappora settings edit opens the file");
    const bool isFolders = travels(tapcore::settingOf(key));
    const fs::path file =
        isFolders ? FolderConfig::url(openStore(folder, environment).root) : Settings::url(environment);
    const json given = valueFor(key, text, file);
    const std::string checked = usable(key, text, file, folder, environment);
    const json value = given.is_string() ? json(checked) : given;
    if (isFolders)
        changeFolderSettings(folder, environment,
                             [&](FolderConfig& config) { config = withValue(config, key, value); });
    else Settings::change(environment, [&](Settings& all) { all.set(key, value); });
    print(fmt::format("{}: {}\n", key, harmlessLine(tapcore::settingText(value))));
}

void unsetSetting(const std::string& key, const FolderOptions& folder, const Environment& environment) {
    if (!Settings::read(environment).stored().contains(key)) requireSetting(key);
    forget({key}, folder, environment);
    const Setting* const setting = tapcore::findSetting(key);
    const std::string_view usual = !setting                 ? "removed"
                                   : setting->usual.empty() ? setting->usualWords
                                                            : setting->usual;
    print(fmt::format("{}: {}\n", harmlessLine(key), usual));
}

void resetSettings(const std::optional<std::string>& group, bool yes, const FolderOptions& folder,
                   const Environment& environment) {
    if (group) requireGroup(*group);
    const auto keys = keysOf(group, folder, environment);
    if (keys.empty()) return print("Nothing is set.\n");
    std::string list;
    for (const std::string& key : keys) list += (list.empty() ? "" : ", ") + harmlessLine(key);
    confirm(fmt::format("{} will go back to {}.", list, keys.size() == 1 ? "its default" : "their defaults"),
            yes);
    forget(keys, folder, environment);
    print("Done.\n");
}

void editSettings(const Environment& environment) {
    const std::string editor = editorOf(environment);
    const fs::path file = Settings::url(environment);
    const bool isNew = !tapcore::isThere(file);
    if (isNew) tapcore::writeFile(file, nothingSet).requireSafe();
    try {
        runEditor(editor, file);
    } catch (const Failure&) {
        if (isNew && tapcore::readBytes(file).text == nothingSet) tapcore::removeFile(file);
        throw;
    }
    const std::size_t wrong = checkStored(Settings::read(environment), environment);
    if (wrong > 0)
        throw Failure(file.string(), tapcore::counted(wrong, "value", "values") +
                                         " cannot be used; the defaults are used instead");
}

}  // namespace tappora
