#include "core/keyboard/import/text/xml_entities.h"

#include <array>
#include <charconv>
#include <utility>

#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

constexpr int deepest = 16;
constexpr std::string_view space = " \t\r\n";

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> predefined = {{
    {"lt", "<"},
    {"gt", ">"},
    {"amp", "&"},
    {"quot", "\""},
    {"apos", "'"},
}};

/// The name that a reference at the start of `text` ("&name;") has. Throws when it is not a reference.
std::string_view referenceName(std::string_view text) {
    constexpr std::size_t longest = 100;
    const std::string_view start = text.substr(0, longest);
    const auto end = start.find(';');
    if (end == std::string_view::npos || end == 1 || start.substr(1, end).find_first_of(" \t\r\n&\"'") < end)
        throw XmlEntities::Error("\"&\" starts no reference");
    return text.substr(1, end - 1);
}

/// The character that "#x1F600" or "#27" names.
std::string characterNamed(std::string_view name) {
    const bool hexadecimal = name.starts_with("#x");
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    unsigned scalar = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, scalar, hexadecimal ? 16 : 10);
    if (error != std::errc() || stop != end || scalar > 0x10FFFF || isSurrogate(scalar))
        throw XmlEntities::Error("&" + std::string(name) + "; is not a character");
    return utf8(scalar);
}

/// A declared text as it is kept: references to characters count at once, those to entities when it is used.
std::string withCharacters(std::string_view value) {
    std::string result;
    while (!value.empty()) {
        const auto plain = value.find("&#");
        result.append(value.substr(0, plain));
        if (plain == std::string_view::npos) break;
        value.remove_prefix(plain);
        const std::string_view name = referenceName(value);
        result += characterNamed(name);
        value.remove_prefix(name.size() + 2);
    }
    return result;
}

/// The size of the piece at the start of a DOCTYPE's own declarations: a comment, an instruction, a
/// declaration, or one character between them.
std::size_t pieceSize(std::string_view text) {
    const auto upTo = [&](std::string_view end) {
        const auto at = text.find(end);
        return at == std::string_view::npos ? text.size() : at + end.size();
    };
    if (text.starts_with("<!--")) return upTo("-->");
    if (text.starts_with("<?")) return upTo("?>");
    if (!text.starts_with("<!")) return 1;
    char quote = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (quote != 0 ? text[at] == quote : text[at] == '"' || text[at] == '\'')
            quote = quote != 0 ? '\0' : text[at];
        else if (quote == 0 && text[at] == '>') return at + 1;
    }
    return text.size();
}

/// Where a DOCTYPE's own declarations start: behind the first "[" outside quotes.
std::string_view ownDeclarations(std::string_view doctype) {
    char quote = 0;
    for (std::size_t at = 0; at < doctype.size(); ++at) {
        const char c = doctype[at];
        if (quote != 0 ? c == quote : c == '"' || c == '\'') quote = quote != 0 ? '\0' : c;
        else if (quote == 0 && c == '[') return doctype.substr(at + 1);
    }
    return {};
}

void skipSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(space), text.size()));
}

}  // namespace

XmlEntities::XmlEntities(std::string_view doctype) {
    constexpr std::string_view entity = "<!ENTITY";
    for (std::string_view left = ownDeclarations(doctype); !left.empty();) {
        const std::string_view piece = left.substr(0, pieceSize(left));
        if (piece.starts_with(entity)) declare(piece.substr(entity.size()));
        left.remove_prefix(piece.size());
    }
}

void XmlEntities::declare(std::string_view declaration) {
    skipSpace(declaration);
    const std::string_view name = declaration.substr(0, declaration.find_first_of(space));
    if (name == "%") return;  // for use within the DOCTYPE alone
    declaration.remove_prefix(name.size());
    skipSpace(declaration);
    if (declaration.starts_with("SYSTEM") || declaration.starts_with("PUBLIC")) {
        texts_.emplace(name, std::nullopt);
        return;
    }
    const auto end = declaration.empty() ? std::string_view::npos : declaration.find(declaration[0], 1);
    if (end == std::string_view::npos || (declaration[0] != '"' && declaration[0] != '\''))
        throw Error("the entity " + std::string(name) + " is declared without a text");
    texts_.emplace(name, withCharacters(declaration.substr(1, end - 1)));  // the first declaration counts
}

std::string XmlEntities::expanded(std::string_view value) {
    std::string result;
    expand(value, 0, result);
    return result;
}

void XmlEntities::expand(std::string_view value, int depth, std::string& result) {
    while (!value.empty()) {
        if (value[0] != '&') {
            result += space.find(value[0]) == std::string_view::npos ? value[0] : ' ';
            value.remove_prefix(1);
            continue;
        }
        const std::string_view name = referenceName(value);
        if (name[0] == '#') result += characterNamed(name);
        else expandNamed(name, depth, result);
        value.remove_prefix(name.size() + 2);
    }
}

void XmlEntities::expandNamed(std::string_view name, int depth, std::string& result) {
    for (const auto& [known, text] : predefined)
        if (known == name) {
            result += text;
            return;
        }
    const auto found = texts_.find(name);
    const std::string reference = "&" + std::string(name) + ";";
    if (found == texts_.end()) throw Error(reference + " is not declared");
    if (!found->second) throw Error(reference + " refers to another file, and none is ever loaded");
    const std::string& text = *found->second;
    if (depth == deepest || text.size() >= charactersLeft_) throw Error(reference + " expands too far");
    charactersLeft_ -= text.size() + 1;
    expand(text, depth + 1, result);
}

}  // namespace tapcore
