#pragma once

#include <cstdint>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tapcore {

/// A choice that users can make: its name, what it may be set to, and what holds while it is not set. Each is
/// declared once, in `allSettings`; readers, commands and docs/settings.md take it from there.
struct Setting {
    enum class Type {
        text,
        word,  ///< one of `words`
        flag,
        integer,  ///< a whole number from `least` to `most`
        list,     ///< names with blanks between them, stored as one text
        key,      ///< what a key types: one or two texts, without shift and with it
    };
    /// Where it is stored.
    enum class Kept {
        onMachine,   ///< in this machine's own settings
        withFolder,  ///< in ".keys/config.json" of the data folder, for all machines that share it
    };

    /// The most of an integer without an upper bound.
    static constexpr std::int64_t anyCount = std::numeric_limits<std::int64_t>::max();

    /// "practice.length". Of a family, words in capitals stand for any text: "practice.layout.LANGUAGE".
    std::string_view key;
    std::string_view does;    ///< what it chooses, in one sentence
    std::string_view usedBy;  ///< the commands that read it
    Type type = Type::text;
    std::string_view usual = "";       ///< the default, as users write it; "" where there is none
    std::string_view usualWords = "";  ///< what holds then, where that is no value: "the host's name"
    std::int64_t least = 0;
    std::int64_t most = 0;
    std::string_view kind = "";  ///< what a word is called: "colour"
    std::vector<std::string> (*words)() = nullptr;
    Kept kept = Kept::onMachine;
    bool isFamily = false;
    bool isPrograms = false;  ///< the program sets it, and users only take it back

    /// The part of the key before its first dot, or all of it: "practice".
    std::string_view group() const;

    /// What it may be set to: "a whole number from 5 to 200".
    std::string bounds() const;

    /// Whether it may be set to a value of a settings file.
    bool accepts(const nlohmann::json& value) const;

    /// The value that a user's text means; nothing for one that it does not accept.
    std::optional<nlohmann::json> parse(std::string_view text) const;

    /// The default; null where there is none.
    nlohmann::json usualValue() const;
};

/// A value as users write it.
std::string settingText(const nlohmann::json& value);

/// Every setting, by groups.
std::span<const Setting> allSettings();

/// The setting of a key, also of one of a family; nullptr for a key that nothing reads.
const Setting* findSetting(std::string_view key);

/// The setting of a key that the program declares. Another key is fatal.
const Setting& settingOf(std::string_view key);

}  // namespace tapcore
