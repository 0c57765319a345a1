#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

namespace tapcore {

class Store;

/// This machine's months that were summed before one of their days was written last, and cannot be summed
/// again now: a day is not here, or cannot be read. With each, when it was written, since 1970: whoever
/// writes such a month again gives it that time, or nothing would show any more that it is out of date.
std::map<std::string, std::chrono::nanoseconds, std::less<>> outdatedMonths(const Store& own);

}  // namespace tapcore
