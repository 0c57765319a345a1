#include "app/practice/trainer.h"

#include <algorithm>
#include <utility>

#include "app/common/program.h"
#include "core/practice/practice_course.h"

namespace tappora {
namespace {

using tapcore::Day;
using tapcore::LetterStats;
using tapcore::PracticeCourse;
using tapcore::PracticeDay;
namespace PracticeReview = tapcore::PracticeReview;

constexpr std::int64_t recentDays = 14;
constexpr std::size_t slowestShown = 3;

}  // namespace

std::string lettersOpenedKey(const std::string& language, const std::string& layout) {
    return "practice.opened." + language + "." + layout;
}

Trainer::Trainer(TrainerSetup setup, tapcore::PracticeHistory history, std::uint64_t seed,
                 tapcore::Calendar calendar, TrainerWorld world)
    : setup_(std::move(setup)),
      history_(std::move(history)),
      rng_(seed),
      calendar_(std::move(calendar)),
      world_(std::move(world)) {
    startLesson();
}

void Trainer::startLesson() {
    ++lessonNumber_;
    shareDay_ = world_.today();
    before_ = history_;
    totals_ = before_.totals(setup_.layout);
    recent_ = before_.recent(shareDay_.adding(1 - recentDays, calendar_), setup_.layout);
    todays_ = before_.days[shareDay_].lettersOn(setup_.layout);
    plan_ = tapcore::planLesson(*setup_.model, setup_.rules, totals_, setup_.wish, rng_);
    if (plan_.words.empty()) throw Failure(setup_.model->language, "the letters that are open make no words");
    session_.emplace(plan_.words, setup_.letErrorsStand);
    result_.reset();
    noteOpened();
}

/// Sees that what is open stays so, and is known again at the next start.
void Trainer::noteOpened() {
    const auto note = [&](const std::string& key, std::int64_t& opened, std::size_t now,
                          std::int64_t atFirst) {
        const auto count = static_cast<std::int64_t>(now);
        if (count <= std::max(opened, atFirst)) return;
        opened = count;
        unremembered_[key] = count;
    };
    tapcore::LessonWish& wish = setup_.wish;
    const auto key = [&](PracticeCourse course) { return course.openedKey(setup_.layout); };
    note(lettersOpenedKey(setup_.model->language, setup_.layout), wish.lettersOpened, plan_.open.size(),
         setup_.rules.start);
    note(key(PracticeCourse::digits), wish.digitsOpened, plan_.openDigits.size(), tapcore::courseStart);
    note(key(PracticeCourse::marks), wish.marksOpened, plan_.openMarks.size(), tapcore::courseStart);
}

void Trainer::nextLesson() {
    if (session_->isFinished()) startLesson();
}

void Trainer::press(std::string_view character, std::int64_t now) {
    if (session_->isFinished()) return;
    if (const Day today = world_.today(); today != shareDay_) {
        collect();
        shareDay_ = today;
    }
    session_->press(character, now);
    if (session_->isFinished()) finish();
}

bool Trainer::settle(std::int64_t now) {
    const bool isWaiting = session_->settle(now);
    if (session_->isFinished() && !result_) finish();
    return isWaiting;
}

/// Moves what the session counted to the day it was typed on.
void Trainer::collect() {
    if (!session_->hasShare()) return;
    const tapcore::LessonSession::Share share = session_->takeShare();
    PracticeDay practised;
    for (const auto& [letter, stats] : share.counts) practised.add(setup_.layout, letter, stats);
    milliseconds_ += share.milliseconds;
    practised.seconds = milliseconds_ / 1000;
    milliseconds_ %= 1000;
    practised.layout = setup_.layout;
    add(practised, shareDay_);
}

void Trainer::add(const PracticeDay& practised, const Day& day) {
    history_.days[day].merge(practised);
    unsaved_[day].merge(practised);
}

void Trainer::finish() {
    collect();
    tapcore::FinishedLesson lesson{.counts = session_->counts(),
                                   .seconds = session_->milliseconds() / 1000,
                                   .layout = setup_.layout,
                                   .focus = plan_.focus(),
                                   .newLetter = {}};
    const auto open = setup_.rules.open(setup_.model->order, history_.totals(setup_.layout), std::nullopt,
                                        setup_.wish.lettersOpened);
    if (open.size() > plan_.open.size()) lesson.newLetter = open.back();
    result_ = PracticeReview::review(lesson, before_, setup_.rules, shareDay_, setup_.goalSeconds, calendar_);

    PracticeDay done;
    done.lessons = 1;
    if (PracticeReview::counts(lesson.counts, setup_.rules)) {
        done.best = result_->wpm;
        done.bests[setup_.layout] = result_->wpm;
    }
    add(done, shareDay_);
}

void Trainer::save() {
    collect();
    while (!unsaved_.empty()) {
        world_.save(unsaved_.begin()->second, unsaved_.begin()->first);
        unsaved_.erase(unsaved_.begin());
    }
    while (!unremembered_.empty()) {
        world_.remember(unremembered_.begin()->first, unremembered_.begin()->second);
        unremembered_.erase(unremembered_.begin());
    }
}

std::vector<std::string> Trainer::slowest() const {
    return PracticeReview::slowest(session_->counts(), slowestShown);
}

std::optional<std::int64_t> Trainer::usual() const {
    return PracticeReview::usual(before_, setup_.layout, setup_.rules, shareDay_, calendar_);
}

std::int64_t Trainer::todaySeconds() const {
    return before_.seconds(shareDay_) + session_->milliseconds() / 1000;
}

LetterStats Trainer::ofLesson(const std::string& letter) const {
    LetterStats stats = statsOf(letter, session_->counts());
    if (todays_.contains(letter)) stats.days = 0;  // the day is among those before already
    return stats;
}

LetterStats Trainer::total(const std::string& letter) const {
    return statsOf(letter, totals_) + ofLesson(letter);
}

tapcore::LetterState Trainer::state(const std::string& letter) const {
    return setup_.rules.state(isOpen(letter), total(letter), statsOf(letter, recent_) + ofLesson(letter));
}

bool Trainer::isOpen(const std::string& letter) const {
    return std::find(plan_.open.begin(), plan_.open.end(), letter) != plan_.open.end();
}

}  // namespace tappora
