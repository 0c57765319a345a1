// The methods prompts/list and prompts/get.

#include <array>

#include "core/assistant/mcp_methods.h"
#include "core/assistant/tool_text.h"

namespace tapcore::mcp {
namespace {

using nlohmann::json;

struct Prompt {
    std::string_view name;
    std::string_view title;
    std::string_view description;
};
constexpr std::array<Prompt, 2> prompts = {{
    {"look-at-my-typing", "Look at my typing",
     "What the typing data holds and how to read it with these tools, frugally."},
    {"read-my-data-folder", "Read my data folder",
     "The same for an agent that opens the files itself: it names the folder."},
}};

json declaration(const Prompt& prompt, Revision revision) {
    const json language = {{"name", "language"},
                           {"description", "The language to answer in; English when it is not given."},
                           {"required", false}};
    json declared = {
        {"name", prompt.name}, {"description", prompt.description}, {"arguments", json::array({language})}};
    if (revision >= Revision::r2025_06_18) declared["title"] = prompt.title;
    return declared;
}

/// The language asked for. Throws Error for arguments that are not all strings.
std::string languageOf(const json& params) {
    const json arguments = params.value("arguments", json::object());
    if (!arguments.is_object()) throw Error(invalidParams, "Invalid params: arguments is not an object");
    for (const auto& [name, value] : arguments.items())
        if (!value.is_string())
            throw Error(invalidParams,
                        "Invalid params: the argument " + shortened(name) + " is not a string");
    return arguments.value("language", "");
}

}  // namespace

Result listPrompts(Revision revision) {
    json list = json::array();
    for (const Prompt& prompt : prompts) list.push_back(declaration(prompt, revision));
    return {{{"prompts", list}}, Caching::builtIn};
}

Result getPrompt(const Offer& offer, const json& params) {
    const std::string name = stringParam(params, "name");
    AgentPrompt prompt = offer.prompt();
    if (const std::string language = languageOf(params); !language.empty()) prompt.language = language;
    std::string text;
    if (name == prompts[0].name) text = prompt.inApp(offer.today());
    else if (name == prompts[1].name) text = prompt.text(offer.tools().base.string());
    else throw Error(invalidParams, "Unknown prompt: " + shortened(name));
    return {
        {{"messages", json::array({{{"role", "user"}, {"content", {{"type", "text"}, {"text", text}}}}})}}};
}

}  // namespace tapcore::mcp
