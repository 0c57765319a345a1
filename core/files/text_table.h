#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_format.h"

namespace tapcore {

/// One table of a data file.
struct TextTable {
    /// A heading's table as read: its header line is the first row.
    struct Section {
        std::string name;
        std::vector<std::vector<std::string>> rows;

        bool operator==(const Section&) const = default;
    };

    std::vector<std::string> header;  ///< the columns' titles; at least one
    std::vector<bool> alignRight;     ///< a flag for each column: true for numbers
    std::vector<std::vector<std::string>>
        rows;  ///< at least as many cells in each as columns; more are not written

    /// The table as text, its columns padded to one width, the last line ended. A "|" or a line break in a
    /// cell is written as a space. Fatal without columns, and for a row that has fewer cells than there are
    /// columns.
    std::string render(FileFormat format) const;

    /// The table under its heading: heading, empty line, table.
    std::string section(FileFormat format, std::string_view title) const;

    /// All sections of a file, in either format or tab-separated, in file order; never fails.
    static std::vector<Section> sections(std::string_view text);

    bool operator==(const TextTable&) const = default;
};

}  // namespace tapcore
