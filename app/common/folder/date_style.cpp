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

std::string DateStyle::hour(std::size_t hour) const {
    if (!twelveHours) return std::to_string(hour);
    return std::to_string((hour + 11) % 12 + 1) + (hour < 12 ? " AM" : " PM");
}

std::string withFirstWeekday(const std::string& locale, const Environment& environment) {
    const auto day = Settings::read(environment).text("appearance.firstWeekday");
    if (!day || *day == "locale") return locale;
    return locale + (locale.find('@') == std::string::npos ? "@" : ";") + "fw=" + day->substr(0, 3);
}

}  // namespace tappora
