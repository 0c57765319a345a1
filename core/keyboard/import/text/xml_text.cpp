#include "core/keyboard/import/text/xml_text.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/foundation/characters.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t largest = std::size_t{16} << 20;

enum class ByteOrder { little, big };

/// A file's first bytes, and what they tell: its byte order, or UTF-8 without one. The longer ones come
/// first.
struct Start {
    std::string_view bytes;
    std::optional<ByteOrder> order;
    std::size_t mark;  ///< how many of them are no text
};
constexpr Start starts[] = {
    {"\xEF\xBB\xBF"sv, std::nullopt, 3}, {"\xFF\xFE"sv, ByteOrder::little, 2},
    {"\xFE\xFF"sv, ByteOrder::big, 2},   {"<\0"sv, ByteOrder::little, 0},
    {"\0<"sv, ByteOrder::big, 0},        {""sv, std::nullopt, 0},
};
constexpr std::array wideMarks = {"\xFF\xFE\0\0"sv, "\0\0\xFE\xFF"sv};

unsigned unitAt(std::string_view bytes, std::size_t at, ByteOrder order) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return order == ByteOrder::big ? first * 256U + second : second * 256U + first;
}

bool isHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(unsigned unit) { return isSurrogate(unit) && !isHighSurrogate(unit); }

std::string fromUtf16(std::string_view bytes, ByteOrder order) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        if (at + 1 == bytes.size()) failAt(text, text.size(), "the file ends within a character");
        const unsigned unit = unitAt(bytes, at, order);
        if (!isSurrogate(unit)) {
            text += utf8(unit);
            continue;
        }
        const unsigned low = at + 3 < bytes.size() ? unitAt(bytes, at + 2, order) : 0;
        if (!isHighSurrogate(unit) || !isLowSurrogate(low))
            failAt(text, text.size(), "half a surrogate pair");
        text += utf8(0x10000 + (unit - 0xD800) * 0x400 + (low - 0xDC00));
        at += 2;
    }
    return text;
}

/// The value of `encoding` in the declaration at the start of a text, lower-cased; "" when it has none.
std::string declaredEncoding(std::string_view text) {
    if (!text.starts_with("<?xml")) return "";
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const auto name = declaration.find("encoding");
    const auto quote = declaration.find_first_of("\"'", name);
    if (name == std::string_view::npos || quote == std::string_view::npos) return "";
    const std::string_view value = declaration.substr(quote + 1);
    return lowercased(value.substr(0, value.find(declaration[quote])));
}

void requireReadableEncoding(std::string_view text) {
    constexpr std::array readable = {""sv,       "utf-8"sv,    "utf8"sv,    "us-ascii"sv,
                                     "utf-16"sv, "utf-16le"sv, "utf-16be"sv};
    const std::string declared = declaredEncoding(text);
    if (std::find(readable.begin(), readable.end(), declared) == readable.end())
        failAt(text, 0, "the encoding " + repairedUtf8(declared) + " is not read; save the file as UTF-8");
}

}  // namespace

void failAt(std::string_view text, std::size_t offset, std::string_view why) {
    throw XmlError(placeIn(text, offset) + ": " + std::string(why));
}

std::string xmlText(std::string_view bytes) {
    if (bytes.size() > largest) throw XmlError("larger than 16 MiB");
    for (const std::string_view mark : wideMarks)
        if (bytes.starts_with(mark)) failAt("", 0, "the encoding UTF-32 is not read; save the file as UTF-8");
    const Start& start = *std::find_if(std::begin(starts), std::end(starts),
                                       [&](const Start& known) { return bytes.starts_with(known.bytes); });
    bytes.remove_prefix(start.mark);
    std::string text = start.order ? fromUtf16(bytes, *start.order) : std::string(bytes);
    requireReadableEncoding(text);
    if (const auto bad = firstInvalidUtf8(text); bad != std::string_view::npos)
        failAt(text, bad, "not UTF-8");
    if (const auto nul = text.find('\0'); nul != std::string_view::npos) failAt(text, nul, "a NUL character");
    return text;
}

}  // namespace tapcore
