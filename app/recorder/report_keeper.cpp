#include "app/recorder/report_keeper.h"

#include "app/common/folder/language.h"
#include "app/common/folder/settings.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/report/report_keyboard.h"
#include "app/common/system/moment.h"
#include "core/files/count_sum.h"
#include "core/reports/ended_reports.h"
#include "core/reports/report.h"
#include "core/reports/report_document.h"

namespace tappora {

ReportKeeper::ReportKeeper(FolderOptions folder, const Environment& environment, Tell tell)
    : folder_(std::move(folder)),
      environment_(environment),
      attempt_(std::move(tell), "a report is not saved: ") {}

void ReportKeeper::keepUp(const tapcore::Day& today) {
    attempt_.run([&] {
        const std::string kinds = Settings::read(environment_).text("reports.save").value_or("");
        if (done_ && *done_ == std::pair(today, kinds)) return;
        const auto before = std::exchange(done_, std::pair(today, kinds));
        const auto periods = tapcore::endedPeriods(kinds, today);
        if (periods.empty()) return;
        const tapcore::Store store = openStore(folder_, environment_);
        for (const tapcore::ReportPeriod& period : periods)
            if (!isSaved(store, period) && !write(store, period, today)) done_ = before;
    });
}

/// False while another program writes in the folder.
bool ReportKeeper::write(const tapcore::Store& store, const tapcore::ReportPeriod& period,
                         const tapcore::Day& today) {
    if (!canBeReported(store, period)) throw Failure(store.root.string(), std::string(tapcore::tooLarge));
    const auto keyboard = reportKeyboard({}, store, environment_);
    tapcore::FileProblems problems;
    const auto report = reportOf(store, {.period = period, .today = today, .keyboard = keyboard}, &problems);
    if (!problems.empty()) throw Failure(problems.front().path.string(), problems.front().why);
    if (report.isEmpty()) return true;
    const auto locked = tryLockForWriting(environment_, store.root);
    if (!locked) return false;
    saveReport(store, period.name(), documentOf(report, keyboard, chosenWords(environment_), store.format));
    return true;
}

}  // namespace tappora
