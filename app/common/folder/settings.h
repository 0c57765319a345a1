#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/folder/write_told.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"

namespace tappora {

/// The user's settings on this machine: one flat JSON object of dotted keys ("folder.path") in
/// $XDG_CONFIG_HOME/tappora/settings.json. Members nobody asks for are kept.
class Settings {
  public:
    static std::filesystem::path url(const Environment& environment);

    /// The settings as stored; none when there is no file. Failure when the file cannot be read or is no JSON
    /// object.
    static Settings read(const Environment& environment);

    /// Changes the settings as stored, which other programs do as well: reads, changes and stores them whole
    /// under a lock of their folder. Gives them as they are now. Throws like `read`, and
    /// std::filesystem::filesystem_error with the path.
    static Settings change(const Environment& environment, const std::function<void(Settings&)>& change,
                           const Tell& tell = complain);

    /// The value of a key, when it is set. Failure, naming file and key, when it is of another type.
    std::optional<std::string> text(std::string_view key) const;
    std::optional<bool> flag(std::string_view key) const;
    std::optional<std::int64_t> integer(std::string_view key) const;

    void setText(std::string_view key, std::string_view value);
    void setFlag(std::string_view key, bool value);
    void setInteger(std::string_view key, std::int64_t value);
    void remove(std::string_view key);

  private:
    tapcore::Written write() const;

    std::filesystem::path path_;
    std::map<std::string, std::string, std::less<>> values_;  ///< each as JSON text
};

}  // namespace tappora
