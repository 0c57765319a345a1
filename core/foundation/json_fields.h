#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/foundation/text_error.h"

namespace tapcore {

/// JSON that is not what was wanted. `what()` says where and why: "keys[3].w: not a number".
class JsonError : public TextError {
  public:
    using TextError::TextError;
};

/// A value as JSON in one line. Bytes that are not UTF-8 become U+FFFD.
std::string jsonLine(const nlohmann::json& value);

/// A value of a JSON document together with its place in it, read with exact types: a boolean is not
/// a number, 1.0 is the integer 1, 1.5 is not an integer, null is an absent optional, and members nobody asks
/// for are ignored. Everything else throws JsonError. It refers to the document, which must outlive it.
class JsonValue {
  public:
    /// The whole of a document.
    explicit JsonValue(const nlohmann::json& document) : JsonValue(document, "") {}

    /// Parses a text; throws JsonError saying line and column. What is more than 500 arrays and objects
    /// deep is refused, so that whatever walks a document may recurse.
    static nlohmann::json parse(std::string_view text);
    /// A text as JSON, or nothing for what is not JSON.
    static std::optional<nlohmann::json> tryParse(std::string_view text);

    std::string string() const;
    double number() const;
    std::int64_t integer() const;
    bool boolean() const;
    /// The value of a stored word, from the enumeration's table of them.
    template <class Table>
    auto word(const Table& table) const {
        const auto value = table.find(string());
        if (!value) failAtUnknownWord();
        return *value;
    }

    /// The member of this object; throws when it is missing.
    JsonValue member(std::string_view name) const;
    /// The member of this object, or nothing when it is missing or null.
    std::optional<JsonValue> optionalMember(std::string_view name) const;
    /// What `read` makes of a member that is there: `optionalMember("w", &JsonValue::number)`.
    template <class Read>
    auto optionalMember(std::string_view name, Read read) const {
        const auto found = optionalMember(name);
        return found ? std::optional(std::invoke(read, *found)) : std::nullopt;
    }

    /// How many elements this array has, and each of them.
    std::size_t size() const;
    JsonValue element(std::size_t index) const;

    /// Calls `visit(name, value)` for each member of this object, by name ascending; one that is null is
    /// visited too.
    template <class Visit>
    void forEachMember(Visit visit) const {
        for (const auto& [name, value] : members()) visit(name, value);
    }

    const nlohmann::json& raw() const { return *value_; }
    /// Where it is: "keys[3].w"; "" for the whole document.
    const std::string& place() const { return place_; }

    /// A JsonError about this place.
    [[noreturn]] void fail(std::string_view why) const;

  private:
    JsonValue(const nlohmann::json& value, std::string place) : value_(&value), place_(std::move(place)) {}
    std::vector<std::pair<std::string, JsonValue>> members() const;
    JsonValue at(std::string_view name, const nlohmann::json& value) const;
    [[noreturn]] void failAtUnknownWord() const;

    const nlohmann::json* value_;
    std::string place_;
};

/// A document as people read and edit it, in a file as on a terminal: members sorted, and a line for each
/// member or element of what does not fit in 100 columns. An element of a list that holds no list is on one
/// line, however long: it is a row of a table. The last line is ended. What is not UTF-8 becomes U+FFFD.
std::string jsonText(const nlohmann::json& document);

/// A document with a line for each value, as settings files hold it: indented by two spaces, members sorted,
/// the last line ended. What is not UTF-8 becomes U+FFFD.
std::string indentedJson(const nlohmann::json& document);

}  // namespace tapcore
