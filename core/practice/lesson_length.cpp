#include "core/practice/lesson_length.h"

#include <algorithm>

namespace tapcore {
namespace {

constexpr std::int64_t fewestWords = 5;
constexpr std::int64_t mostWords = 200;
constexpr std::int64_t ownTag = -1;
constexpr std::int64_t firstOwnWords = 45;  // no preset, so that the picker shows it as one's own

}  // namespace

std::optional<LessonLength> LessonLength::parse(std::int64_t words) {
    for (const LessonLength length : {short_, medium, long_})
        if (length.rawValue() == words) return length;
    return std::nullopt;
}

LessonLength LessonLength::fromStored(std::optional<std::int64_t> stored) {
    return parse(stored.value_or(medium)).value_or(medium);
}

std::int64_t LessonLength::words(std::optional<std::int64_t> stored) {
    return stored.value_or(0) == 0 ? std::int64_t{medium} : std::clamp(*stored, fewestWords, mostWords);
}

std::int64_t LessonLength::tag(std::int64_t words) { return parse(words) ? words : ownTag; }

std::int64_t LessonLength::words(std::int64_t picking, std::int64_t from) {
    if (picking != ownTag) return picking;
    return parse(from) ? firstOwnWords : from;
}

}  // namespace tapcore
