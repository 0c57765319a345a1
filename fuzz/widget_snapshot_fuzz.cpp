// A snapshot from any bytes: none, or one that is written and read back the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/widget/widget_snapshot.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tapcore::WidgetSnapshot;
    const auto snapshot = WidgetSnapshot::decode({reinterpret_cast<const char*>(data), size});
    if (snapshot && WidgetSnapshot::decode(snapshot->data()) != snapshot) std::abort();
    return 0;
}
