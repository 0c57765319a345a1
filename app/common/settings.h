#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/program.h"

namespace tappora {

/// What the user has set for good: the texts among the members of the JSON object in "settings.json", by
/// dotted names
/// ("keyboard.board").
class Settings {
  public:
    Settings() = default;
    explicit Settings(std::map<std::string, std::string, std::less<>> values) : values_(std::move(values)) {}

    /// Those of the environment's user; none without a file. Failure when there is one that cannot be read.
    static Settings read(const Environment& environment);

    /// Where they lie: under $XDG_CONFIG_HOME/tappora, else under ~/.config/tappora.
    static std::filesystem::path file(const Environment& environment);

    /// The text of a setting, or nothing.
    std::optional<std::string> text(std::string_view name) const;

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tappora
