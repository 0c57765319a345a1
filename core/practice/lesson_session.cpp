#include "core/practice/lesson_session.h"

#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/checked.h"

namespace tapcore {

LessonSession::LessonSession(const std::vector<std::string>& words, bool letErrorsStand)
    : letErrorsStand_(letErrorsStand) {
    for (const std::string& word : words) text_ += text_.empty() ? composed(word) : " " + composed(word);
    for (const std::string_view character : tapcore::characters(text_)) characters_.emplace_back(character);
    outcomes_.assign(characters_.size(), Outcome::ahead);
}

void LessonSession::press(std::string_view character, std::int64_t now) {
    std::string typed = composed(beginning_ + std::string(character));
    if (!beginning_.empty() && !isSingleCharacter(typed)) {
        judge(std::exchange(beginning_, {}), beginningAt_);
        typed = composed(character);
    }
    if (isBeginning(typed)) {
        if (beginning_.empty()) beginningAt_ = now;
        beginning_ = std::move(typed);
        return;
    }
    beginning_.clear();
    judge(typed, now);
}

bool LessonSession::settle(std::int64_t now) {
    if (isWaiting() && now - beginningAt_ >= longestBeginning)
        judge(std::exchange(beginning_, {}), beginningAt_);
    return isWaiting();
}

/// Whether a character is the expected one's base, or its base and some of its marks.
bool LessonSession::isBeginning(std::string_view character) const {
    if (isFinished() || character == *expected()) return false;
    return decomposed(*expected()).starts_with(decomposed(character));
}

void LessonSession::judge(std::string_view character, std::int64_t now) {
    if (isFinished()) return;
    const std::optional<std::int64_t> gap =
        lastPress_ && now - *lastPress_ <= longestGap ? std::optional(now - *lastPress_) : std::nullopt;
    lastPress_ = now;
    addChecked(milliseconds_, gap.value_or(0));
    addChecked(share_.milliseconds, gap.value_or(0));
    Outcome& outcome = outcomes_[position_];
    const std::string& wanted = characters_[position_];
    if (character == wanted) {
        const bool isTimed = gap && *gap >= shortestGap && !isAfterError_;
        count(wanted, {1, 0, isTimed ? 1 : 0, isTimed ? *gap : 0, 1});
        if (outcome == Outcome::wrong) outcome = Outcome::corrected;
        else if (outcome == Outcome::ahead) outcome = Outcome::right;
    } else {
        count(wanted, {0, 1, 0, 0, 1});
        outcome = Outcome::wrong;
    }
    isAfterError_ = character != wanted;
    if (character == wanted || letErrorsStand_) ++position_;
}

void LessonSession::count(const std::string& expected, const LetterStats& stats) {
    counts_[expected].addSameDay(stats);
    share_.counts[expected].addSameDay(stats);
}

void LessonSession::erase() {
    const bool takesBackBeginning = !std::exchange(beginning_, {}).empty();
    if (takesBackBeginning || !letErrorsStand_ || position_ == 0) return;
    --position_;
    isAfterError_ = true;
}

LessonSession::Share LessonSession::takeShare() { return std::exchange(share_, {}); }

}  // namespace tapcore
