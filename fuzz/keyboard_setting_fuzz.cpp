// The places in which systems keep their keyboard layout, from any bytes: none, or the first of those there.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/common/keyboard/system_layout.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tappora;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto& keyboard :
         {firstXkbLayout(text, text), xkbFromAssignments(text, "XKBLAYOUT", "XKBVARIANT"), xkbFromXorg(text),
          xkbFromQuery(text), xkbFromInputSources(text)}) {
        if (!keyboard) continue;
        if (keyboard->layout.empty() || keyboard->layout.find(',') != std::string::npos)
            tapcore::fatal("not one layout");
    }
    return 0;
}
