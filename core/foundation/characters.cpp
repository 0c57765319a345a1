#include "core/foundation/characters.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/foundation/icu.h"
#include "core/foundation/owned.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

/// Calls `visit(end)` with each place where a character ends, until it returns false.
template <class Visit>
void walkCharacters(std::string_view text, Visit visit) {
    if (isAscii(text)) {
        for (std::size_t at = 0; at < text.size();) {
            at += text.substr(at, 2) == "\r\n" ? 2 : 1;
            if (!visit(at)) return;
        }
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    const Owned<UBreakIterator, ubrk_close> breaks(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    const Owned<UText, utext_close> source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    ubrk_setUText(breaks.get(), source.get(), &status);
    requireIcu(status, "no character boundaries");
    ubrk_first(breaks.get());
    for (auto end = ubrk_next(breaks.get()); end != UBRK_DONE; end = ubrk_next(breaks.get()))
        if (!visit(static_cast<std::size_t>(end))) return;
}

/// The first scalar of a character, as ICU has it.
UChar32 codePoint(std::string_view character) { return static_cast<UChar32>(scalarAt(character, 0).value); }

/// Whether a scalar is white space.
bool isSpace(const Scalar& scalar) { return u_isUWhiteSpace(static_cast<UChar32>(scalar.value)); }

using CaseFunction = decltype(&ucasemap_utf8ToUpper);

std::string cased(std::string_view text, CaseFunction convert) {
    UErrorCode status = U_ZERO_ERROR;
    const Owned<UCaseMap, ucasemap_close> map(ucasemap_open("", 0, &status));
    requireIcu(status, "no case mapping");
    std::string result(text.size() * 3 + 1, '\0');
    const auto size = convert(map.get(), result.data(), static_cast<std::int32_t>(result.size()), text.data(),
                              static_cast<std::int32_t>(text.size()), &status);
    requireIcu(status, "no case mapping");
    result.resize(static_cast<std::size_t>(size));
    return result;
}

constexpr std::string_view betweenNames = " + ";

std::string mappedAscii(std::string_view text, char first, char last, int shift) {
    std::string result(text);
    for (char& c : result)
        if (c >= first && c <= last) c = static_cast<char>(c + shift);
    return result;
}

std::string normalized(std::string_view text, decltype(&icu::Normalizer2::getNFCInstance) instance) {
    if (isAscii(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = instance(status);
    requireIcu(status, "no normalization");
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    form->normalizeUTF8(0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink,
                        nullptr, status);
    requireIcu(status, "no normalization");
    return result;
}

}  // namespace

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    walkCharacters(text, [&](std::size_t) {
        ++count;
        return true;
    });
    return count;
}

std::size_t columnCount(std::string_view text) {
    std::size_t count = 0;
    for (const std::string_view character : characters(text)) {
        const int width = u_getIntPropertyValue(codePoint(character), UCHAR_EAST_ASIAN_WIDTH);
        count += width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
    }
    return count;
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> result;
    std::size_t start = 0;
    walkCharacters(text, [&](std::size_t end) {
        result.push_back(text.substr(start, end - start));
        start = end;
        return true;
    });
    return result;
}

std::string_view firstCharacters(std::string_view text, std::size_t limit) {
    if (limit == 0) return text.substr(0, 0);
    std::size_t count = 0;
    std::size_t stop = 0;
    walkCharacters(text, [&](std::size_t end) {
        stop = end;
        return ++count < limit;
    });
    return text.substr(0, stop);
}

bool isSingleCharacter(std::string_view text) {
    return !text.empty() && firstCharacters(text, 1).size() == text.size();
}

bool isLetter(std::string_view character) {
    return !character.empty() && u_hasBinaryProperty(codePoint(character), UCHAR_ALPHABETIC);
}

bool isNumber(std::string_view character) {
    return !character.empty() && u_getIntPropertyValue(codePoint(character), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isControl(std::string_view character) {
    return !character.empty() && u_charType(codePoint(character)) == U_CONTROL_CHAR;
}

bool isMark(std::string_view character) {
    return !character.empty() && (U_GET_GC_MASK(codePoint(character)) & U_GC_M_MASK) != 0;
}

bool isVisible(std::string_view character) { return !character.empty() && u_isgraph(codePoint(character)); }

std::string uppercased(std::string_view text) {
    return isAscii(text) ? mappedAscii(text, 'a', 'z', 'A' - 'a') : cased(text, ucasemap_utf8ToUpper);
}

std::string lowercased(std::string_view text) {
    return isAscii(text) ? mappedAscii(text, 'A', 'Z', 'a' - 'A') : cased(text, ucasemap_utf8ToLower);
}

std::string caseFolded(std::string_view text) {
    if (isAscii(text)) return mappedAscii(text, 'A', 'Z', 'a' - 'A');
    constexpr std::size_t piece = 1 << 24;  // ICU counts in 32 bits
    std::string result;
    while (!text.empty()) {
        std::size_t size = std::min(piece, text.size());
        while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) ++size;
        result += cased(text.substr(0, size), ucasemap_utf8FoldCase);
        text.remove_prefix(size);
    }
    return result;
}

std::string_view trimmedWhiteSpace(std::string_view text) {
    while (!text.empty()) {
        const Scalar first = scalarAt(text, 0);
        if (!isSpace(first)) break;
        text.remove_prefix(first.size);
    }
    while (!text.empty()) {
        std::size_t start = text.size() - 1;
        while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
        if (!isSpace(scalarAt(text, start))) break;
        text = text.substr(0, start);
    }
    return text;
}

std::string characterName(std::string_view character) {
    std::string names;
    while (!character.empty()) {
        const Scalar scalar = scalarAt(character, 0);
        char name[128];  // the longest has 88 bytes
        UErrorCode status = U_ZERO_ERROR;
        u_charName(static_cast<UChar32>(scalar.value), U_EXTENDED_CHAR_NAME, name, sizeof name, &status);
        requireIcu(status, "no character names");
        if (!names.empty()) names += betweenNames;
        names += lowercased(name);
        character.remove_prefix(scalar.size);
    }
    return names;
}

std::optional<std::string> namedCharacter(std::string_view name) {
    std::string result;
    while (true) {
        const std::size_t end = std::min(name.find(betweenNames), name.size());
        UErrorCode status = U_ZERO_ERROR;
        const UChar32 scalar =
            u_charFromName(U_EXTENDED_CHAR_NAME, std::string(name.substr(0, end)).c_str(), &status);
        if (U_FAILURE(status)) return std::nullopt;
        result += utf8(static_cast<char32_t>(scalar));
        if (end == name.size()) return result;
        name.remove_prefix(end + betweenNames.size());
    }
}

std::string composed(std::string_view text) { return normalized(text, icu::Normalizer2::getNFCInstance); }

std::string decomposed(std::string_view text) { return normalized(text, icu::Normalizer2::getNFDInstance); }

bool hasControlCharacter(std::string_view text) {
    unsigned char before = 0;
    return std::any_of(text.begin(), text.end(), [&](unsigned char byte) {
        const bool isLate = std::exchange(before, byte) == 0xC2 && byte >= 0x80 && byte < 0xA0;
        return isLate || byte < ' ' || byte == 0x7F;
    });
}

}  // namespace tapcore
