#include "app/common/system/host_clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tappora {
namespace {

using tapcore::Calendar;

class HostClock : public testing::Test {
  protected:
    ~HostClock() override {
        ::unsetenv("TZ");
        followHostZone();
    }
    Calendar in(const std::string& tz) {
        ::setenv("TZ", tz.c_str(), 1);
        return hostCalendar();
    }
    const tapcore::Instant summerNoon = Calendar("UTC").moment({2026, 7, 1, 12, 0, 0});
};

TEST_F(HostClock, ShowsWhatTheCLibraryMakesOfTZ) {
    const struct {
        const char* tz;
        std::int64_t hour;
    } cases[] = {{"", 12},
                 {"<+03>-3", 15},
                 {"XYZ-03:00", 15},
                 {"CET-1CEST,M3.5.0,M10.5.0/3", 14},
                 {"PST8PDT,M3.2.0,M11.1.0", 5},
                 {"Europe/Berlin", 14},
                 {"America/Coyhaique", 9}};
    for (const auto& [tz, hour] : cases) {
        EXPECT_TRUE(isZone(tz)) << tz;
        EXPECT_EQ(in(tz).local(summerNoon).hour, hour) << tz;
    }
}

}  // namespace
}  // namespace tappora
