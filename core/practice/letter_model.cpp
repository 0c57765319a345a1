#include "core/practice/letter_model.h"

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <unordered_set>

#include "core/foundation/characters.h"
#include "core/foundation/checked.h"
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

constexpr int attemptsForWord = 40;
constexpr std::int64_t attemptsForEachWord = 40;
constexpr std::int64_t focusedForEachWord = 30;
constexpr std::size_t freeEvery = 3;  // every third word need not hold the focus letter

/// Makes words out of a model's transitions between open letters. What may follow a context is worked out
/// when the context is first come to, and kept: a lesson comes to the same ones thousands of times. The model
/// outlives it.
class LetterWalk {
  public:
    LetterWalk(const LetterModel& model, const std::vector<std::string>& open);

    /// A word; nothing when 40 attempts fail.
    std::optional<std::string> word(SeededRandom& rng);
    /// Whether the last word made has this letter.
    bool lastWordHolds(std::string_view letter) const;

  private:
    struct Node;

    struct Candidate {
        std::string_view character;
        std::int64_t countsSoFar = 0;  ///< its count and those of the candidates before it
        Node* next = nullptr;          ///< the context it leads to, once come to
    };
    using Candidates = std::vector<Candidate>;

    /// What may follow in a word too short to end, in one that may end, and in one that must.
    enum Stage : std::size_t { within, any, atEnd };

    /// A context. What may follow it is added up for a stage when that is first come to.
    struct Node {
        const LetterModel::Counts* counts;
        std::string_view last;  ///< the context's second character
        std::array<std::optional<Candidates>, 3> stages = {};
    };

    /// Fills `letters_` with a word, unless the walk comes to no end in time.
    bool attempt(SeededRandom& rng);
    Node* node(std::string_view before, std::string_view last);
    /// What may follow once the word has so many letters.
    Candidates& candidates(Node& node, std::size_t length) const;
    bool isOpen(std::string_view character, Stage stage) const;
    Candidates candidatesOf(const LetterModel::Counts& counts, Stage stage) const;
    static Candidate* pick(Candidates& from, SeededRandom& rng);

    const LetterModel* model_;
    std::unordered_set<std::string> open_;
    std::unordered_map<std::string, std::unique_ptr<Node>> nodes_;
    std::vector<std::string_view> letters_;
};

LetterWalk::LetterWalk(const LetterModel& model, const std::vector<std::string>& open)
    : model_(&model), open_(open.begin(), open.end()) {}

std::optional<std::string> LetterWalk::word(SeededRandom& rng) {
    for (int i = 0; i < attemptsForWord; ++i) {
        if (!attempt(rng)) continue;
        std::string word;
        for (const std::string_view letter : letters_) word += letter;
        return word;
    }
    return std::nullopt;
}

bool LetterWalk::lastWordHolds(std::string_view letter) const {
    return std::find(letters_.begin(), letters_.end(), letter) != letters_.end();
}

bool LetterWalk::attempt(SeededRandom& rng) {
    letters_.clear();
    for (Node* here = node(LetterModel::wordStart, LetterModel::wordStart); here != nullptr;) {
        Candidate* const picked = pick(candidates(*here, letters_.size()), rng);
        if (picked == nullptr) return false;
        if (picked->character == LetterModel::wordEnd) return true;
        letters_.push_back(picked->character);
        if (picked->next == nullptr) picked->next = node(here->last, picked->character);
        here = picked->next;
    }
    return false;
}

LetterWalk::Candidates& LetterWalk::candidates(Node& node, std::size_t length) const {
    const Stage stage = length < LetterModel::shortestWord  ? within
                        : length < LetterModel::longestWord ? any
                                                            : atEnd;
    auto& candidates = node.stages[stage];
    if (!candidates) candidates = candidatesOf(*node.counts, stage);
    return *candidates;
}

bool LetterWalk::isOpen(std::string_view character, Stage stage) const {
    if (character == LetterModel::wordEnd) return stage != within;
    return stage != atEnd && open_.contains(std::string(character));
}

LetterWalk::Candidates LetterWalk::candidatesOf(const LetterModel::Counts& counts, Stage stage) const {
    Candidates candidates;
    std::int64_t sum = 0;
    for (const auto& [character, count] : counts)
        if (isOpen(character, stage)) {
            addChecked(sum, count);
            candidates.push_back({character, sum, nullptr});
        }
    return candidates;
}

/// One of the candidates by the weight of its count, or nothing when they weigh nothing. The first whose
/// running sum exceeds the number drawn is the one whose count exceeds what earlier counts left of that
/// number.
LetterWalk::Candidate* LetterWalk::pick(Candidates& from, SeededRandom& rng) {
    if (from.empty() || from.back().countsSoFar < 1) return nullptr;
    const auto drawn =
        static_cast<std::int64_t>(rng.below(static_cast<std::uint64_t>(from.back().countsSoFar)));
    for (Candidate& candidate : from)
        if (candidate.countsSoFar > drawn) return &candidate;
    return nullptr;
}

LetterWalk::Node* LetterWalk::node(std::string_view before, std::string_view last) {
    std::string context = std::string(before).append(last);
    const auto known = nodes_.find(context);
    if (known != nodes_.end()) return known->second.get();
    const LetterModel::Counts* counts = model_->transitions.find(context);
    if (counts == nullptr) return nullptr;
    return nodes_.emplace(std::move(context), std::make_unique<Node>(Node{counts, last})).first->second.get();
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
    std::vector<std::string> languages = namesWithEnding(ending, folder);
    std::erase_if(languages, [](const std::string& name) { return name.empty() || name.front() == '.'; });
    return languages;
}

std::optional<std::string> LetterModel::word(const std::vector<std::string>& open, SeededRandom& rng) const {
    return LetterWalk(*this, open).word(rng);
}

std::vector<std::string> LetterModel::lesson(const std::vector<std::string>& open,
                                             const std::optional<std::string>& focus, std::int64_t count,
                                             SeededRandom& rng) const {
    LetterWalk walk(*this, open);
    std::vector<std::string> words;
    const std::int64_t attempts = checkedProduct(attemptsForEachWord, count);
    const std::int64_t focused = checkedProduct(focusedForEachWord, count);
    for (std::int64_t spent = 0; spent < attempts && static_cast<std::int64_t>(words.size()) < count;
         ++spent) {
        auto word = walk.word(rng);
        if (!word) continue;
        const bool isFree = !focus || spent >= focused || words.size() % freeEvery == freeEvery - 1;
        if (isFree || walk.lastWordHolds(*focus)) words.push_back(std::move(*word));
    }
    return words;
}

}  // namespace tapcore
