#include "core/assistant/code_call.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "core/foundation/ascii.h"
#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

using Tool = AssistantTools::Spec;
using nlohmann::json;

constexpr std::size_t longestArguments = 20'000;  // bytes
constexpr std::string_view blanks = " \t\r\n";

bool isOfName(char c) { return isAsciiLetter(c) || isDigit(c) || c == '_'; }

/// Reads the arguments of a call from what follows its "(".
class Arguments {
  public:
    Arguments(const Tool& tool, std::string_view text) : tool_(tool), text_(text) {}

    /// Nothing when they cannot be read.
    std::optional<json> read() {
        json arguments = json::object();
        for (std::size_t position = 0; !takes(')'); ++position) {
            if (position > 0 && !takes(',')) return std::nullopt;
            std::string name(word());
            if (name.empty() && position < tool_.properties.size()) name = tool_.properties[position].first;
            else if (!takes('=')) return std::nullopt;
            if (auto value = quoted()) arguments[name] = *value;
            else if (word().empty()) return std::nullopt;
        }
        return arguments;
    }

    std::string_view rest() const { return text_; }

  private:
    void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(blanks), text_.size())); }

    bool takes(char c) {
        skipBlanks();
        return takesNow(c);
    }

    bool takesNow(char c) {
        if (!text_.starts_with(c)) return false;
        text_.remove_prefix(1);
        return true;
    }

    std::string_view word() {
        skipBlanks();
        const auto end = std::find_if_not(text_.begin(), text_.end(), isOfName);
        const std::string_view word = text_.substr(0, static_cast<std::size_t>(end - text_.begin()));
        text_.remove_prefix(word.size());
        return word;
    }

    /// A text in quotes of either kind, with backslashes before what is meant as it is.
    std::optional<std::string> quoted() {
        skipBlanks();
        const char quote = text_.empty() ? '\0' : text_.front();
        if (quote != '"' && quote != '\'') return std::nullopt;
        std::string value;
        for (text_.remove_prefix(1); !text_.empty(); text_.remove_prefix(1)) {
            if (takesNow(quote)) return value;
            if (text_.size() > 1 && text_.front() == '\\') text_.remove_prefix(1);
            value += text_.front();
        }
        return std::nullopt;
    }

    const Tool& tool_;
    std::string_view text_;
};

/// The tool whose name, as a word of its own, a text ends with; or null.
const Tool* toolAtEnd(std::string_view text, const std::vector<Tool>& tools) {
    const auto tool = std::find_if(tools.begin(), tools.end(), [&](const Tool& known) {
        const std::size_t size = known.name.size();
        return text.ends_with(known.name) && (text.size() == size || !isOfName(text[text.size() - size - 1]));
    });
    return tool == tools.end() ? nullptr : &*tool;
}

/// Whether a text ends in the first word of a line: "list_files", "print(list_files", "api.list_files".
bool endsInFirstWord(std::string_view text) {
    text.remove_prefix(text.rfind('\n') + 1);  // of none, 0
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return std::all_of(text.begin(), text.end(), [](char c) { return isOfName(c) || c == '.' || c == '('; });
}

bool isLineDone(std::string_view rest) {
    return rest.substr(0, rest.find('\n')).find_first_not_of(" \t\r;)") == std::string_view::npos;
}

/// The call whose "(" is at this place in the text.
CodeCall callAt(std::string_view text, std::size_t parenthesis, const std::vector<Tool>& tools) {
    const std::string_view before = text.substr(0, parenthesis);
    const Tool* tool = toolAtEnd(before, tools);
    if (tool == nullptr) return {};
    Arguments reader(*tool, text.substr(parenthesis + 1, longestArguments));
    const auto arguments = reader.read();
    const bool isFirst = endsInFirstWord(before);
    if (!arguments) return {isFirst ? CodeCall::Kind::broken : CodeCall::Kind::none, {}};
    if (arguments->empty() && !(isFirst && isLineDone(reader.rest()))) return {};
    return {CodeCall::Kind::whole, {tool->name, jsonLine(*arguments)}};
}

}  // namespace

CodeCall codeCall(std::string_view text, const std::vector<Tool>& tools) {
    CodeCall found;
    for (std::size_t at = text.find('('); at != std::string_view::npos; at = text.find('(', at + 1)) {
        CodeCall call = callAt(text, at, tools);
        if (call.kind == CodeCall::Kind::whole) return call;
        if (call.kind == CodeCall::Kind::broken) found = std::move(call);
    }
    return found;
}

}  // namespace tapcore
