// The tool read_file: one file, or the parts that several machines have of it.

#include "core/assistant/assistant_tools.h"
#include "core/foundation/characters.h"

namespace tapcore {

struct AssistantTools::Copy {
    std::string name;
    std::string text;
};

namespace {

std::string oneCopy(const std::string& text) {
    if (text.empty()) return "(empty file)";
    const std::string_view shown = bounded(text, AssistantTools::readLimit);
    if (shown.size() == text.size()) return text;
    const std::size_t count = characterCount(text);
    const bool isLong = count > AssistantTools::readLimit;  // or its characters take many bytes each
    const std::size_t whole = isLong ? count : text.size();
    const std::size_t first = isLong ? characterCount(shown) : shown.size();
    return std::string(shown) + "\n[The file is longer: " + std::to_string(whole) +
           (isLong ? " characters" : " bytes") + "; this is the first " + std::to_string(first) + ".]";
}

void endLine(std::string& text) {
    if (!text.empty() && !text.ends_with('\n')) text += '\n';
}

}  // namespace

std::vector<AssistantTools::Copy> AssistantTools::copies(std::string_view path,
                                                         FileProblems& problems) const {
    const std::size_t slash = path.rfind('/');
    const std::string_view folder = path.substr(0, slash);
    const bool isPlain = folder.find('/') == std::string_view::npos;
    const DataFileReader reader(rootOf(base));
    std::vector<Copy> copies;
    for (const std::string& place : isPlain ? places(folder) : std::vector{std::string(folder)}) {
        std::string name = place + std::string(path.substr(slash));
        const auto file = resolve(name);
        FileRead read = file ? reader.read(*file) : FileRead();
        if (read.status == FileRead::Status::read) copies.push_back({std::move(name), std::move(read.text)});
        else if (read.status == FileRead::Status::unreadable)
            problems.push_back({std::move(name), 0, read.error.message()});
        else reportUnlisted(place, problems);
    }
    return copies;
}

/// The parts of several machines under a head line each.
AssistantTools::Output AssistantTools::joinedParts(const std::vector<Copy>& found) {
    Output output;
    std::vector<std::size_t> starts;
    for (const Copy& copy : found) {
        endLine(output.text);
        if (!output.text.empty()) output.text += '\n';
        output.text += "=== " + copy.name + " — one Mac's part; add the Macs together ===\n";
        starts.push_back(output.text.size());
        output.text += copy.text;
    }
    const std::string_view shown = bounded(output.text, readLimit);
    for (std::size_t i = 0; i < found.size(); ++i)
        if (starts[i] < shown.size() || starts[i] == output.text.size()) output.read.push_back(found[i].name);
    if (shown.size() < output.text.size())
        output.text = std::string(shown) + "\n[Longer; this is the first " +
                      std::to_string(characterCount(shown)) + " characters.]";
    return output;
}

AssistantTools::Output AssistantTools::readFile(std::string_view path) const {
    FileProblems problems;
    if (!resolve(path)) {
        if (isDataPath(path)) reportUnlisted(std::string(path.substr(0, path.rfind('/'))), problems);
        return problems.empty() ? toolError("Not a file of this folder: " + shortened(path))
                                : withProblems({}, problems);
    }
    const auto found = copies(path, problems);
    if (found.empty() && !problems.empty()) return withProblems({}, problems);
    if (found.empty())
        return toolText(
            "There is no " + shortened(path) +
            R"( — a day without typing has no file. This is normal; say so plainly. list_files shows the ones that exist.)");
    if (found.size() == 1) return withProblems({oneCopy(found[0].text), false, {found[0].name}}, problems);
    return withProblems(joinedParts(found), problems);
}

}  // namespace tapcore
