#pragma once

#include <cstdlib>
#include <string_view>

#include "app/recorder/recording.h"
#include "app/recorder/replay.h"

namespace tappora {

/// Reads a recording and counts it. A line that is refused must be one of the text's.
inline void countRecording(Recording (*read)(std::string_view text), std::string_view text) {
    try {
        const Recording recording = read(text);
        tapcore::Counter counter;
        DayBook book;
        CountingClock clock(tapcore::Calendar("Europe/Berlin"), counter, book);
        EventRules rules({}, counter, {});
        replay(recording, {}, clock, rules);
        clock.finish();
    } catch (const RecordingError& error) {
        if (error.line() == 0 || error.line() > text.size() + 1) std::abort();
    }
}

}  // namespace tappora
