// The tool search: lines of all data files that hold a text, in any case.

#include <algorithm>

#include "core/assistant/assistant_tools.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

/// Goes forward through a text line by line.
class LineCursor {
  public:
    explicit LineCursor(std::string_view text) : rest_(text) {}

    /// Goes to the line with this number, from 1, that is not behind. Without its line end, LF or CR LF.
    std::string_view goTo(std::size_t number) {
        for (; line_ < number; ++line_) rest_.remove_prefix(rest_.find('\n') + 1);
        const std::string_view line = rest_.substr(0, rest_.find('\n'));
        return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
    }

  private:
    std::string_view rest_;
    std::size_t line_ = 1;
};

/// Calls `visit(number)` with the number, from 1, of each line of `folded` that holds `query`; both are
/// case-folded.
template <class Visit>
void forEachMatch(std::string_view folded, std::string_view query, Visit visit) {
    std::size_t line = 1;
    std::size_t counted = 0;  // up to where line ends are counted
    for (std::size_t at = folded.find(query); at != std::string_view::npos; at = folded.find(query, at)) {
        line += static_cast<std::size_t>(std::count(folded.begin() + static_cast<std::ptrdiff_t>(counted),
                                                    folded.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
        counted = at;
        visit(line);
        at = folded.find('\n', at);
        if (at == std::string_view::npos) return;
    }
}

}  // namespace

AssistantTools::Output AssistantTools::search(std::string_view query) const {
    if (query.empty()) return toolError("Empty query.");
    const std::string folded = caseFolded(query);
    const DataFileReader reader(rootOf(base));
    std::vector<std::string> lines;
    std::size_t found = 0, bytes = 0;
    Output output;
    FileProblems problems;
    const auto searchFile = [&](const DataFile& file) {
        const FileRead read = reader.read(file.path);
        if (read.status == FileRead::Status::unreadable)
            problems.push_back({file.name, 0, read.error.message()});
        LineCursor cursor(read.text);
        forEachMatch(caseFolded(read.text), folded, [&](std::size_t number) {
            ++found;
            if (lines.size() == searchLimit || bytes > byteLimit) return;
            lines.push_back(file.name + ":" + std::to_string(number) + ": " + shortened(cursor.goTo(number)));
            bytes += lines.back().size();
            if (output.read.empty() || output.read.back() != file.name) output.read.push_back(file.name);
        });
    };
    const bool canMatch = query.find('\n') == std::string_view::npos;
    for (const std::string_view folder :
         canMatch ? std::vector(folders.begin(), folders.end()) : std::vector<std::string_view>())
        for (const std::string& place : places(folder))
            for (const DataFile& file : filesIn(place, "", problems)) searchFile(file);

    if (found == 0 && !problems.empty()) return withProblems({}, problems);
    if (found == 0) return toolText("No lines contain \"" + shortened(query) + "\".");
    if (found > lines.size())
        lines.push_back("… and " + std::to_string(found - lines.size()) + " more lines — narrow the query.");
    output.text = joined(lines, "\n");
    return withProblems(std::move(output), problems);
}

}  // namespace tapcore
