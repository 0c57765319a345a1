#include "app/common/command_line/help_text.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "core/foundation/json_fields.h"

namespace tappora {
namespace {

using nlohmann::json;

constexpr std::string_view exampleMark = "Example:\n  ";
/// Begins the description of a range, which CLI11 puts behind the word for the value and a colon.
constexpr std::string_view rangeMark = "range ";

/// What CLI11 calls parts of the help, and what this program does.
constexpr std::pair<const char*, const char*> words[] = {{"SUBCOMMAND", "TASK"},
                                                         {"Positionals", "Arguments"}};

bool takesSeveral(const CLI::Option& option) {
    return option.get_allow_extra_args() && option.get_expected_max() > 1;
}

std::vector<std::string> namesOf(const CLI::Option& option) {
    if (option.get_positional()) return {option.get_name(true)};
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

/// What an option does, and which others it needs or cannot be given with.
std::string descriptionOf(const CLI::Option& option) {
    std::string text = option.get_description();
    for (const CLI::Option* other : option.get_needs()) text += "; needs " + other->get_name();
    for (const CLI::Option* other : option.get_excludes()) text += "; not with " + other->get_name();
    return text;
}

/// The word for an option's value, and the range that it must be in; "" where there is none.
struct ValueText {
    std::string word;
    std::string range;
};

ValueText valueOf(const CLI::Option& option) {
    if (option.get_items_expected_max() == 0) return {};
    const std::string text = option.get_type_name();
    const std::size_t mark = text.find(fmt::format(":{}", rangeMark));
    if (mark == text.npos) return {text, ""};
    return {text.substr(0, mark), text.substr(mark + 1 + rangeMark.size())};
}

json optionJson(const CLI::Option& option) {
    json result = {{"names", namesOf(option)}, {"does", descriptionOf(option)}};
    const auto [value, range] = valueOf(option);
    if (!range.empty()) result["range"] = range;
    if (!value.empty()) result["value"] = value;
    if (const std::string usual = option.get_default_str(); !usual.empty()) result["usually"] = usual;
    if (option.get_required()) result["required"] = true;
    if (takesSeveral(option)) result["several"] = true;
    return result;
}

json commandJson(const CLI::App& command) {
    json result = {{"name", command.get_name()}, {"does", command.get_description()}};
    if (const std::string footer = command.get_footer(); footer.starts_with(exampleMark))
        result["example"] = footer.substr(exampleMark.size());
    if (command.get_prefix_command()) result["elsewhere"] = true;
    for (const char* list : {"arguments", "options", "tasks"}) result[list] = json::array();
    for (const CLI::Option* option : command.get_options())
        result[option->get_positional() ? "arguments" : "options"].push_back(optionJson(*option));
    for (const CLI::App* task : command.get_subcommands(nullptr))
        result["tasks"].push_back(commandJson(*task));
    return result;
}

}  // namespace

HelpText::HelpText() {
    for (const auto& [name, word] : words) label(name, word);
}

/// As it is typed: a flag that says no is written "--no-names" and not "--no-names{false}".
std::string HelpText::make_option_name(const CLI::Option* option, bool isPositional) const {
    constexpr std::string_view saysNo = "{false}";
    std::string name = CLI::Formatter::make_option_name(option, isPositional);
    for (std::size_t at = 0; (at = name.find(saysNo)) != std::string::npos;) name.erase(at, saysNo.size());
    return name;
}

/// The word for the value; a range, and what is taken when the option is not given, after a comma each.
std::string HelpText::make_option_opts(const CLI::Option* option) const {
    const auto [value, range] = valueOf(*option);
    std::string text = value.empty() ? "" : " " + value;
    if (!range.empty()) text += ", " + range;
    if (const std::string usual = option->get_default_str(); !usual.empty()) text += ", usually " + usual;
    if (takesSeveral(*option)) text += " ...";
    return text + (option->get_required() ? " (required)" : "");
}

std::string HelpText::make_option_desc(const CLI::Option* option) const { return descriptionOf(*option); }

std::string exampleFooter(std::string_view example) { return fmt::format("{}{}", exampleMark, example); }

std::string rangeDescription(double least, double most) {
    return fmt::format("{}{} to {}", rangeMark, least, most);
}

std::string helpJson(const CLI::App& command, const NamedTexts& commands) {
    json result = commandJson(command);
    for (const auto& [name, does] : commands) result["commands"].push_back({{"name", name}, {"does", does}});
    return tapcore::jsonText(result);
}

}  // namespace tappora
