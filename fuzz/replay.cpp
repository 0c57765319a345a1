// Replays seeds through a fuzz target: the plain program that every build has.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(std::string text) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

/// Every beginning of a seed, in steps that make at most some hundred runs, and the seed with single bytes
/// changed.
void replayDamaged(const std::string& seed) {
    const std::size_t step = seed.size() / 200 + 1;
    for (std::size_t at = 0; at < seed.size(); at += step) {
        replay(seed.substr(0, at));
        std::string flipped = seed;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x5A);
        replay(flipped);
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t seeds = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::string& name : tapcore::namesIn(argv[i])) {
            const std::string seed = tapcore::readFile(std::filesystem::path(argv[i]) / name).text;
            replay(seed);
            replayDamaged(seed);
            ++seeds;
        }
    }
    std::printf("%zu seeds replayed\n", seeds);
    return seeds == 0 ? 1 : 0;
}
