#pragma once

#include <string_view>

#include "app/recorder/recording.h"

namespace tappora {

/// Reads what evemu-record prints: "N:" and "I:" lines that name a device, then its events,
///
///     E: 0.000001 0001 001e 0001	# EV_KEY / KEY_A                1
///
/// time, type and code (hexadecimal), value. Another "N:" line begins another device. Lines that are neither
/// of these are passed over, and what a terminal printed before an event on its line is too. Events are in
/// the file's order. Throws RecordingError for a line that begins an event and does not end it.
Recording readEvemu(std::string_view text);

}  // namespace tappora
