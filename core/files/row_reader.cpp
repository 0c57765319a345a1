#include "core/files/row_reader.h"

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tapcore {

SkippedRow skippedRow(const TableReader& reader, Outcome why) {
    constexpr std::size_t limit = 80;
    const std::string_view shown = firstCharacters(reader.text(), limit);
    const bool isCut = shown.size() < reader.text().size();
    return {reader.line(), std::string(why) + ": " + repairedUtf8(shown) + (isCut ? "…" : "")};
}

}  // namespace tapcore
