
#include <algorithm>
#include <exception>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/common/folder/practice_lock.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/practice/keyboard_view.h"
#include "app/practice/lesson_view.h"
#include "app/practice/review_view.h"
#include "app/practice/screen.h"
#include "app/practice/screen_locale.h"
#include "app/practice/tasks.h"
#include "core/practice/practice_day.h"
#include "core/practice/practice_history.h"
#include "core/practice/practice_sums.h"

namespace tappora {
namespace {

using tapcore::Day;
using Kind = ScreenEvent::Kind;

constexpr std::int64_t idle = 1000;          // milliseconds without a key, after which practice is saved
constexpr std::int64_t untilRetry = 10'000;  // after which a save that failed is tried again
constexpr std::int64_t forAWhile = 60'000;   // after which a lesson without a key is left alone

std::string whyOf(const std::exception& error) {
    const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error);
    return file ? Failure(*file).what() : error.what();
}

/// What there is to say once the screen is given back.
struct Remarks {
    tapcore::FileProblems problems;
    std::vector<std::string> warnings;

    void warn(const std::string& warning) {
        if (std::find(warnings.begin(), warnings.end(), warning) == warnings.end())
            warnings.push_back(warning);
    }

    void say() {
        for (const std::string& warning : std::exchange(warnings, {})) complain(warning);
        complainOf(std::exchange(problems, {}));
    }
};

TrainerWorld worldOf(const PracticeOptions& options, const Environment& environment,
                     const tapcore::Calendar& calendar, Remarks& remarks) {
    const auto tell = [&](const std::string& warning) { remarks.warn(warning); };
    return {.today =
                [&] {
                    Environment now = environment;
                    now.now = hostNow();
                    return today(options.folder, now, calendar);
                },
            .save =
                [&, tell](const tapcore::PracticeDay& practised, const Day& day) {
                    const LockedStore locked(options.folder, environment, false, tell);
                    locked.store.addPractice(practised, day, &remarks.problems);
                },
            .remember =
                [&, tell](const std::string& key, std::int64_t opened) {
                    const auto set = [&](Settings& settings) { settings.setInteger(key, opened); };
                    Settings::change(environment, set, tell);
                }};
}

/// The trainer on a screen: hands it the keys, shows what becomes of them, and sees that practice is saved,
/// in a pause, at a lesson's end and on leaving. While keys go into a lesson, it holds the lock that says so.
class TrainerLoop {
  public:
    /// `remark` is shown in lessons for as long as there is nothing else to tell.
    TrainerLoop(Trainer& trainer, const KeyboardView& keyboard, std::string remark, Screen& screen,
                PracticeLock& lock)
        : trainer_(trainer), keyboard_(keyboard), remark_(std::move(remark)), screen_(screen), lock_(lock) {}

    /// Until the typist leaves.
    void run() {
        show();
        while (!isOver_) turn(screen_.events(patience()));
    }

  private:
    /// How long to wait for a key.
    std::int64_t patience() const {
        if (trainer_.session().isWaiting()) return tapcore::LessonSession::longestBeginning;
        if (!trainer_.hasUnsaved()) return forAWhile;
        return notice_.empty() ? idle : untilRetry;
    }

    void turn(const std::vector<ScreenEvent>& events) {
        const std::int64_t now = steadyMilliseconds();
        const bool wasFinished = trainer_.session().isFinished();
        for (const ScreenEvent& event : events) take(event, now);
        if (!events.empty()) lastEvent_ = now;
        const bool waits = trainer_.settle(now);
        show();
        const bool isFinished = trainer_.session().isFinished();
        const bool isPause = events.empty() && !waits;
        if (!isOver_ && trainer_.hasUnsaved() && (isPause || (isFinished && !wasFinished))) trySaving();
    }

