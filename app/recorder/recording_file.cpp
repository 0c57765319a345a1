#include "app/recorder/recording_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "app/common/program.h"
#include "app/common/system/file_text.h"
#include "app/recorder/text_walkers.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

using Reader = Recording (*)(std::string_view text);

constexpr std::array<std::string_view, 3> evemuStarts = {"# EVEMU", "N: ", "E: "};
/// Of hid-recorder and umockdev-record, which have lines like evemu's too.
constexpr std::array<std::string_view, 4> otherStarts = {"R: ", "D: ", "P: /", "@DEV "};
constexpr std::array<std::string_view, 4> libinputStarts = {"# libinput record",
                                                            "version:", "ndevices:", "devices:"};

bool startsWithAny(std::string_view line, const auto& starts) {
    return std::any_of(starts.begin(), starts.end(),
                       [&](std::string_view start) { return line.starts_with(start); });
}

/// The reader for a text, by the first line that tells; nullptr when none does.
Reader readerFor(std::string_view text) {
    for (LineWalker lines(text); lines.next();) {
        if (startsWithAny(lines.line(), otherStarts)) return nullptr;
        if (startsWithAny(lines.line(), evemuStarts)) return readEvemu;
        if (startsWithAny(lines.line(), libinputStarts)) return readLibinputRecord;
    }
    return nullptr;
}

/// Many hours of typing, and not so much that reading it fills the memory.
constexpr std::size_t mostBytes = std::size_t{256} << 20;

std::string textOf(const std::filesystem::path& path) {
    tapcore::FileRead file = tapcore::readFile(path, mostBytes);
    if (file.error == std::errc::file_too_large)
        throw Failure(path.string(), "larger than 256 MB, too large for a recording; replay it in parts");
    return requiredText(path, std::move(file));
}

bool isEarlier(const RecordedEvent& one, const RecordedEvent& other) { return one.time < other.time; }

}  // namespace

Recording readRecording(const std::filesystem::path& path) try {
    const std::string text = textOf(path);
    const Reader read = readerFor(text);
    if (!read) throw Failure(path.string(), "not a recording of evemu-record or libinput record");
    try {
        Recording recording = read(text);
        if (recording.events.empty()) throw Failure(path.string(), "no countable events");
        // The devices' events follow each other in the file. One device alone may have been recorded on a
        // clock that was set back: its order is the file's.
        if (recording.devices.size() > 1)
            std::stable_sort(recording.events.begin(), recording.events.end(), isEarlier);
        return recording;
    } catch (const RecordingError& error) {
        throw Failure(fmt::format("{}:{}", path.string(), error.line()), error.what());
    }
} catch (const std::bad_alloc&) {
    throw Failure(path.string(), "not enough memory to read it");
}

}  // namespace tappora
