#include "app/common/system/moment.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

const tapcore::Calendar berlin("Europe/Berlin");

tapcore::Instant at(std::string_view text) { return utcMoment(text).value(); }

TEST(Moment, IsWhatClocksOfAZoneShow) {
    const std::pair<const char*, const char*> cases[] = {
        {"2026-09-20T09:00:00", "2026-09-20T07:00:00Z"},
        {"2026-01-01T00:00:00", "2025-12-31T23:00:00Z"},
        {"2028-02-29T23:59:59", "2028-02-29T22:59:59Z"},
        {"2026-03-29T03:00:00", "2026-03-29T01:00:00Z"},
        {"2026-03-29T02:30:00", ""},
        {"2026-02-29T09:00:00", ""},
        {"2026-09-20T24:00:00", ""},
        {"2026-09-20T09:60:00", ""},
        {"2026-09-20 09:00:00", ""},
        {"2026-09-20T09:00", ""},
        {"2026-09-20T09:00:00Z", ""},
        {"2026-9-20T09:00:00", ""},
        {"", ""},
    };
    for (const auto& [text, utc] : cases) {
        const auto moment = momentOf(text, berlin);
        EXPECT_EQ(moment ? utcText(*moment) : "", utc) << text;
    }
}

TEST(Moment, IsReadBackAsItIsWritten) {
    for (const char* text : {"1970-01-01T00:00:00Z", "2026-09-20T07:00:01Z", "2028-02-29T23:59:59Z"})
        EXPECT_EQ(utcText(at(text)), text);
    EXPECT_EQ(utcText(at("2026-09-20T07:00:00Z") + std::chrono::milliseconds(999)), "2026-09-20T07:00:00Z");
    for (const char* text :
         {"2026-09-20T07:00:00", "2026-09-20T07:00:00+00:00", "2026-02-30T07:00:00Z", "now", "Z"})
        EXPECT_EQ(utcMoment(text), std::nullopt) << text;
}

TEST(Moment, NamesTheDayForPeopleWhenItIsAnotherOne) {
    const tapcore::Instant now = at("2026-09-20T12:00:00Z");
    const std::pair<const char*, const char*> cases[] = {
        {"2026-09-20T12:05:59Z", "14:05"},
        {"2026-09-20T21:59:00Z", "23:59"},
        {"2026-09-20T22:00:00Z", "2026-09-21 00:00"},
        {"2026-09-19T21:59:00Z", "2026-09-19 23:59"},
        {"2026-09-19T22:00:00Z", "00:00"},
    };
    for (const auto& [moment, text] : cases) EXPECT_EQ(clockText(at(moment), now, berlin), text);
}

}  // namespace
}  // namespace tappora
