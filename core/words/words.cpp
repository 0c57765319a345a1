#include "core/words/words.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <span>

#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

using NamedValues = std::span<const std::pair<std::string_view, std::string>>;
using Forms = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view ending = ".json";
constexpr std::string_view general = "other";
constexpr std::string_view categories[] = {"zero", "one", "two", "few", "many", general};

template <class Items, class Item>
bool isIn(const Items& items, const Item& item) {
    return std::find(std::begin(items), std::end(items), item) != std::end(items);
}

std::string textOf(const fs::path& file) {
    const FileRead read = readFile(file);
    if (const auto why = read.failure()) throw Words::FileError(file.string() + ": " + why.message());
    return read.text;
}

Forms formsOf(const JsonValue& text) {
    if (text.raw().is_string()) return {{std::string(general), text.string()}};
    if (!text.raw().is_object()) text.fail("neither a text nor an object of plural forms");
    Forms forms;
    text.forEachMember([&](const std::string& category, const JsonValue& form) {
        if (!isIn(categories, category)) form.fail("no plural category");
        forms.emplace(category, form.string());
    });
    if (!forms.contains(general)) text.fail("the form \"other\" is missing");
    return forms;
}

/// Where a text has a "{name}", and the value for it.
struct Slot {
    std::size_t begin, size;
    std::string_view value;
};

/// The next one; at the end of the text, of no size, when there are no more.
Slot nextSlot(std::string_view text, std::size_t from, NamedValues values) {
    for (auto open = text.find('{', from); open != text.npos; open = text.find('{', open + 1)) {
        const auto close = text.find('}', open);
        if (close == text.npos) break;
        const std::string_view name = text.substr(open + 1, close - open - 1);
        for (const auto& [key, value] : values)
            if (key == name) return {open, close + 1 - open, value};
    }
    return {text.size(), 0, ""};
}

std::string filled(std::string_view text, NamedValues values) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const Slot slot = nextSlot(text, at, values);
        result.append(text.substr(at, slot.begin - at)).append(slot.value);
        at = slot.begin + slot.size;
    }
    return result;
}

}  // namespace

Words Words::load(const fs::path& folder, std::string_view language) {
    Words words;
    // Only a name that is there: "../en" is not a language.
    if (language != source && isIn(languages(folder), language))
        words.tables_.push_back(read(folder, language));
    words.tables_.push_back(read(folder, source));
    return words;
}

std::vector<std::string> Words::languages(const fs::path& folder) {
    std::vector<std::string> codes;
    for (const std::string& name : namesIn(folder))
        if (name.ends_with(ending)) codes.push_back(name.substr(0, name.size() - ending.size()));
    return codes;
}

Words::Table Words::read(const fs::path& folder, std::string_view language) {
    Table table{std::string(language), LanguageRules(language), {}};
    const fs::path file = folder / std::string(language).append(ending);
    const std::string text = textOf(file);
    try {
        const nlohmann::json document = JsonValue::parse(text);
        JsonValue(document).forEachMember([&](const std::string& key, const JsonValue& value) {
            table.texts.emplace(key, formsOf(value));
        });
    } catch (const JsonError& error) {
        throw FileError(file.string() + ": " + error.what());
    }
    return table;
}

/// The text of a key as its table has it: the form for a count, or the general one.
std::string Words::form(std::string_view key, std::optional<std::int64_t> count) const {
    for (const Table& table : tables_) {
        const auto found = table.texts.find(key);
        if (found == table.texts.end()) continue;
        const Forms& forms = found->second;
        const auto chosen = count ? forms.find(table.rules.pluralCategory(*count)) : forms.end();
        return chosen == forms.end() ? forms.find(general)->second : chosen->second;
    }
    return std::string(key);
}

std::string Words::text(std::string_view key, Values values) const {
    return filled(form(key, std::nullopt), {values.begin(), values.size()});
}

std::string Words::plural(std::string_view key, std::int64_t count, Values values) const {
    std::vector<Values::value_type> all(values);
    all.emplace_back("n", number(count));
    return filled(form(key, count), all);
}

}  // namespace tapcore
