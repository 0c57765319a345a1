// Day files and month rollups from any bytes: reading never fails, and what is written from it reads back the
// same.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/files/day_file.h"
#include "core/files/month_rollup.h"
#include "core/foundation/fatal.h"
#include "core/foundation/utf8.h"
#include "fuzz/long_numbers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (mayOverflow(bytes)) return 0;
    const std::string text = tapcore::repairedUtf8(bytes);
    const tapcore::DayFile file(text);
    const tapcore::MonthRollup rollup(text);
    for (const tapcore::FileFormat format : tapcore::FileFormat::allCases) {
        const tapcore::DayFile again(file.text(format, {2026, 9, 20}));
        if (again.tally != file.tally) tapcore::fatal("the tally read back is another");
        if (tapcore::MonthRollup(rollup.text(format, "2026-09")).keys != rollup.keys)
            tapcore::fatal("the month's keys read back are others");
    }
    return 0;
}
