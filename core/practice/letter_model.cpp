#include "core/practice/letter_model.h"

#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".json";

/// Sees that texts are single characters. Finding where a character ends takes long, and a model has the same
/// few in thousands of places: each is looked at once.
class SingleCharacters {
  public:
    const std::string& checked(const std::string& text, const JsonValue& place) {
        if (known_.contains(text)) return text;
        if (!isSingleCharacter(text)) place.fail("not one character: \"" + text + "\"");
        known_.insert(text);
        return text;
    }

  private:
    std::unordered_set<std::string> known_;
};

LetterModel::Counts readCounts(const JsonValue& object, SingleCharacters& characters) {
    LetterModel::Counts counts;
    object.forEachMember([&](const std::string& next, const JsonValue& count) {
        counts[characters.checked(next, object)] = count.integer();
    });
    return counts;
}

std::shared_ptr<const LetterModel> read(std::string_view language, const fs::path& path) {
    const FileRead file = readFile(path);
    if (file.status != FileRead::Status::read) return nullptr;
    try {
        return std::make_shared<const LetterModel>(LetterModel::parse(language, file.text));
    } catch (const JsonError&) {
        return nullptr;
    }
}

struct Cache {
    std::mutex lock;
    std::map<fs::path, std::shared_ptr<const LetterModel>> models;
};

Cache& cache() {
    static Cache theOne;
    return theOne;
}

}  // namespace

LetterModel LetterModel::parse(std::string_view language, std::string_view text) {
    const nlohmann::json document = JsonValue::parse(text);
    const JsonValue root(document);
    LetterModel model;
    model.language = language;
    SingleCharacters characters;
    const JsonValue order = root.member("order");
    for (std::size_t i = 0; i < order.size(); ++i)
        model.order.push_back(characters.checked(order.element(i).string(), order.element(i)));
    root.member("transitions").forEachMember([&](const std::string& context, const JsonValue& counts) {
        model.transitions[context] = readCounts(counts, characters);
    });
    return model;
}

std::shared_ptr<const LetterModel> LetterModel::load(std::string_view language, const fs::path& folder) {
    if (language.find('/') != std::string_view::npos) return nullptr;
    const fs::path path = folder / std::string(language).append(ending);
    Cache& shared = cache();
    const std::lock_guard guard(shared.lock);
    const auto known = shared.models.find(path);
    if (known != shared.models.end()) return known->second;
    auto model = read(language, path);
    if (model) shared.models.emplace(path, model);
    return model;
}

std::vector<std::string> LetterModel::available(const fs::path& folder) {
    std::vector<std::string> languages;
    for (const std::string& name : namesIn(folder))
        if (name.size() > ending.size() && name.ends_with(ending) && name.front() != '.')
            languages.push_back(name.substr(0, name.size() - ending.size()));
    return languages;
}

}  // namespace tapcore
