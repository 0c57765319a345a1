#include <fmt/format.h>

#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "core/files/count_rows.h"
#include "core/files/day_reader.h"
#include "core/files/row_text.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"

namespace tappora {
namespace {

using tapcore::RowForm;
using tapcore::RowText;

/// The days to write: all where neither end is named.
struct Span {
    std::optional<tapcore::Day> first;
    std::optional<tapcore::Day> last;

    bool contains(const tapcore::Day& day) const {
        return (!first || *first <= day) && (!last || day <= *last);
    }
};

Span spanOf(const std::optional<std::string>& from, const std::optional<std::string>& to) {
    Span span;
    if (from) span.first = parseDay("--from", *from);
    if (to) span.last = parseDay("--to", *to);
    if (span.first && span.last && *span.first > *span.last)
        throw UsageError(
            fmt::format("--from: {} is after {}", span.first->description(), span.last->description()));
    return span;
}

/// Gives out what there is, when it is much, or the last of it.
void give(RowText& rows, std::size_t much = 1) {
    if (rows.text().size() < much) return;
    print(rows.text());
    rows.clear();
}

/// Writes the days of one machine's folder; true when there are any.
bool exportPart(const tapcore::Store& part, const std::string& machine, const Span& span, RowText& rows,
                tapcore::FileProblems& problems) {
    bool any = false;
    const tapcore::DayReader reader(part.own());
    for (const tapcore::Day& day : part.days(&problems)) {
        if (!span.contains(day)) continue;
        const std::string place = part.url(day).replace_extension().string();
        const tapcore::FatalContext context("exporting", place);
        rows.begin(machine, day);
        const tapcore::DayFile file = reader.read(day, &problems);
        any = any || !(file == tapcore::DayFile());
        forEachRow(file, [&](const tapcore::CountRow& row) { rows.add(row); });
        give(rows, std::size_t{1} << 16);
    }
    return any;
}

}  // namespace

void exportCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    std::optional<std::string> from;
    std::optional<std::string> to;
    bool csv = false;
    bool json = false;
    line.describe(
        "Print counts as rows for other programs: machine, day, hour, kind, key code, modifiers, count",
        "tappora export --from 2026-09-01 --to 2026-09-30 > september.csv");
    line.option("--from", from, "The first day; from the beginning when not given").type("YYYY-MM-DD");
    line.option("--to", to, "The last day; up to the last when not given").type("YYYY-MM-DD");
    line.flag("--json", json, "Print an object a line (JSON Lines) instead of CSV");
    line.flag("--csv", csv, "Print CSV; the default").excludes("--json");
    addFolderOptions(line, folder);
    line.parse();

    const Span span = spanOf(from, to);
    const tapcore::Store store = openStore(folder, environment);
    tapcore::FileProblems problems;
    RowText rows(json ? RowForm::json : RowForm::csv);
    bool any = false;
    for (const tapcore::Store& part : store.readParts(&problems)) {
        const std::string machine = part.root == store.root ? "" : part.root.filename().string();
        any = exportPart(part, machine, span, rows, problems) || any;
    }
    requireAnswer(problems, !any);
    give(rows);
}

}  // namespace tappora