    void take(const ScreenEvent& event, std::int64_t now) {
        switch (event.kind) {
            case Kind::character:
                hasFocus_ = true;
                return trainer_.press(event.text, now);
            case Kind::erase:
                return trainer_.erase();
            case Kind::enter:
                return trainer_.nextLesson();
            case Kind::leave:
                return leave();
            case Kind::end:
            case Kind::gone:
                isOver_ = true;
                return;
            case Kind::suspend:
                return suspend();
            case Kind::focusIn:
            case Kind::focusOut:
                hasFocus_ = event.kind == Kind::focusIn;
                return;
            case Kind::resize:
                return;
        }
    }

    /// Leaves once everything is saved. When it cannot be, the typist is told, and leaves by asking again.
    void leave() { isOver_ = !notice_.empty() || trySaving(); }

    void suspend() {
        trySaving();
        lock_.release();
        screen_.suspend();
        hasFocus_ = true;
    }

    bool trySaving() {
        const std::string before = notice_;
        try {
            trainer_.save();
            notice_.clear();
        } catch (const std::exception& error) {
            notice_ = "Not saved yet: " + whyOf(error);
        }
        if (notice_ != before) show();
        return notice_.empty();
    }

    void show() {
        const bool isAlone = steadyMilliseconds() - lastEvent_ >= forAWhile;
        const bool isTyping = !trainer_.result() && hasFocus_ && !isAlone && !isOver_;
        isTyping ? lock_.hold() : lock_.release();
        const std::string& told = notice_.empty() ? remark_ : notice_;
        screen_.show(trainer_.result() ? reviewFrame(trainer_, notice_, screen_.shape())
                                       : lessonFrame(trainer_, keyboard_, told, screen_.shape()));
    }

    Trainer& trainer_;
    const KeyboardView& keyboard_;
    const std::string remark_;
    Screen& screen_;
    PracticeLock& lock_;
    std::string notice_;
    bool hasFocus_ = true;  ///< also where the terminal tells nothing of it
    std::int64_t lastEvent_ = steadyMilliseconds();
    bool isOver_ = false;
};

/// Counts that nobody can have typed would end the program once they leave 64 bits, within a lesson perhaps.
void requireAddable(const tapcore::PracticeHistory& history, const tapcore::Store& store) {
    const bool fits = std::all_of(history.days.begin(), history.days.end(),
                                  [](const auto& day) { return tapcore::isAddable(day.second); });
    if (!fits)
        throw Failure(unaddablePractice(store).value_or(store.root).string(), "its counts are too large");
}

/// Nobody is left to be asked again.
void saveAtLast(Trainer& trainer) {
    try {
        if (trainer.hasUnsaved()) trainer.save();
    } catch (const std::exception& error) {
        throw Failure(whyOf(error), "the last practice is not saved");
    }
}

}  // namespace

void runTrainer(const PracticeOptions& options, const Environment& environment) {
    const tapcore::Calendar& calendar = environment.calendar;
    const tapcore::Store store = openShown(options.folder, environment);
    const Settings settings = Settings::read(environment);
    PracticeChoice choice = choosePractice(options, environment, settings, store);
    useLocale(environment, choice.setup.model->order);
    keepOptions(options, choice.setup.model->language, environment);
    const Keyboards keyboards(environment, store);
    const KeyboardView keyboard(keyboards.chosenBoard(options.keyboard), choice.legends,
                                keyboards.chosenLayout(options.keyboard).own);
    std::string remark = keyboard.remark(choice.setup.model->order, choice.setup.layout, choice.fitting);
    Remarks remarks;
    const std::string notMine =
        weighByOwn(choice.setup, options, environment, settings, store, remarks.problems);
    if (remark.empty() && !notMine.empty()) remark = "Not chosen by your typing: " + notMine;
    tapcore::PracticeHistory history = store.practiceHistory(&remarks.problems);
    remarks.say();
    requireAddable(history, store);
    Trainer trainer(std::move(choice.setup), std::move(history), chosenSeed(options), calendar,
                    worldOf(options, environment, calendar, remarks));
    {
        PracticeLock lock(environment, store.root);
        Screen screen(environment);
        TrainerLoop(trainer, keyboard, std::move(remark), screen, lock).run();
    }
    remarks.say();
    saveAtLast(trainer);
    remarks.say();
}

}  // namespace tappora
