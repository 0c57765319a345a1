#include "app/common/control/control_places.h"

#include <fmt/format.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "app/common/program.h"
#include "app/common/system/directories.h"
#include "core/foundation/digest.h"
#include "core/foundation/file_io.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view prefix = "record-";
constexpr std::string_view suffix = ".sock";

/// The first directory that a variable names, or nothing.
std::optional<fs::path> named(const Environment& environment, const char* name) {
    const std::string value = environment.variable(name).value_or("");
    const fs::path first = value.substr(0, value.find(':'));
    return first.is_absolute() ? std::optional(first) : std::nullopt;
}

/// The user's login name; "" where the system knows none.
std::string loginName(unsigned user) {
    const passwd* entry = ::getpwuid(user);
    return entry ? entry->pw_name : "";
}

/// Who called a program that runs as root by sudo.
std::optional<unsigned> sudoUser(const Environment& environment) {
    const auto user = tapcore::parseInteger(environment.variable("SUDO_UID").value_or(""));
    if (::getuid() != 0 || !user || *user <= 0 || *user > 0xffff'fffe) return std::nullopt;
    return static_cast<unsigned>(*user);
}

fs::path usualPlace(unsigned user) { return fmt::format("/run/user/{}/tappora", user); }
fs::path lastPlace(unsigned user) { return fmt::format("/tmp/tappora-{}", user); }

void addPlacesOf(unsigned user, const Environment& environment, std::vector<ControlPlace>& places) {
    const auto add = [&](const fs::path& directory) {
        const bool isKnown = std::any_of(places.begin(), places.end(), [&](const ControlPlace& place) {
            return place.directory == directory && place.user == user;
        });
        if (!isKnown) places.push_back({directory, user});
    };
    if (const auto session = named(environment, "XDG_RUNTIME_DIR"))
        if (isDirectoryOf(*session, user)) add(*session / "tappora");
    add(usualPlace(user));
    if (const std::string name = loginName(user); !name.empty()) add(fs::path("/run/tappora") / name);
    add(lastPlace(user));
}

fs::path placeToMake(const Environment& environment) {
    if (const auto session = named(environment, "XDG_RUNTIME_DIR"))
        if (isDirectoryOf(*session, ::getuid())) return *session / "tappora";
    const fs::path usual = usualPlace(::getuid());
    return isDirectoryOf(usual.parent_path(), ::getuid()) ? usual : lastPlace(::getuid());
}

void requireOwn(const fs::path& directory) {
    if (!isDirectoryOf(directory, ::getuid()))
        throw Failure(directory.string(), "not a directory of this user");
}

}  // namespace

std::vector<ControlPlace> controlPlaces(const Environment& environment) {
    std::vector<ControlPlace> places;
    addPlacesOf(::getuid(), environment, places);
    if (const auto user = sudoUser(environment)) addPlacesOf(*user, environment, places);
    return places;
}

fs::path madeControlPlace(const Environment& environment) {
    if (auto service = named(environment, "RUNTIME_DIRECTORY")) {
        requireOwn(*service);
        return *service;
    }
    fs::path directory = placeToMake(environment);
    (void)tapcore::makeFolders(directory);  // it need not outlive the session
    requireOwn(directory);
    ::chmod(directory.c_str(), S_IRWXU);  // one made by hand may be open to others
    return directory;
}

std::string recorderId(const fs::path& dataFolder) {
    return tapcore::hexDigest(fs::weakly_canonical(fs::absolute(dataFolder)).native());
}

std::string socketName(const fs::path& dataFolder) {
    return fmt::format("{}{}{}", prefix, recorderId(dataFolder), suffix);
}

bool isSocketName(std::string_view name) { return name.starts_with(prefix) && name.ends_with(suffix); }

}  // namespace tappora
