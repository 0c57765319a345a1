#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/keyboard/import/keylayout/keylayout_import.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        tapcore::importKeylayout({reinterpret_cast<const char*>(data), size});
    } catch (const tapcore::XmlError&) {
    }
    return 0;
}
