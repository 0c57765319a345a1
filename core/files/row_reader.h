#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_problem.h"
#include "core/files/table_reader.h"

namespace tapcore {

// How the tables of a data file are read into a record: a row reader for each section, by its name.

using Cells = std::vector<std::string_view>;

/// What became of a row: empty when it was used, else why it was not.
using Outcome = std::string_view;
inline constexpr Outcome used = "";
inline constexpr Outcome notNumbers = "a cell is not a whole number";
inline constexpr Outcome inNoTable = "it is in no table that is read";
inline constexpr Outcome notModifiers = "the modifiers are not words of ctrl, opt, shift, cmd and fn";

/// The line that a reader has come to, as one that is not used, with its text.
SkippedRow skippedRow(const TableReader& reader, Outcome why);

template <class Record>
struct RowReader {
    std::string_view section;
    Outcome (*read)(Record& record, const Cells& cells);
    std::string_view firstTitle;  ///< what the header line of the section's table starts with
    /// Of a long table: reads the rows to come that are plain numbers and can be used, all of them; `read` is
    /// for the others.
    void (*readPlain)(Record& record, TableReader& reader) = nullptr;
};

/// Reads every row of the sections that have a reader; the rest is passed over. Lines that could not be used
/// are added to `skipped` when it is given, titles and header lines excepted.
template <class Record>
void readRows(std::string_view text, Record& record, std::span<const RowReader<Record>> readers,
              std::vector<SkippedRow>* skipped) {
    const RowReader<Record>* current = nullptr;
    using Lines = TableReader::Lines;
    TableReader reader(text, skipped ? Lines::all : Lines::ofTables);
    const auto next = [&] {
        if (current && current->readPlain) current->readPlain(record, reader);
        return reader.next();
    };
    while (next()) {
        Outcome outcome = inNoTable;
        if (reader.isHeading()) {
            current = nullptr;
            for (const auto& candidate : readers)
                if (candidate.section == reader.section()) current = &candidate;
            if (current) continue;
        } else if (current && !reader.isOther()) {
            outcome = current->read(record, reader.cells());
            if (outcome.empty() || reader.cells().front() == current->firstTitle) continue;
        }
        if (skipped) skipped->push_back(skippedRow(reader, outcome));
    }
}

/// Reads rows as above, with the readers as an array.
template <class Record, std::size_t size>
void readRows(std::string_view text, Record& record, const RowReader<Record> (&readers)[size],
              std::vector<SkippedRow>* skipped) {
    readRows(text, record, std::span<const RowReader<Record>>(readers), skipped);
}

/// What a record of that kind cannot use of a file's text.
template <class Record>
std::vector<SkippedRow> skippedRowsOf(std::string_view text) {
    std::vector<SkippedRow> skipped;
    (void)Record(text, &skipped);
    return skipped;
}

}  // namespace tapcore
