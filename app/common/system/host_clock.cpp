#include "app/common/system/host_clock.h"

#include <fmt/format.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "app/common/program.h"
#include "app/common/system/zone_rules.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

std::string variable(const char* name, const char* otherwise) {
    const char* value = std::getenv(name);
    return value ? value : otherwise;
}

/// What the C library makes of its clock.
seconds hostOffset(tapcore::Instant moment) {
    const time_t time = std::chrono::floor<seconds>(moment).time_since_epoch().count();
    tm local{};
    return seconds(::localtime_r(&time, &local) ? local.tm_gmtoff : 0);
}

/// Where zone files are. As in the C library, an empty TZDIR counts as unset.
fs::path zoneFolder() {
    const std::string set = variable("TZDIR", "");
    return set.empty() ? "/usr/share/zoneinfo" : set;
}

bool isZoneFile(const fs::path& name) {
    std::ifstream file(zoneFolder() / name, std::ios::binary);
    char magic[4] = {};
    file.read(magic, sizeof magic);
    return std::string_view(magic, sizeof magic) == "TZif";
}

/// Whether the C library could read its zone. Of one that it could not, such as a file that is cut short, it
/// has no second name; a zone without summer time has the first name twice.
bool isRead() { return ::tzname[1] != nullptr && *::tzname[1] != '\0'; }

}  // namespace

bool isZone(std::string_view tz) {
    if (tz.starts_with(':')) tz.remove_prefix(1);
    return tz.empty() || tz == "UTC" || isZoneFile(tz) || isZoneRules(tz);
}

tapcore::Calendar hostCalendar() {
    followHostZone();
    const std::string tz = variable("TZ", "");
    if (isZone(tz) && isRead()) return tapcore::Calendar(hostOffset);
    const auto isTold = std::make_shared<std::atomic_flag>();  // the recorder asks on two threads
    return tapcore::Calendar([tz, isTold](tapcore::Instant) {
        if (!isTold->test_and_set()) complain(fmt::format("TZ: no such time zone: {}; using UTC", tz));
        return seconds(0);
    });
}

void followHostZone() { ::tzset(); }

}  // namespace tappora
