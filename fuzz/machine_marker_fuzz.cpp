// The marker of a machine's folder from any bytes: none, or one that reads back the same.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/files/mac_folder.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto mark = tapcore::MacFolder::parseMark({reinterpret_cast<const char*>(data), size});
    if (mark && tapcore::MacFolder::parseMark(mark->text()) != mark)
        tapcore::fatal("the marker read back is another");
    return 0;
}
