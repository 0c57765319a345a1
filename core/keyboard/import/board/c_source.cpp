#include "core/keyboard/import/board/c_source.h"

#include <algorithm>
#include <charconv>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/keyboard/import/board/keymap.h"

namespace tapcore {
namespace {

/// The most steps from a name to what it means, so that a circle of names ends.
constexpr int mostSteps = 8;

/// What is longer is neither a name nor a number, and is not read again for each use.
constexpr std::size_t longestName = 256;

constexpr std::int64_t largestNumber = 65535;

/// A line that ends with a backslash goes on in the next one.
std::string withJoinedLines(std::string_view text) {
    std::string joined;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("\\\n")) at += 1;
        else if (rest.starts_with("\\\r\n")) at += 2;
        else joined += text[at];
    }
    return joined;
}

std::string withoutComments(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t skipped = skippedLength(text.substr(at));
        plain += skipped > 0 ? ' ' : text[at];
        at += std::max<std::size_t>(skipped, 1);
    }
    return plain;
}

/// The name or number that a text begins with.
std::string_view firstWord(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isWordPart) - text.begin();
    return text.substr(0, static_cast<std::size_t>(end));
}

/// Of a definition with arguments: the name that they are passed on to, if nothing else is done with them.
std::string_view passedTo(std::string_view rest) {
    constexpr std::string_view all = "(...)";
    if (!rest.starts_with(all)) return {};
    rest = trimmedWhiteSpace(rest.substr(all.size()));
    const std::string_view name = firstWord(rest);
    return trimmedWhiteSpace(rest.substr(name.size())) == "(__VA_ARGS__)" ? name : std::string_view();
}

/// Takes up "NAME what it means".
void define(std::string_view line, CSource& source) {
    const std::string_view name = firstWord(line);
    const std::string_view rest = line.substr(name.size());
    const std::string_view meaning = rest.starts_with('(') ? passedTo(rest) : trimmedWhiteSpace(rest);
    const auto [known, isNew] = source.defines.emplace(name, meaning);
    if (!isNew && known->second != meaning) known->second.clear();
}

void takeDirective(std::string_view line, CSource& source) {
    const std::string_view directive = trimmedWhiteSpace(line.substr(1));
    const std::string_view word = firstWord(directive);
    if (word == "define") define(trimmedWhiteSpace(directive.substr(word.size())), source);
    else if (word != "pragma") source.text += "#\n";
}

void takeLines(std::string_view text, CSource& source) {
    while (!text.empty()) {
        const std::string_view line = takePiece(text, '\n');
        if (const auto trimmed = trimmedWhiteSpace(line); trimmed.starts_with('#'))
            takeDirective(trimmed, source);
        else source.text.append(line).push_back('\n');
    }
}

/// Takes up what is between the brackets of an enum. After a condition the next number is not known.
void takeEnumerators(std::string_view list, CSource& source) {
    std::optional<std::int64_t> next = 0;
    for (const std::string& part : splitAtCommas(list)) {
        const bool isConditional = part.find('#') != std::string::npos;
        const std::string_view text = trimmedWhiteSpace(std::string_view(part).substr(part.rfind('#') + 1));
        const std::string_view name = firstWord(text);
        const auto equals = text.find('=');
        if (isConditional) next.reset();
        if (equals != std::string_view::npos) {
            const std::string_view value = trimmedWhiteSpace(text.substr(equals + 1));
            next = value == "-1" ? -1 : source.numberOf(value);
        }
        const auto [known, isNew] = source.enumerators.emplace(name, next);
        if (!isNew && known->second != next) known->second.reset();
        if (next) ++*next;
    }
}

void takeEnums(CSource& source) {
    const std::string_view text = source.text;
    const auto isHead = [](char c) {
        return isWordPart(c) || c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == ':';
    };
    for (std::size_t at = text.find("enum"); at < text.size(); at = text.find("enum", at)) {
        const std::size_t after = at + 4;
        const bool isWhole =
            (at == 0 || !isWordPart(text[at - 1])) && (after == text.size() || !isWordPart(text[after]));
        at = after;
        if (!isWhole) continue;
        while (at < text.size() && isHead(text[at])) ++at;
        if (at == text.size() || text[at] != '{') continue;
        const std::size_t end = text.find('}', at);
        if (end == std::string_view::npos) return;
        takeEnumerators(text.substr(at + 1, end - at - 1), source);
        at = end;
    }
}

/// A number as C writes it: `0`, `0x1F`, `017`, `2u`.
std::optional<std::int64_t> integerIn(std::string_view text) {
    while (!text.empty() && std::string_view("uUlL").find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    int base = text.size() > 1 && text[0] == '0' ? 8 : 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number, base);
    if (read.ec != std::errc() || read.ptr != end || number > largestNumber) return std::nullopt;
    return number;
}

}  // namespace

std::size_t skippedLength(std::string_view text) {
    const auto past = [&](std::string_view end, std::size_t from) {
        const auto at = text.find(end, from);
        return at == std::string_view::npos ? text.size() : at + end.size();
    };
    if (text.starts_with("//")) return std::min(text.find('\n'), text.size());
    if (text.starts_with("/*")) return past("*/", 2);
    if (!text.starts_with('"') && !text.starts_with('\'')) return 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\n') return at;
        if (text[at] == text[0]) return at + 1;
        if (text[at] == '\\') ++at;
    }
    return text.size();
}

bool isWordPart(char c) { return isAsciiLetter(c) || isDigit(c) || c == '_'; }

std::string_view inBrackets(std::string_view text, std::size_t open) {
    std::size_t depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(' || text[at] == '{' || text[at] == '[') ++depth;
        const bool closes = text[at] == ')' || text[at] == '}' || text[at] == ']';
        if (closes && --depth == 0) return text.substr(open + 1, at - open - 1);
    }
    throw KeymapError("a bracket of the keymap is not closed");
}

std::string_view withoutBrackets(std::string_view text) {
    text = trimmedWhiteSpace(text);
    for (int times = 0; times < mostSteps && text.starts_with('('); ++times) {
        const std::string_view inside = inBrackets(text, 0);
        if (inside.size() + 2 != text.size()) break;
        text = trimmedWhiteSpace(inside);
    }
    return text;
}

std::vector<std::string> splitAtCommas(std::string_view list) {
    std::vector<std::string> parts(1);
    int depth = 0;
    for (const char c : list) {
        if (c == '(' || c == '{') ++depth;
        if (c == ')' || c == '}') --depth;
        if (c == ',' && depth == 0) parts.emplace_back();
        else parts.back() += c;
    }
    for (std::string& part : parts) part = trimmedWhiteSpace(std::string(part));
    if (parts.back().empty()) parts.pop_back();
    return parts;
}

std::string CSource::replaced(std::string_view name) const {
    std::string_view word = withoutBrackets(name);
    for (int step = 0; step < mostSteps; ++step) {
        const auto defined = defines.find(word);
        if (defined == defines.end() || defined->second.empty()) break;
        if (defined->second.size() > longestName) break;
        word = withoutBrackets(defined->second);
    }
    return std::string(word);
}

std::optional<std::int64_t> CSource::numberOf(std::string_view number) const {
    const std::string word = replaced(number);
    const auto known = enumerators.find(word);
    return known == enumerators.end() ? integerIn(word) : known->second;
}

CSource readCSource(std::string_view text) {
    CSource source;
    takeLines(withoutComments(withJoinedLines(text)), source);
    takeEnums(source);
    return source;
}

}  // namespace tapcore
