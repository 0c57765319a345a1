#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/counting/day.h"
#include "core/foundation/calendar.h"
#include "core/practice/lesson_plan.h"
#include "core/practice/lesson_session.h"
#include "core/practice/letter_model.h"
#include "core/practice/practice_history.h"
#include "core/practice/practice_review.h"
#include "core/practice/practice_rules.h"

namespace tappora {

/// What is practised, and how.
struct TrainerSetup {
    std::shared_ptr<const tapcore::LetterModel> model;
    tapcore::PracticeRules rules;
    tapcore::LessonWish wish;
    std::string layout;              ///< its id
    std::int64_t goalSeconds = 300;  ///< of a day
    bool letErrorsStand = false;

    /// `wish.own` is of so many days.
    static constexpr std::int64_t ownDays = 30;
};

/// What the trainer needs of the world around it.
struct TrainerWorld {
    std::function<tapcore::Day()> today;
    /// Adds to a day's practice file. May throw: nothing is lost, and the next call has it again.
    std::function<void(const tapcore::PracticeDay&, const tapcore::Day&)> save;
    /// Keeps for good how many letters, digits or marks are open, under a settings key.
    std::function<void(const std::string& key, std::int64_t opened)> remember;
};

/// The settings key of how many letters of a language are open on a layout.
std::string lettersOpenedKey(const std::string& language, const std::string& layout);

/// Lesson after lesson, without a screen: plans them, counts them, reviews them, and has what was practised
/// saved. Moments are in milliseconds of a clock that only runs forwards.
class Trainer {
  public:
    /// `history` is all practice so far. Failure when the model makes no words of the letters.
    Trainer(TrainerSetup setup, tapcore::PracticeHistory history, std::uint64_t seed,
            tapcore::Calendar calendar, TrainerWorld world);

    void press(std::string_view character, std::int64_t now);
    void erase() { session_->erase(); }
    /// See LessonSession::settle.
    bool settle(std::int64_t now);
    /// Goes on to the next lesson, once this one is finished.
    void nextLesson();

    /// Whether something was practised that is not saved yet; saves it. What `save` of the world throws is
    /// passed on.
    bool hasUnsaved() const { return !unsaved_.empty() || session_->hasShare(); }
    void save();

    const TrainerSetup& setup() const { return setup_; }
    const tapcore::LessonPlan& plan() const { return plan_; }
    const tapcore::LessonSession& session() const { return *session_; }
    /// The review of the lesson, once it is finished, and the letters it names as slowest.
    const std::optional<tapcore::LessonResult>& result() const { return result_; }
    std::vector<std::string> slowest() const;
    /// The speed that the lesson is compared with; nothing when little was typed recently.
    std::optional<std::int64_t> usual() const;
    std::int64_t lessonNumber() const { return lessonNumber_; }
    std::int64_t todaySeconds() const;

    /// A letter's counters on this layout, the current lesson included, and what the rules make of them.
    tapcore::LetterStats total(const std::string& letter) const;
    tapcore::LetterState state(const std::string& letter) const;
    bool isOpen(const std::string& letter) const;

  private:
    void startLesson();
    void noteOpened();
    void collect();
    void finish();
    void add(const tapcore::PracticeDay& practised, const tapcore::Day& day);
    /// The counters of the current lesson, to be added to those of the days before it.
    tapcore::LetterStats ofLesson(const std::string& letter) const;

    TrainerSetup setup_;
    tapcore::PracticeHistory history_;  ///< everything collected so far
    tapcore::SeededRandom rng_;
    tapcore::Calendar calendar_;
    TrainerWorld world_;

    std::int64_t lessonNumber_ = 0;
    tapcore::LessonPlan plan_;
    std::optional<tapcore::LessonSession> session_;
    std::optional<tapcore::LessonResult> result_;
    tapcore::PracticeHistory before_;                 ///< all practice before this lesson
    tapcore::LetterCounts totals_, recent_, todays_;  ///< of that, on this layout

    tapcore::Day shareDay_;          ///< the day that the session's share belongs to
    std::int64_t milliseconds_ = 0;  ///< practised, and short of a second
    std::map<tapcore::Day, tapcore::PracticeDay> unsaved_;
    std::map<std::string, std::int64_t> unremembered_;
};

}  // namespace tappora
