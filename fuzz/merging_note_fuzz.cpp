// The note beside copies that are being merged, from any bytes: whatever it says, one of them counts.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/files/file_copies.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tapcore::FileCopy;
    using tapcore::MergedText;
    for (const MergedText merged : {MergedText::waits, MergedText::tookItsPlace}) {
        std::vector<FileCopy> copies;
        for (const char* extension : {"org", "md", "tsv"})  // their texts are "org", "md" and "tsv"
            copies.push_back({tapcore::copyName("2026-09-20", extension),
                              {tapcore::FileRead::Status::read, extension, {}}});
        tapcore::markSuperseded(copies, {reinterpret_cast<const char*>(data), size}, merged);
        if (std::all_of(copies.begin(), copies.end(), [](const FileCopy& copy) { return copy.isSuperseded; }))
            tapcore::fatal("no copy counts");
    }
    return 0;
}
