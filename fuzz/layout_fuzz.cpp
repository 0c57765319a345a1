#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>

#include "core/foundation/integers.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/catalog.h"

namespace {

/// Two spellings of one key code end the program, as promised; they are not what is looked for here.
bool spellsACodeTwice(const nlohmann::json& document) {
    if (!document.is_object() || !document.contains("legends") || !document["legends"].is_object())
        return false;
    std::set<std::uint16_t> codes;
    for (const auto& item : document["legends"].items()) {
        const auto code = tapcore::parseKeyCode(item.key());
        if (code && !codes.insert(*code).second) return true;
    }
    return false;
}

void use(const tapcore::Layout& layout) {
    if (tapcore::Layout::parse(layout.text()) != layout) std::abort();
    const tapcore::Catalog catalog({}, {layout});
    if (catalog.legends(layout.id) != layout.legends) std::abort();
    (void)catalog.problems();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto document =
            tapcore::JsonValue::parse(std::string_view(reinterpret_cast<const char*>(data), size));
        if (!spellsACodeTwice(document)) use(tapcore::Layout::decode(tapcore::JsonValue(document)));
    } catch (const tapcore::JsonError&) {
        // Not a layout: said so.
    }
    return 0;
}
