#pragma once

#include <string_view>

#include "app/recorder/recording.h"

namespace tappora {

/// Reads the YAML that libinput record writes: devices, each with its list of events,
///
///     events:
///     - evdev:
///       - [  0, 100000,   1,  30,       1] # EV_KEY / KEY_A                     1
///
/// seconds, microseconds, type, code, value; also with the lists of a frame on one line, "- evdev: [[…],
/// […]]", or right below "events:", as older versions have them. Anything else among the events is passed
/// over: frames of other kinds (hid, libinput), and what a terminal printed. Several devices, and several
/// documents, are one recording. Events are in the file's order.
///
/// Throws RecordingError for a line that begins an event and does not end it, and for what is no YAML
/// elsewhere.
Recording readLibinputRecord(std::string_view text);

}  // namespace tappora
