// A backup's archive, from any bytes: what is taken for one has no file that would leave the data folder.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "app/backup/backup.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tappora;
    try {
        const std::string_view bytes(reinterpret_cast<const char*>(data), size);
        for (const tapcore::KeptFile& file : Backup::unpacked(bytes).files) {
            const std::filesystem::path name = file.name;
            if (name.is_absolute() || name.lexically_normal() != name || *name.begin() == "..")
                tapcore::fatal("leads out: " + file.name);
        }
    } catch (const ArchiveError&) {
    }
    return 0;
}
