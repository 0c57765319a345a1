// Practice files from any bytes: reading never fails, and what is written from it reads back the same, with
// nothing left out.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/foundation/fatal.h"
#include "core/foundation/utf8.h"
#include "core/practice/practice_day.h"
#include "fuzz/long_numbers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tapcore::PracticeDay;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (mayOverflow(bytes)) return 0;
    const std::string text = tapcore::repairedUtf8(bytes);
    std::vector<tapcore::SkippedRow> skipped;
    const PracticeDay day(text, &skipped);
    if (PracticeDay(text) != day) tapcore::fatal("what is read depends on who asks what is left out");
    if (text.find('\t') != std::string::npos) return 0;  // between tabs a cell may hold what no table can
    for (const tapcore::FileFormat format : tapcore::FileFormat::allCases) {
        skipped.clear();
        if (PracticeDay(day.text({2026, 9, 20}, format), &skipped) != day)
            tapcore::fatal("the day read back is another");
        if (!skipped.empty()) tapcore::fatal("what is written is left out when it is read");
    }
    return 0;
}
