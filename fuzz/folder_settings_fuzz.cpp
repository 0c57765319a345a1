// The settings of a data folder from any bytes: the defaults, or a value that reads back the same.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/files/folder_config.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto config = tapcore::FolderConfig::parse({reinterpret_cast<const char*>(data), size});
    if (tapcore::FolderConfig::parse(config.text()) != config) tapcore::fatal("the settings read back are others");
    return 0;
}
