// Rows of counts from any bytes: reading never fails, and what is written from it reads back the same, in
// either form.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/files/rows_read.h"
#include "core/foundation/fatal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const tapcore::RowsRead rows = tapcore::readRows({reinterpret_cast<const char*>(data), size});
    for (const auto form : {tapcore::RowForm::csv, tapcore::RowForm::json}) {
        tapcore::RowText text(form);
        for (const auto& [at, file] : rows.days) {
            text.begin(at.machine, at.day);
            forEachRow(file, [&](const tapcore::CountRow& row) { text.add(row); });
        }
        const tapcore::RowsRead again = tapcore::readRows(text.text(), form);
        if (again.unusable > 0) tapcore::fatal("a row that was written cannot be read");
        if (again.days != rows.days) tapcore::fatal("the rows read back are others");
    }
    return 0;
}
