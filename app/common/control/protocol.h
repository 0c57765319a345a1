#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/common/control/recorder_status.h"

namespace tappora {

// What passes over a recorder's socket: one line of JSON asked, one answered, and the connection ends.
// docs/recording.md shows both.

/// A question, without its end, is no longer than this; an answer no longer than that.
inline constexpr std::size_t longestQuestion = 4096;
inline constexpr std::size_t longestAnswer = std::size_t{1} << 20;

/// The recorder drops a client that has not asked and taken its answer in this time; a client waits for an
/// answer that long, in which the recorder may be waiting for its disk.
inline constexpr std::chrono::seconds timeOfClient{5};
inline constexpr std::chrono::seconds timeToAnswer{10};

/// A pause is no longer than this: a longer one is more likely to be a mistake.
inline constexpr std::chrono::days longestPause{31};

/// What a recorder is asked for. Each answer has its status as it is then.
struct ControlQuestion {
    enum class Kind { status, pause, resume };

    Kind kind = Kind::status;
    std::optional<tapcore::Instant> until{};  ///< of a pause; none: until it is ended

    bool operator==(const ControlQuestion&) const = default;
};

/// Either the status, or why the question was refused.
struct ControlAnswer {
    std::optional<RecorderStatus> status{};
    std::string refusal{};

    bool operator==(const ControlAnswer&) const = default;
};

// Without the end of the line. Reading throws JsonError.

std::string lineOf(const ControlQuestion& question);
std::string lineOf(const ControlAnswer& answer);
ControlQuestion readQuestion(std::string_view line);
ControlAnswer readAnswer(std::string_view line);

}  // namespace tappora
