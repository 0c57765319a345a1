#include "app/tappora/report_json.h"

#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/tappora/fingers_rank.h"
#include "core/reports/finding_text.h"

namespace tappora {
namespace {

using nlohmann::json;
using tapcore::Report;

json stretchJson(const tapcore::Stretch& stretch) {
    json result = {{"from", stretch.first.description()}, {"to", stretch.last.description()}};
    if (stretch.hoursOfLast < 24) result["hoursOfLast"] = stretch.hoursOfLast;
    return result;
}

json usualJson(const tapcore::Usual& usual) {
    return {{"median", usual.median}, {"lower", usual.lower}, {"upper", usual.upper}, {"count", usual.count}};
}

json totalsJson(const Report::Totals& totals) {
    json result = stretchJson(totals.stretch);
    result["name"] = totals.period.name();
    result["keystrokes"] = totals.keystrokes;
    result["activeHours"] = totals.activeHours;
    result["typingDays"] = totals.typingDays;
    result["clicks"] = totals.clicks;
    return result;
}

json findingJson(const tapcore::Finding& finding, const tapcore::ReportKeyboard& keyboard,
                 const tapcore::Words& words, const std::string& locale) {
    json result = {{"kind", tapcore::Finding::kinds.of(finding.kind)},
                   {"isChange", finding.isChange()},
                   {"value", finding.value},
                   {"text", textOf(finding, keyboard.names, words, locale)},
                   {"days", json::array()}};
    if (finding.isChange()) {
        result["usual"] = finding.usual;
        result["farness"] = finding.farness;
    }
    for (const tapcore::Stretch& stretch : finding.stretches) result["days"].push_back(stretchJson(stretch));
    if (finding.key) result["keyCode"] = *finding.key;
    if (finding.chord)
        result["chord"] = {{"modifiers", finding.chord->modifiers.name()},
                           {"keyCode", finding.chord->keyCode}};
    if (finding.finger)
        result["finger"] = {{"hand", tapcore::Board::hands.of(finding.finger->hand)},
                            {"finger", tapcore::Board::fingers.of(finding.finger->finger)}};
    if (finding.day) result["day"] = finding.day->description();
    if (finding.hour) result["hour"] = *finding.hour;
    return result;
}

json dayJson(const Report::DayLine& line) {
    if (!line.keystrokes) return {{"day", line.day.description()}};  // a gap
    return {{"day", line.day.description()},
            {"keystrokes", *line.keystrokes},
            {"activeHours", line.activeHours},
            {"clicks", line.clicks}};
}

json fingerJson(const tapcore::Load::Striker& striker, const tapcore::Load::Part& part,
                const tapcore::Load& load) {
    return {{"hand", tapcore::Board::hands.of(striker.hand)},
            {"finger", tapcore::Board::fingers.of(striker.finger)},
            {"presses", part.presses},
            {"share", load.share(part)},
            {"metres", part.metres}};
}

json practiceJson(const Report::Practice& practice) {
    json result = {{"days", practice.days},
                   {"seconds", practice.seconds},
                   {"lessons", practice.lessons},
                   {"best", practice.best},
                   {"newLetters", practice.newLetters}};
    if (practice.pace) result["pace"] = *practice.pace;
    return result;
}

json gainJson(const tapcore::LetterGain& gain) {
    return {{"letter", gain.letter},
            {"presses", gain.presses},
            {"share", gain.share},
            {"milliseconds", gain.milliseconds},
            {"minutesADay", gain.minutesADay},
            {"sparedADay", gain.sparedADay}};
}

json comparedJson(const tapcore::StretchFigures& now, const tapcore::ComparedPeriod& compared) {
    json result = stretchJson(compared.stretch);
    result["name"] = compared.period.name();
    if (!compared.figures) return result;
    result["figures"] = json::array();
    for (const tapcore::ComparedFigure& figure : comparedFigures(now, *compared.figures)) {
        json row = {{"name", figure.name}, {"now", figure.now}, {"then", figure.then}};
        if (const auto change = figure.change()) row[figure.isShare ? "difference" : "percent"] = *change;
        result["figures"].push_back(std::move(row));
    }
    return result;
}

json offerJson(const Report::LayoutOffer& offer) {
    return {{"today", standingJson(offer.today)},
            {"other", standingJson(offer.other)},
            {"spared", offer.spared()}};
}

}  // namespace

json toJson(const Report& report, const tapcore::ReportKeyboard& keyboard, const tapcore::Words& words,
            const std::string& locale) {
    json result = {{"name", report.period.name()},
                   {"kind", tapcore::ReportPeriod::kinds.of(report.period.kind)},
                   {"from", report.period.first.description()},
                   {"to", report.period.last.description()},
                   {"isOver", report.isOver},
                   {"board", keyboard.board.id},
                   {"layout", keyboard.layout},
                   {"summary", toJson(report.figures.summary)},
                   {"typingDays", report.figures.typingDays},
                   {"byWeekdayAndHour", report.figures.byWeekdayAndHour},
                   {"days", json::array()},
                   {"classes", json::object()},
                   {"fingers", json::array()},
                   {"practice", practiceJson(report.practice)},
                   {"findings", json::array()},
                   {"advice", adviceOf(report, keyboard, words, 3)},
                   {"gains", json::array()}};
    if (report.passed != tapcore::Stretch()) result["passed"] = stretchJson(report.passed);
    for (const Report::DayLine& line : report.days) result["days"].push_back(dayJson(line));
    for (std::size_t i = 0; i < tapcore::keyClasses; ++i)
        result["classes"][std::string(tapcore::keyClassWords.words[i])] = report.classes[i];
    for (const auto& [striker, part] : report.load.byFinger)
        result["fingers"].push_back(fingerJson(striker, part, report.load));
    if (report.usual)
        result["usual"] = {{"keystrokes", usualJson(report.usual->keystrokes)},
                           {"activeHours", usualJson(report.usual->activeHours)}};
    if (report.before) result["before"] = totalsJson(*report.before);
    if (report.yearBefore) result["yearBefore"] = totalsJson(*report.yearBefore);
    for (const tapcore::Finding& finding : report.findings)
        result["findings"].push_back(findingJson(finding, keyboard, words, locale));
    for (const tapcore::LetterGain& gain : report.gains) result["gains"].push_back(gainJson(gain));
    if (report.compared) result["compared"] = comparedJson(report.figures, *report.compared);
    if (report.otherLayout) result["otherLayout"] = offerJson(*report.otherLayout);
    return result;
}

}  // namespace tappora
