#pragma once

#include <string>

#include "core/files/file_format.h"
#include "core/files/store.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tapcore {

/// A report as a document of tables, like all files of the data folder: for its owner, and for the
/// assistant's tools. The same report gives the same text. Findings are sentences in the language of `words`;
/// the names of tables and columns are English, as in day files. docs/reports.md shows one.
std::string documentOf(const Report& report, const ReportKeyboard& keyboard, const Words& words,
                       FileFormat format);

/// The data folder as reports are kept in it: at its top, whatever machines share it.
Store reportsAt(const Store& store);

/// What became of a report that was saved.
enum class SavedReport {
    written,    ///< there was none of that name
    unchanged,  ///< there was the same one, and it was left alone
    reworded,   ///< there was one with the same figures, in another language or format
    changed,    ///< there was another one: figures have changed since
};

/// Writes a document as reports/NAME at the top of the data folder, in the store's format, over the one that
/// is there in either format. Throws std::filesystem::filesystem_error with the path.
SavedReport saveReport(const Store& store, const std::string& name, const std::string& document);

}  // namespace tapcore
