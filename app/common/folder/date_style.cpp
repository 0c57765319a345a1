#include "app/common/folder/date_style.h"

#include "app/common/folder/settings.h"
#include "core/foundation/date_text.h"

namespace tappora {
namespace {

std::string timeLocale(const Environment& environment) {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"})
        if (const auto value = environment.variable(name); value && !value->empty()) return *value;
    return "";
}

}  // namespace

DateStyle DateStyle::of(const Environment& environment) {
    const auto hours = Settings::read(environment).text("appearance.hours");
    return {hours == "locale" ? tapcore::usesTwelveHours(timeLocale(environment)) : hours == "12"};
}

std::string DateStyle::hour(std::size_t hour) const { return tapcore::hourText(hour, twelveHours); }

std::string withDateStyle(const std::string& locale, const Environment& environment) {
    std::string styled = locale;
    const auto add = [&](const std::string& keyword) {
        styled += (styled.find('@') == std::string::npos ? "@" : ";") + keyword;
    };
    const auto day = Settings::read(environment).text("appearance.firstWeekday");
    if (day && *day != "locale") add("fw=" + day->substr(0, 3));
    if (DateStyle::of(environment).twelveHours) add("hours=h12");
    return styled;
}

}  // namespace tappora
