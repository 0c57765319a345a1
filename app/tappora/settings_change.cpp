// Setting, unsetting and editing what is set. What a setting does not accept is never stored.

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/resources.h"
#include "app/tappora/settings_tasks.h"
#include "core/files/folder_config.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"
#include "core/practice/letter_model.h"
#include "core/words/words.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::FolderConfig;
using tapcore::Setting;

constexpr std::string_view idKey = "machine.id";

bool travels(const Setting& setting) { return setting.kept == Setting::Kept::withFolder; }

/// Refuses a name that is not among those there are: "WHAT: no such KIND: NAME; use …".
void requireAmong(const std::vector<std::string>& known, std::string_view what, std::string_view kind,
                  const std::string& name) {
    if (std::find(known.begin(), known.end(), name) == known.end())
        throw UsageError(fmt::format("{}: {}", what, noSuch(kind, name, known)));
}

/// Refuses keys that are not on the layout in force.
void requireRemaps(const std::string& value, const FolderOptions& folder, const Environment& environment) {
    const tapcore::Store store = openStore(folder, environment);
    try {
        (void)parseRemaps(value, Keyboards(environment, store).chosenLayout({}).names());
    } catch (const UsageError& error) {
        throw UsageError(fmt::format("{}: {}", remapsKey, error.what()));
    }
}

/// Refuses the name of a thing that is not there, which the declaration cannot know.
void requireThere(const std::string& key, const std::string& value, const FolderOptions& folder,
                  const Environment& environment) {
    const fs::path resources = resourceFolder(environment);
    if (key == "language") {
        auto known = tapcore::Words::languages(resources / "Words");
        known.insert(known.begin(), "system");
        requireAmong(known, key, "language", value);
    }
    if (key == "practice.language")
        requireAmong(tapcore::LetterModel::available(resources / "Practice"), key, "language", value);
    if (key == "folder.path" && !fs::path(value).is_absolute())
        throw UsageError(key + ": " + value + ": not a whole path; tappora folder set takes any");
    if (key == remapsKey) return requireRemaps(value, folder, environment);
    const bool isBoard = key == "board" || key == "keyboard.board";
    const bool isLayout = key == "layout" || key == "keyboard.layout" || key.starts_with("practice.layout.");
    if (value == "auto" || (!isBoard && !isLayout)) return;
    const tapcore::Store store = openStore(folder, environment);
    const Keyboards keyboards(environment, store);
    if (isBoard) (void)keyboards.board(key, value);
    if (isLayout) (void)keyboards.layout(key, value);
}

/// The value that a text means; UsageError, naming the file that it would be in, for one that is refused.
json valueFor(const std::string& key, const std::string& text, const fs::path& file) {
    const auto value = tapcore::settingOf(key).parse(text);
    if (value) return *value;
    const auto number = tapcore::parseInteger(text);
    const std::string why = Settings::whyRefused(key, number ? json(*number) : json(text));
    throw UsageError(fmt::format("{}: {}: {}", file.string(), key, why));
}

/// Takes a key back to its default, wherever it is stored.
void forget(const std::string& key, const FolderOptions& folder, const Environment& environment) {
    const Setting* const setting = tapcore::findSetting(key);
    if (setting && travels(*setting))
        return changeFolderSettings(folder, environment, [&](FolderConfig& config) {
            config = withValue(config, key, std::nullopt);
        });
    Settings::change(environment, [&](Settings& all) { all.remove(key); });
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
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw Failure(editor, "did not end well");
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
    requireAmong(groups, "GROUP", "group", group);
}

/// How many of the stored values cannot be used; says which and why.
std::size_t checkStored(const Settings& settings) {
    std::size_t wrong = 0;
    for (const auto& [key, text] : settings.stored()) {
        if (!tapcore::findSetting(key)) continue;
        const std::string why = Settings::whyRefused(key, json::parse(text));
        if (why.empty()) continue;
        complain(fmt::format("{}: {}: {}", settings.path().string(), key, why));
        ++wrong;
    }
    return wrong;
}

}  // namespace

void setSetting(const std::string& key, const std::string& text, const FolderOptions& folder,
                const Environment& environment) {
    requireSetting(key);
    const bool isFolders = travels(tapcore::settingOf(key));
    const fs::path file =
        isFolders ? FolderConfig::url(openStore(folder, environment).root) : Settings::url(environment);
    const json value = valueFor(key, text, file);
    requireThere(key, text, folder, environment);
    if (isFolders)
        changeFolderSettings(folder, environment,
                             [&](FolderConfig& config) { config = withValue(config, key, value); });
    else Settings::change(environment, [&](Settings& all) { all.set(key, value); });
    print(fmt::format("{}: {}\n", key, harmlessLine(tapcore::settingText(value))));
}

void unsetSetting(const std::string& key, const FolderOptions& folder, const Environment& environment) {
    if (!Settings::read(environment).stored().contains(key)) requireSetting(key);
    forget(key, folder, environment);
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
    for (const std::string& key : keys) forget(key, folder, environment);
    print("Done.\n");
}

void editSettings(const Environment& environment) {
    const std::string editor = editorOf(environment);
    const fs::path file = Settings::url(environment);
    if (!tapcore::isThere(file)) tapcore::writeFile(file, "{}\n").requireSafe();
    runEditor(editor, file);
    const std::size_t wrong = checkStored(Settings::read(environment));
    if (wrong > 0)
        throw Failure(file.string(), tapcore::counted(wrong, "value", "values") +
                                         " cannot be used; the defaults are used instead");
}

}  // namespace tappora
