// Recordings of libinput record: whatever the bytes, they are read, or refused with a line, and what is read
// can be counted.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/recorder/recording_file.h"
#include "fuzz/count_recording.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tappora::countRecording(tappora::readLibinputRecord,
                            std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
