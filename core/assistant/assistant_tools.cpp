#include "core/assistant/assistant_tools.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

std::string readFileDescription() {
    return "Read one file (the first " + std::to_string(AssistantTools::readLimit) +
           R"( characters). Only when the summary does not hold what the question needs, and only the days it names. The path is relative to the data folder, as list_files and search give it, e.g. "days/2026-09-17.org". A day without typing has no file, and this says so — it is not an error.)";
}

AssistantTools::Spec summarySpec() {
    return {
        "summary",
        R"(Start here. The app adds a period up for you, every Mac's part included: keystrokes, active hours, the busiest minute, clicks, mouse distance, keystrokes per day, by hour of the day, the most pressed keys and shortcuts — one short table. Most questions are answered from this alone; read files only for what it does not hold.)",
        {{"from", "First day, YYYY-MM-DD. Optional: six days before \"to\"."},
         {"to", "Last day, YYYY-MM-DD. Optional: today."}},
        {},
        true};
}

AssistantTools::Spec listFilesSpec() {
    return {
        "list_files",
        R"(List the data folder's files in one folder, newest first. Folders: days (YYYY-MM-DD, one day's counts), months (YYYY-MM, a month summed), reports (saved reports), practice (practice days). Call this to learn which days exist before reading them. In a folder several Macs share, each Mac's days, months and practice are under its name ("Studio/days/2026-09-17.org"): a day typed on two Macs has a file on each — add them up.)",
        {{"folder", "One of: days, months, reports, practice."},
         {"contains", "Optional. Only names containing this text, e.g. \"2026-09\" for one month's days."}},
        {"folder"}};
}

AssistantTools::Spec readFileSpec() {
    return {"read_file",
            readFileDescription(),
            {{"path", "The file's path relative to the data folder."}},
            {"path"}};
}

AssistantTools::Spec searchSpec() {
    return {
        "search",
        R"(Find lines containing a text in every file, any case. Returns path:line: text. Use it for a key code row, a chord such as "shift+cmd", or a meta line such as "layout".)",
        {{"query", "The text to look for."}},
        {"query"}};
}

/// A result as text that can be sent: names of files need not be UTF-8.
AssistantTools::Output repaired(AssistantTools::Output output) {
    output.text = repairedUtf8(output.text);
    for (std::string& path : output.read) path = repairedUtf8(path);
    return output;
}

}  // namespace

AssistantTools AssistantTools::over(const Store& store, const Day& today, Legends legends) {
    std::vector<std::string> macs = store.macs();
    if (macs.empty() && store.mac) macs.push_back(*store.mac);
    // The prompt and the listings name them a line each: one that holds a line end could forge another line.
    std::erase_if(macs, hasControlCharacter);
    return {store.root, std::move(macs), store, today, std::move(legends)};
}

std::vector<AssistantTools::Spec> AssistantTools::specs() const {
    std::vector<Spec> specs = {listFilesSpec(), readFileSpec(), searchSpec()};
    if (store) specs.insert(specs.begin(), summarySpec());
    return specs;
}

std::string AssistantTools::spec(std::string_view name) const {
    for (const Spec& spec : specs())
        if (spec.name == name) return spec.description;
    return "";
}

AssistantTools::Output AssistantTools::run(const ToolCall& call) const {
    if (call.isReadable) return run(call.name, call.arguments);
    return toolError("The arguments are not a JSON object. Call " + call.name +
                     R"( again with one, such as {"folder": "days"}.)");
}

AssistantTools::Output AssistantTools::run(std::string_view name, const nlohmann::json& arguments) const {
    const auto text = [&](std::string_view of) { return argument(arguments, of).value_or(""); };
    if (name == "summary" && store) return repaired(summary(arguments));
    if (name == "list_files") return repaired(listFiles(text("folder"), text("contains")));
    if (name == "read_file") return repaired(readFile(text("path")));
    if (name == "search") return repaired(search(text("query")));
    return repaired(toolError("Unknown tool: " + shortened(name)));
}

std::vector<std::string> AssistantTools::names(std::string_view folder, std::string_view contains,
                                               FileProblems& problems) const {
    std::vector<std::string> names;
    for (const std::string& place : places(folder))
        for (DataFile& file : filesIn(place, contains, problems)) names.push_back(std::move(file.name));
    const auto fileName = [](std::string_view name) { return name.substr(name.rfind('/') + 1); };
    std::stable_sort(names.begin(), names.end(),
                     [&](const auto& a, const auto& b) { return fileName(a) > fileName(b); });
    return names;
}

AssistantTools::Output AssistantTools::listFiles(std::string_view folder, std::string_view contains) const {
    if (std::find(folders.begin(), folders.end(), folder) == folders.end())
        return toolError("No such folder: " + shortened(folder) + ". Use days, months, reports or practice.");
    FileProblems problems;
    const std::vector<std::string> wanted = names(folder, contains, problems);
    if (wanted.empty()) return withProblems(toolText(problems.empty() ? "No files." : ""), problems);
    const std::size_t shown = std::min(wanted.size(), listLimit);
    std::string text = joined({wanted.data(), shown}, "\n");
    if (wanted.size() > shown)
        text += "\n… and " + std::to_string(wanted.size() - shown) + " older — narrow with \"contains\".";
    return withProblems(toolText(text), problems);
}

AssistantTools::Output toolText(std::string text) { return {std::move(text), false, {}}; }

AssistantTools::Output toolError(std::string text) { return {std::move(text), true, {}}; }

AssistantTools::Output withProblems(AssistantTools::Output output, const FileProblems& problems) {
    constexpr std::size_t shown = 20;
    std::vector<std::string> lines;
    if (!output.text.empty()) lines.push_back(std::move(output.text));
    else output.isError = !problems.empty();
    for (std::size_t i = 0; i < problems.size() && i < shown; ++i)
        lines.push_back("[Not complete: " + shortened(problems[i].path.string()) + ": " + problems[i].why +
                        "]");
    if (problems.size() > shown)
        lines.push_back("[… and " + std::to_string(problems.size() - shown) + " more]");
    output.text = joined(lines, "\n");
    return output;
}

}  // namespace tapcore
