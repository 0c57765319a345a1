#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tapcore {

/// JSON that is not what was wanted. `what()` says where and why: "keys[3].w: not a number".
class JsonError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A value of a JSON document together with its place in it, read with exact types: a boolean is no
/// number, 1.0 is the integer 1, 1.5 is no integer, null is an absent optional, and members nobody asks for
/// are ignored. Everything else throws JsonError. It refers to the document, which must outlive it.
class JsonValue {
  public:
    /// The whole of a document.
    explicit JsonValue(const nlohmann::json& document) : JsonValue(document, "") {}

    /// Parses a text; throws JsonError saying line and column.
    static nlohmann::json parse(std::string_view text);

    std::string string() const;
    double number() const;
    std::int64_t integer() const;
    bool boolean() const;

    /// The member of this object; throws when it is missing.
    JsonValue member(std::string_view name) const;
    /// The same, or nothing when it is missing or null.
    std::optional<JsonValue> optionalMember(std::string_view name) const;

    /// How many elements this array has, and each of them.
    std::size_t size() const;
    JsonValue element(std::size_t index) const;

    /// Calls `visit(name, value)` for each member of this object, by name ascending.
    template <class Visit>
    void forEachMember(Visit visit) const {
        for (const std::string& name : memberNames()) visit(name, member(name));
    }

    const nlohmann::json& raw() const { return *value_; }
    /// Where it stands: "keys[3].w"; "" for the whole document.
    const std::string& place() const { return place_; }

    /// A JsonError about this place.
    [[noreturn]] void fail(std::string_view why) const;

  private:
    JsonValue(const nlohmann::json& value, std::string place) : value_(&value), place_(std::move(place)) {}
    std::vector<std::string> memberNames() const;

    const nlohmann::json* value_;
    std::string place_;
};

}  // namespace tapcore
