#include "core/words/words.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".json";

std::string textOf(const fs::path& file) {
    const FileRead read = readFile(file);
    if (const auto why = read.failure()) throw Words::FileError(file.string() + ": " + why.message());
    return read.text;
}

}  // namespace

Words Words::load(const fs::path& folder, std::string_view language) {
    Words words;
    // Only a name that is there: "../en" is not a language.
    const auto known = languages(folder);
    if (language != source && std::find(known.begin(), known.end(), language) != known.end())
        words.tables_.push_back(read(folder, language));
    words.tables_.push_back(read(folder, source));
    return words;
}

std::vector<std::string> Words::languages(const fs::path& folder) { return namesWithEnding(ending, folder); }

Words::Table Words::read(const fs::path& folder, std::string_view language) {
    Table table{std::string(language), LanguageRules(language), {}};
    const fs::path file = folder / std::string(language).append(ending);
    const std::string text = textOf(file);
    try {
        const nlohmann::json document = JsonValue::parse(text);
        JsonValue(document).forEachMember([&](const std::string& key, const JsonValue& value) {
            table.texts.emplace(key, value.string());
        });
    } catch (const JsonError& error) {
        throw FileError(file.string() + ": " + error.what());
    }
    return table;
}

std::string Words::text(std::string_view key, Values values) const {
    for (const Table& table : tables_)
        if (const auto found = table.texts.find(key); found != table.texts.end())
            return filled(found->second, values);
    return std::string(key);
}

}  // namespace tapcore
