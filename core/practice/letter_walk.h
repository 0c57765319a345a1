#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/practice/letter_model.h"
#include "core/practice/seeded_random.h"

namespace tapcore {

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

}  // namespace tapcore
