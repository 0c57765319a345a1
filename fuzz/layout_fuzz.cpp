#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/foundation/json_fields.h"
#include "core/keyboard/catalog.h"

namespace {

void use(const tapcore::Layout& layout) {
    if (tapcore::Layout::parse(layout.text()) != layout) std::abort();
    const tapcore::Catalog catalog({}, {layout});
    if (catalog.legends(layout.id) != layout.legends) std::abort();
    (void)catalog.problems();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        use(tapcore::Layout::parse(text, tapcore::Layout::Repeats::refused));
    } catch (const tapcore::JsonError&) {
        // Not a layout: said so.
    }
    return 0;
}
