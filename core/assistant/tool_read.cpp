// The tool read_file: one file, or the parts that several machines have of it.

#include "core/assistant/tool_text.h"
#include "core/foundation/characters.h"

namespace tapcore {

struct AssistantTools::Copy {
    std::string name;
    std::string text;
};

namespace {

std::string cut(std::string_view text) {
    return std::string(firstCharacters(text, AssistantTools::readLimit));
}

std::string limitText() { return std::to_string(AssistantTools::readLimit); }

std::string oneCopy(const std::string& text) {
    if (text.empty()) return "(empty file)";
    const std::size_t size = characterCount(text);
    if (size <= AssistantTools::readLimit) return text;
    return cut(text) + "\n[The file is longer: " + std::to_string(size) + " characters; this is the first " +
           limitText() + ".]";
}

void endLine(std::string& text) {
    if (!text.empty() && !text.ends_with('\n')) text += '\n';
}

}  // namespace

std::vector<AssistantTools::Copy> AssistantTools::copies(std::string_view path) const {
    const std::size_t slash = path.rfind('/');
    const std::string_view folder = path.substr(0, slash);
    const bool isPlain = folder.find('/') == std::string_view::npos;
    std::vector<Copy> copies;
    for (const std::string& place : isPlain ? places(folder) : std::vector{std::string(folder)}) {
        std::string name = place + std::string(path.substr(slash));
        const auto file = resolve(name);
        auto text = file ? textOfFile(*file) : std::nullopt;
        if (text) copies.push_back({std::move(name), std::move(*text)});
    }
    return copies;
}

AssistantTools::Output AssistantTools::readFile(std::string_view path) const {
    if (!resolve(path)) return toolError("Not a file of this folder: " + shortened(path));
    const auto found = copies(path);
    if (found.empty())
        return toolText(
            "There is no " + shortened(path) +
            " — a day without typing has no file. This is normal; say so plainly. list_files shows the "
            "ones that exist.");
    if (found.size() == 1) return {oneCopy(found[0].text), false, {found[0].name}};

    Output output;
    for (const Copy& copy : found) {
        endLine(output.text);
        if (!output.text.empty()) output.text += '\n';
        output.text += "=== " + copy.name + " — one Mac's part; add the Macs together ===\n" + copy.text;
        output.read.push_back(copy.name);
    }
    if (characterCount(output.text) > readLimit)
        output.text = cut(output.text) + "\n[Longer; this is the first " + limitText() + " characters.]";
    return output;
}

}  // namespace tapcore
