#pragma once

#include <filesystem>
#include <string_view>

#include "app/recorder/recording.h"

namespace tappora {

/// Reads a file that evemu-record or libinput record wrote. Failure names the file, and the line, of what
/// cannot be read: a missing file, another kind of file, a recording without events, a damaged line,
/// more than 256 MB.
Recording readRecording(const std::filesystem::path& path);

// The two formats, each read in a source file of its own. Events are in the file's order. Both throw
// RecordingError for a line that begins an event and does not end it.

/// Reads what evemu-record prints: "N:" and "I:" lines that name a device, then its events,
///
///     E: 0.000001 0001 001e 0001	# EV_KEY / KEY_A                1
///
/// time, type and code (hexadecimal), value. Another "N:" line begins another device. Other lines are
/// skipped, and so is what a terminal printed before an event on its line.
Recording readEvemu(std::string_view text);

/// Reads the YAML that libinput record writes: devices, each with its list of events,
///
///     events:
///     - evdev:
///       - [  0, 100000,   1,  30,       1] # EV_KEY / KEY_A                     1
///
/// seconds, microseconds, type, code, value; also with the lists of a frame on one line, "- evdev: [[…],
/// […]]", or right below "events:", as older versions have them. Anything else among the events is skipped:
/// frames of other kinds (hid, libinput), and what a terminal printed. Several devices, and several
/// documents, are one recording. RecordingError also for what is not YAML outside of the events.
Recording readLibinputRecord(std::string_view text);

}  // namespace tappora
