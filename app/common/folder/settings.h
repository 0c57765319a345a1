#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/folder/folder_lock.h"
#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"

namespace tappora {

/// The user's settings on this machine: one flat JSON object of dotted keys ("folder.path") in
/// $XDG_CONFIG_HOME/tappora/settings.json. Each is declared in core/settings. Members that are not are kept.
class Settings {
  public:
    static std::filesystem::path url(const Environment& environment);

    /// The members of a settings file, each as JSON text. JsonError for what is not an object, or has one
    /// twice.
    static std::map<std::string, std::string, std::less<>> parse(std::string_view text);

    /// The settings as stored; none when there is no file. Failure when the file cannot be read, is not a
    /// JSON object or has a member twice.
    static Settings read(const Environment& environment);

    /// Changes the settings as stored, which other programs do as well: reads, changes and stores them whole
    /// under a lock of their folder. Gives them as they are now. A file behind a link is written there, and
    /// one that is read-only is refused. Throws like `read`, and std::filesystem::filesystem_error with the
    /// path.
    static Settings change(const Environment& environment, const std::function<void(Settings&)>& change,
                           const Tell& tell = complain,
                           const LockForWriting& lockForWriting = tappora::lockForWriting);

    /// The value of a key: the one stored, else the default, where there is one. A stored value that the
    /// setting does not accept is warned of, with the file and what may be there, and the default is used.
    std::optional<std::string> text(std::string_view key) const;
    bool flag(std::string_view key) const;
    std::optional<std::int64_t> integer(std::string_view key) const;

    /// The value of a key as JSON; null where there is none.
    nlohmann::json valueOf(std::string_view key) const;

    /// Warns that a stored value cannot be used, for a reason that the declaration does not know: "no such
    /// board: x". Says that the default is used.
    void warnOf(std::string_view key, std::string_view why) const;

    /// The values stored, as JSON, also those that nothing reads.
    const std::map<std::string, std::string, std::less<>>& stored() const { return values_; }
    const std::filesystem::path& path() const { return path_; }

    /// Why a value cannot be set: "500 is not a whole number from 5 to 200"; "" when it can.
    static std::string whyRefused(std::string_view key, const nlohmann::json& value);

    /// Stores a value, which the setting accepts.
    void set(std::string_view key, const nlohmann::json& value);
    void setText(std::string_view key, std::string_view value);
    void setFlag(std::string_view key, bool value);
    void setInteger(std::string_view key, std::int64_t value);
    void remove(std::string_view key);

  private:
    tapcore::Written write() const;

    std::filesystem::path path_;
    Tell warn_;
    std::map<std::string, std::string, std::less<>> values_;  ///< each as JSON text
};

}  // namespace tappora
