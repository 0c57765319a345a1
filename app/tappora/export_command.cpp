#include <fmt/compile.h>
#include <fmt/format.h>

#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "core/files/count_rows.h"
#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using tapcore::CountRow;

/// Rows as text, given out whenever there is much of it.
class RowWriter {
  public:
    explicit RowWriter(bool json) : json_(json) {
        if (!json_) text_ = "machine,day,hour,kind,keycode,modifiers,count\n";
    }

    void begin(const std::string& machine, const tapcore::Day& day) {
        start_ =
            json_ ? fmt::format(R"({{"machine":{},"day":"{}")", tapcore::jsonLine(machine), day.description())
                  : quoted(machine) + "," + day.description();
    }

    void add(const CountRow& row) {
        json_ ? addJson(row) : addCsv(row);
        constexpr std::size_t much = std::size_t{1} << 16;
        if (text_.size() > much) give();
    }

    void give() {
        print(text_);
        text_.clear();
    }

  private:
    /// A field of RFC 4180: in quotes where it has to be.
    static std::string quoted(const std::string& field) {
        if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
        std::string result = "\"";
        for (const char c : field) result += c == '"' ? "\"\"" : std::string(1, c);
        return result + "\"";
    }

    void addCsv(const CountRow& row) {
        const auto out = std::back_inserter(text_);
        text_ += start_;
        text_ += ',';
        if (row.hour) fmt::format_to(out, FMT_COMPILE("{}"), *row.hour);
        text_ += ',';
        text_ += CountRow::kinds.of(row.kind);
        text_ += ',';
        if (row.keyCode) fmt::format_to(out, FMT_COMPILE("{}"), *row.keyCode);
        text_ += ',';
        text_ += row.modifiers.name();
        fmt::format_to(out, FMT_COMPILE(",{}\n"), row.count);
    }

    void addJson(const CountRow& row) {
        const auto out = std::back_inserter(text_);
        text_ += start_;
        if (row.hour) fmt::format_to(out, FMT_COMPILE(R"(,"hour":{})"), *row.hour);
        fmt::format_to(out, FMT_COMPILE(R"(,"kind":"{}")"), CountRow::kinds.of(row.kind));
        if (row.keyCode) fmt::format_to(out, FMT_COMPILE(R"(,"keycode":{})"), *row.keyCode);
        if (row.kind == CountRow::Kind::chord)
            fmt::format_to(out, FMT_COMPILE(R"(,"modifiers":"{}")"), row.modifiers.name());
        fmt::format_to(out, FMT_COMPILE(R"(,"count":{})"), row.count);
        text_ += "}\n";
    }

    bool json_;
    std::string start_;  ///< of each row of the day
    std::string text_;
};

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

/// Writes the days of one machine's folder; true when there are any.
bool exportPart(const tapcore::Store& part, const std::string& machine, const Span& span, RowWriter& writer,
                tapcore::FileProblems& problems) {
    bool any = false;
    for (const tapcore::Day& day : part.days(&problems)) {
        if (!span.contains(day)) continue;
        const std::string place = part.url(day).replace_extension().string();
        const tapcore::FatalContext context("exporting", place);
        writer.begin(machine, day);
        const tapcore::DayFile file = part.readOwn(day, &problems);
        any = any || !(file == tapcore::DayFile());
        forEachRow(file, [&](const CountRow& row) { writer.add(row); });
    }
    return any;
}

}  // namespace

void exportCommand(CommandLine& line, const Environment& environment) {
    FolderOptions folder;
    std::optional<std::string> from;
    std::optional<std::string> to;
    bool json = false;
    line.describe(
        "Print counts as rows for other programs: machine, day, hour, kind, key code, modifiers, count",
        "tappora export --from 2026-09-01 --to 2026-09-30 > september.csv");
    line.option("--from", from, "The first day; from the beginning when not given").type("YYYY-MM-DD");
    line.option("--to", to, "The last day; up to the last when not given").type("YYYY-MM-DD");
    line.flag("--json", json, "Print an object a line (JSON Lines) instead of CSV");
    addFolderOptions(line, folder);
    line.parse();

    const Span span = spanOf(from, to);
    const tapcore::Store store = openStore(folder, environment);
    tapcore::FileProblems problems;
    RowWriter writer(json);
    bool any = false;
    for (const tapcore::Store& part : store.readParts(&problems)) {
        const std::string machine = part.root == store.root ? "" : part.root.filename().string();
        any = exportPart(part, machine, span, writer, problems) || any;
    }
    requireAnswer(problems, !any);
    writer.give();
}

}  // namespace tappora
