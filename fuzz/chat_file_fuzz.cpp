#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/assistant/chat_file.h"

/// Whatever was read is written in both formats so that the same is read back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const tapcore::ChatFile chat(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const tapcore::FileFormat format : tapcore::FileFormat::allCases)
        if (tapcore::ChatFile(chat.text(format)) != chat) std::abort();
    return 0;
}
