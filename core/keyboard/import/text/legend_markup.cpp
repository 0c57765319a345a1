#include "core/keyboard/import/text/legend_markup.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

constexpr std::string_view tags[] = {"a",     "b",    "big",    "br",  "center", "code", "div", "em", "font",
                                     "h1",    "h2",   "h3",     "h4",  "i",      "img",  "kbd", "p",  "s",
                                     "small", "span", "strong", "sub", "sup",    "svg",  "tt",  "u"};

constexpr std::pair<std::string_view, std::string_view> names[] = {
    {"amp", "&"},    {"lt", "<"},     {"gt", ">"},     {"quot", "\""},  {"apos", "'"},   {"nbsp", " "},
    {"ast", "*"},    {"plus", "+"},   {"equals", "="}, {"num", "#"},    {"percnt", "%"}, {"dollar", "$"},
    {"excl", "!"},   {"quest", "?"},  {"comma", ","},  {"period", "."}, {"colon", ":"},  {"semi", ";"},
    {"sol", "/"},    {"bsol", "\\"},  {"lpar", "("},   {"rpar", ")"},   {"lsqb", "["},   {"lbrack", "["},
    {"rsqb", "]"},   {"rbrack", "]"}, {"lcub", "{"},   {"lbrace", "{"}, {"rcub", "}"},   {"rbrace", "}"},
    {"verbar", "|"}, {"vert", "|"},   {"grave", "`"},  {"Hat", "^"},    {"lowbar", "_"}, {"commat", "@"},
    {"larr", "←"},   {"uarr", "↑"},   {"rarr", "→"},   {"darr", "↓"},   {"lArr", "⇐"},   {"uArr", "⇑"},
    {"rArr", "⇒"},   {"dArr", "⇓"},   {"crarr", "↵"},  {"harr", "↔"},   {"varr", "↕"},   {"sect", "§"},
    {"plusmn", "±"}, {"para", "¶"},   {"deg", "°"},    {"pound", "£"},  {"euro", "€"},   {"yen", "¥"},
    {"cent", "¢"},   {"curren", "¤"}, {"brvbar", "¦"}, {"not", "¬"},    {"micro", "µ"},  {"middot", "·"},
    {"times", "×"},  {"divide", "÷"}, {"laquo", "«"},  {"raquo", "»"},  {"iexcl", "¡"},  {"iquest", "¿"},
    {"acute", "´"},  {"uml", "¨"},    {"szlig", "ß"},  {"auml", "ä"},   {"ouml", "ö"},   {"uuml", "ü"},
    {"Auml", "Ä"},   {"Ouml", "Ö"},   {"Uuml", "Ü"},   {"aring", "å"},  {"Aring", "Å"},  {"aelig", "æ"},
    {"AElig", "Æ"},  {"oslash", "ø"}, {"Oslash", "Ø"}, {"eacute", "é"}, {"egrave", "è"}, {"agrave", "à"},
    {"ugrave", "ù"}, {"ccedil", "ç"}, {"Ccedil", "Ç"}, {"ntilde", "ñ"}, {"Ntilde", "Ñ"}, {"sup2", "²"},
    {"sup3", "³"},   {"ldquo", "“"},  {"rdquo", "”"},  {"hellip", "…"}, {"ndash", "–"},  {"mdash", "—"},
};

constexpr std::size_t longestTag = 6;

/// A character of a text, looked for from further on each time, so that the text is walked once in all.
class Ahead {
  public:
    Ahead(std::string_view text, char wanted) : text_(text), wanted_(wanted), next_(text.find(wanted)) {}

    /// Where the next one is; npos for none.
    std::size_t from(std::size_t at) {
        if (next_ < at) next_ = text_.find(wanted_, at);
        return next_;
    }

  private:
    std::string_view text_;
    char wanted_;
    std::size_t next_;
};

bool isTagName(std::string_view tag) {
    if (tag.starts_with('/')) tag.remove_prefix(1);
    tag = tag.substr(0, longestTag + 1);
    const std::string name = lowercased(tag.substr(0, tag.find_first_of(" \t/")));
    return std::find(std::begin(tags), std::end(tags), name) != std::end(tags);
}

std::optional<std::string> numbered(std::string_view digits) {
    const bool isHex = digits.starts_with('x') || digits.starts_with('X');
    if (isHex) digits.remove_prefix(1);
    std::uint32_t scalar = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), scalar, isHex ? 16 : 10);
    const bool isScalar = scalar > 0 && scalar < 0x110000 && (scalar < 0xD800 || scalar > 0xDFFF);
    if (error != std::errc() || end != digits.data() + digits.size() || !isScalar) return std::nullopt;
    return utf8(scalar);
}

/// What the reference between "&" and ";" means.
std::optional<std::string> referred(std::string_view name) {
    if (name.starts_with('#')) return numbered(name.substr(1));
    const auto known = std::find_if(std::begin(names), std::end(names),
                                    [&](const auto& entry) { return entry.first == name; });
    return known == std::end(names) ? std::nullopt : std::optional(std::string(known->second));
}

}  // namespace

std::string plainLegend(std::string_view legend) {
    constexpr auto none = std::string_view::npos;
    Ahead tagEnd(legend, '>'), referenceEnd(legend, ';');
    const auto inside = [&](std::size_t at, std::size_t end) { return legend.substr(at + 1, end - at - 1); };
    std::string text;
    for (std::size_t at = 0; at < legend.size(); ++at) {
        const std::size_t end = legend[at] == '<'   ? tagEnd.from(at)
                                : legend[at] == '&' ? referenceEnd.from(at)
                                                    : none;
        const bool isTag = end != none && legend[at] == '<' && isTagName(inside(at, end));
        const auto character = end != none && legend[at] == '&' ? referred(inside(at, end)) : std::nullopt;
        if (character) text += *character;
        else if (!isTag) text += legend[at];
        if (character || isTag) at = end;
    }
    return text;
}

}  // namespace tapcore
