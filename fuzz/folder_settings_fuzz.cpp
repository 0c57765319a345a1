// The settings of a data folder and a machine's marker from any bytes: the defaults, or a value that reads
// back the same.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/files/folder_config.h"
#include "core/files/mac_folder.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"

namespace {

std::filesystem::path scratch() {
    return std::filesystem::temp_directory_path() / ("tappora-fuzz-" + std::to_string(::getpid()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path root = scratch();
    tapcore::writeFile(tapcore::FolderConfig::url(root), bytes);
    tapcore::writeFile(root / tapcore::MacFolder::marker, bytes);
    const tapcore::FolderConfig config = tapcore::FolderConfig::read(root);
    (void)tapcore::MacFolder::readMark(root);
    config.write(root);
    if (tapcore::FolderConfig::read(root) != config) tapcore::fatal("the settings read back are others");
    std::filesystem::remove_all(root);
    return 0;
}
