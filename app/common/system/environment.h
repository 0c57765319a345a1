#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "core/foundation/calendar.h"

namespace tappora {

/// Says a warning to the user.
using Tell = std::function<void(const std::string& warning)>;

/// Says each warning once, however often it is given.
Tell tellingOnce(Tell tell);
/// Prints each warning once, on standard error.
Tell complainingOnce();

/// What a program takes from the world around it, handed in so that tests can hand in another.
struct Environment {
    std::function<std::optional<std::string>(const std::string& name)> variable;
    tapcore::Instant now;
    tapcore::Calendar calendar;          ///< of the time zone
    bool onTerminal = false;             ///< whether a person reads standard output on a terminal
    std::size_t columns = 0;             ///< of that terminal; 0 where it does not tell
    std::filesystem::path program = {};  ///< the file that is running
    Tell warn = complainingOnce();       ///< of what is wrong with what is read, and can be passed over
};

/// The real one.
Environment hostEnvironment();
/// Its time alone.
tapcore::Instant hostNow();
/// The file of this program; empty where the system does not tell.
std::filesystem::path runningProgram();
/// The host's environment with its time and time zone as they are now, for programs that run for days: who
/// travels sets another zone meanwhile.
Environment atThisMoment(Environment environment);

}  // namespace tappora
