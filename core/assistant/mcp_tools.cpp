// The methods tools/list and tools/call.

#include <algorithm>
#include <array>

#include "core/assistant/assistant_wire.h"
#include "core/assistant/mcp_methods.h"
#include "core/assistant/tool_summary.h"
#include "core/assistant/tool_text.h"

namespace tapcore::mcp {
namespace {

using nlohmann::json;

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> titles = {{
    {"summary", "A period added up"},
    {"list_files", "List the data files"},
    {"read_file", "Read one file"},
    {"search", "Search the files"},
}};

std::string_view titleOf(std::string_view tool) {
    return std::find_if(titles.begin(), titles.end(), [&](const auto& title) { return title.first == tool; })
        ->second;
}

json declaration(const AssistantTools::Spec& spec, Revision revision) {
    json tool = {
        {"name", spec.name}, {"description", spec.description}, {"inputSchema", AssistantWire::schema(spec)}};
    if (revision >= Revision::r2025_03_26)
        tool["annotations"] = {{"title", titleOf(spec.name)},
                               {"readOnlyHint", true},
                               {"destructiveHint", false},
                               {"idempotentHint", true},
                               {"openWorldHint", false}};
    if (revision >= Revision::r2025_06_18) {
        tool["title"] = titleOf(spec.name);
        if (spec.name == "summary") tool["outputSchema"] = periodSchema();
    }
    return tool;
}

json content(const AssistantTools::Output& output) {
    json result = {{"content", json::array({{{"type", "text"}, {"text", output.text}}})}};
    if (output.isError) result["isError"] = true;
    return result;
}

/// The summary as text and, for those who know it, as data.
json summary(const AssistantTools& tools, const json& arguments, Revision revision) {
    const auto period = tools.period(arguments);
    if (const auto* error = std::get_if<AssistantTools::Output>(&period)) return content(*error);
    const auto& found = std::get<AssistantTools::PeriodFigures>(period);
    json result = content(toolText(tools.text(found)));
    if (revision >= Revision::r2025_06_18) result["structuredContent"] = periodJson(found, tools.legends);
    return result;
}

}  // namespace

Result listTools(const Offer& offer, Revision revision) {
    json tools = json::array();
    for (const auto& spec : offer.tools().specs()) tools.push_back(declaration(spec, revision));
    return {{{"tools", tools}}, Caching::builtIn};
}

Result callTool(const Offer& offer, Revision revision, const json& params) {
    const std::string name = stringParam(params, "name");
    const json arguments = params.value("arguments", json::object());
    if (!arguments.is_object()) throw Error(invalidParams, "Invalid params: arguments is not an object");
    const AssistantTools tools = offer.tools();
    if (tools.spec(name).empty()) throw Error(invalidParams, "Unknown tool: " + shortened(name));
    return {name == "summary" ? summary(tools, arguments, revision) : content(tools.run(name, arguments))};
}

}  // namespace tapcore::mcp
