#include "app/tappora/catalog_tasks.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/common/command_line/records_json.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "core/files/store.h"
#include "core/foundation/integers.h"

namespace tappora {

std::vector<std::string> newProblems(const tapcore::Catalog& catalog, const tapcore::Catalog& without) {
    std::vector<std::string> problems = catalog.problems();
    for (const std::string& known : without.problems())
        if (const auto same = std::find(problems.begin(), problems.end(), known); same != problems.end())
            problems.erase(same);
    return problems;
}

std::string textToImport(const std::string& file) {
    try {
        return tapcore::Catalog::readText(file);
    } catch (const tapcore::Catalog::FileError& error) {
        throw Failure(file, error.underlying);
    }
}

void requireSafeID(const std::optional<std::string>& id, std::string_view but) {
    if (id && !tapcore::Store::isSafeLayoutID(*id))
        throw UsageError(
            fmt::format("--id: not an id: {}; use up to 64 of a-z, 0-9, \"-\" and \"_\"{}", *id, but));
}

void reportProblems(std::string_view command, const std::vector<std::string>& problems, bool isJson) {
    if (isJson) print(jsonText(problems));
    for (const std::string& problem : problems)
        if (!isJson) print(harmlessLine(problem) + "\n");
    if (!problems.empty()) throw Failure(command, tapcore::counted(problems.size(), "problem", "problems"));
    if (!isJson) print("No problems.\n");
}

void printList(std::string_view title, const std::vector<std::string>& sentences) {
    if (!sentences.empty()) print(fmt::format("\n{}:\n", title));
    for (const std::string& sentence : sentences) print("  " + harmlessLine(sentence) + "\n");
}

}  // namespace tappora
