#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/harmless_text.h"
#include "app/common/keyboard/key_remaps.h"
#include "app/common/keyboard/keyboard.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/tappora/commands.h"
#include "core/assistant/assistant_tools.h"
#include "core/assistant/assistant_wire.h"
#include "core/foundation/utf8.h"

namespace tappora {
namespace {

using nlohmann::json;
using Spec = tapcore::AssistantTools::Spec;

/// The tools as people call them: "search QUERY", and what each is for.
std::string listOf(const std::vector<Spec>& specs) {
    std::string text;
    for (const Spec& spec : specs) {
        text += spec.name;
        for (const auto& [name, description] : spec.properties) {
            const bool isRequired =
                std::find(spec.required.begin(), spec.required.end(), name) != spec.required.end();
            text += fmt::format(fmt::runtime(isRequired ? " {}" : " [{}]"), name);
        }
        text += "\n  " + spec.description + "\n";
    }
    return text;
}

/// The arguments of a call: in the order of the tool's parameters, or named as in "to=2026-09-20".
json argumentsOf(const Spec& spec, const std::vector<std::string>& values) {
    json arguments = json::object();
    std::size_t next = 0;
    for (const std::string& value : values) {
        const std::string name = value.substr(0, value.find('='));
        const bool isNamed = name.size() < value.size() &&
                             std::any_of(spec.properties.begin(), spec.properties.end(),
                                         [&](const auto& property) { return property.first == name; });
        if (isNamed) arguments[name] = tapcore::repairedUtf8(value.substr(name.size() + 1));
        else if (next == spec.properties.size())
            throw UsageError(value + ": one argument too many for " + spec.name);
        else arguments[spec.properties[next++].first] = tapcore::repairedUtf8(value);
    }
    return arguments;
}

/// UsageError when a parameter that the tool cannot do without is missing.
void requireAll(const Spec& spec, const json& arguments) {
    for (const std::string& name : spec.required)
        if (!arguments.contains(name)) throw UsageError(spec.name + ": needs " + name);
}

Spec specOf(const tapcore::AssistantTools& tools, const std::string& name) {
    for (Spec& spec : tools.specs())
        if (spec.name == name) return std::move(spec);
    throw UsageError("NAME: no such tool: " + name + "; see tappora tool");
}

json toJson(const std::vector<Spec>& specs) {
    json list = json::array();
    for (const Spec& spec : specs)
        list.push_back({{"name", spec.name},
                        {"description", spec.description},
                        {"parameters", tapcore::AssistantWire::schema(spec)}});
    return list;
}

json toJson(const tapcore::AssistantTools::Output& output) {
    return {{"text", output.text}, {"isError", output.isError}, {"read", output.read}};
}

struct Asked {
    FolderOptions folder;
    KeyboardOptions keyboard;
    std::string name;
    std::vector<std::string> values;
    bool json = false;
};

void declare(CommandLine& line, Asked& asked) {
    line.describe("Run one of the assistant's tools and print its result; without a name, list the tools",
                  "tappora tool summary from=2026-09-01 to=2026-09-30");
    line.option("NAME", asked.name, "The tool");
    line.option("ARGUMENTS", asked.values, "Its arguments, in order or as PARAMETER=VALUE");
    line.flag("--json", asked.json, "Print the result and the files read, or the list, as JSON");
    addLayoutOption(line, asked.keyboard);
    addFolderOptions(line, asked.folder);
}

/// Prints the result of a tool. Failure when that is an error.
void printOutput(const Spec& spec, const tapcore::AssistantTools::Output& output,
                 const Environment& environment) {
    if (output.isError) throw Failure(spec.name, output.text);
    print(environment.onTerminal ? harmless(output.text) : output.text);
    if (!output.text.ends_with('\n')) print("\n");
}

}  // namespace

void toolCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    declare(line, asked);
    line.parse();

    const tapcore::Store store = openShown(asked.folder, environment);
    const tapcore::Day day = today(asked.folder, environment, environment.calendar);
    tapcore::AssistantTools tools = tapcore::AssistantTools::over(store, day, {});
    if (asked.name.empty())
        return print(asked.json ? jsonText(toJson(tools.specs())) : listOf(tools.specs()));
    const Spec spec = specOf(tools, asked.name);
    const json arguments = argumentsOf(spec, asked.values);
    requireAll(spec, arguments);
    if (spec.namesKeys) tools.legends = Keyboards(environment, store).chosenLayout(asked.keyboard).names();
    const auto output = tools.run(spec.name, arguments);
    if (asked.json) return print(jsonText(toJson(output)));
    printOutput(spec, output, environment);
}

}  // namespace tappora
