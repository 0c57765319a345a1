#include "core/assistant/chat_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"

namespace tapcore {
namespace {

constexpr std::string_view title = "Ask AI";
constexpr std::string_view answerHeading = "Answer";
constexpr std::string_view orgRead = ":READ:";
constexpr std::string_view markdownRead = "<!-- read:";
constexpr std::string_view commentEnd = "-->";

/// "* " or "## ".
std::string headingPrefix(FileFormat format) {
    std::string heading = format.heading("");
    heading.pop_back();
    return heading;
}

/// What is put before a line of text that would be taken for a heading or a read list.
char escapeMark(FileFormat format) { return format == FileFormat::org ? ',' : '\\'; }

/// The paths of a line that lists the files read, as written; nothing for another line.
std::optional<std::string_view> readList(std::string_view line) {
    if (line.starts_with(orgRead)) return line.substr(orgRead.size());
    if (!line.starts_with(markdownRead)) return std::nullopt;
    line = trimmedWhiteSpace(line.substr(markdownRead.size()));
    if (line.ends_with(commentEnd)) line.remove_suffix(commentEnd.size());
    return line;
}

bool isMark(std::string_view line, FileFormat format) {
    return line.starts_with(headingPrefix(format)) || readList(line);
}

/// Whether a line reads as a mark behind any number of escapes.
bool looksLikeMark(std::string_view line, FileFormat format) {
    while (line.starts_with(escapeMark(format))) line.remove_prefix(1);
    return isMark(line, format);
}

/// Whether an editor has ended the lines with CR LF: then the first one is ended so.
bool endsLinesWithCRLF(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r';
}

enum class LineEnd { lf, crlf };

/// Calls `visit` with each line, its line end left out. A text that ends in a line end has no line after it.
template <class Visit>
void forEachLine(std::string_view text, LineEnd lineEnd, Visit visit) {
    while (!text.empty()) {
        std::string_view line = takePiece(text, '\n');
        if (lineEnd == LineEnd::crlf && line.ends_with('\r')) line.remove_suffix(1);
        visit(line);
    }
}

std::string escaped(std::string_view text, FileFormat format) {
    std::string result;
    forEachLine(text, LineEnd::lf, [&](std::string_view line) {
        if (looksLikeMark(line, format)) result += escapeMark(format);
        result.append(line).append("\n");
    });
    if (!text.empty() && !text.ends_with('\n')) result.pop_back();
    return result;
}

std::string readLine(const std::vector<std::string>& paths, FileFormat format) {
    std::string line(format == FileFormat::org ? orgRead : markdownRead);
    for (const std::string& path : paths) line.append(&path == paths.data() ? " " : ", ").append(path);
    return line + (format == FileFormat::org ? "\n" : " -->\n");
}

void addPaths(std::vector<std::string>& paths, std::string_view list) {
    while (!list.empty()) {
        const std::string_view path = trimmedWhiteSpace(takePiece(list, ','));
        if (!path.empty()) paths.emplace_back(path);
    }
}

/// The format that a document is written in, by its first line that is not empty.
FileFormat formatOf(std::string_view text) {
    const std::string_view start = trimmedWhiteSpace(text);
    const bool isOrg = start.starts_with("#+") || start.starts_with(headingPrefix(FileFormat::org));
    return isOrg ? FileFormat::org : FileFormat::markdown;
}

/// A section as it is read: its turn, and the lines of its text.
struct Section {
    ChatFile::Turn turn;
    std::vector<std::string_view> lines;

    /// The turn, without the empty lines that set its text apart from the headings.
    ChatFile::Turn finished(bool isLast) && {
        if (!isLast && !lines.empty() && lines.back().empty()) lines.pop_back();
        if (!lines.empty() && lines.front().empty()) lines.erase(lines.begin());
        for (const std::string_view line : lines) turn.text.append(line).append("\n");
        if (!lines.empty()) turn.text.pop_back();
        return std::move(turn);
    }
};

}  // namespace

ChatFile::ChatFile(std::string_view text) {
    const FileFormat format = formatOf(text);
    std::optional<Section> section;
    const auto finish = [&](bool isLast) {
        if (section) turns.push_back(std::move(*section).finished(isLast));
    };
    const LineEnd lineEnd = endsLinesWithCRLF(text) ? LineEnd::crlf : LineEnd::lf;
    forEachLine(text, lineEnd, [&](std::string_view line) {
        if (line.starts_with(headingPrefix(format))) {
            finish(false);
            const bool isAnswer =
                trimmedWhiteSpace(line.substr(headingPrefix(format).size())) == answerHeading;
            section = Section{{isAnswer ? Role::assistant : Role::user, "", {}}, {}};
        } else if (!section) {
            return;
        } else if (const auto paths = readList(line)) {
            addPaths(section->turn.read, *paths);
        } else {
            if (looksLikeMark(line, format)) line.remove_prefix(1);
            section->lines.push_back(line);
        }
    });
    finish(true);
}

std::string ChatFile::text(FileFormat format) const {
    std::string text = format.titleLine(title);
    for (const Turn& turn : turns) {
        text += "\n" + format.heading(turn.role == Role::user ? "You" : answerHeading) + "\n";
        text += escaped(turn.text, format) + "\n";
        if (!turn.read.empty()) text += readLine(turn.read, format);
    }
    return text;
}

}  // namespace tapcore
