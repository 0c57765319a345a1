#include "core/keyboard/import/text/lenient_json.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "core/foundation/ascii.h"
#include "core/foundation/characters.h"
#include "core/foundation/json_fields.h"
#include "core/foundation/text_pieces.h"
#include "core/foundation/utf8.h"

namespace tapcore {
namespace {

using nlohmann::json;

constexpr int deepest = 64;

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isWordStart(char c) { return isAsciiLetter(c) || c == '_' || c == '$'; }
bool isWord(char c) { return isWordStart(c) || isDigit(c); }
bool isNumberPart(char c) { return isDigit(c) || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E'; }

std::optional<std::uint32_t> hexDigit(char c) {
    if (isDigit(c)) return static_cast<std::uint32_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint32_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<std::uint32_t>(c - 'A' + 10);
    return std::nullopt;
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    json document() {
        json values = json::array();
        skip();
        bool isList = false;
        while (at_ < text_.size()) {
            values.push_back(value());
            if (!take(',')) break;
            isList = true;
        }
        if (at_ < text_.size()) fail("unexpected " + found());
        if (values.empty()) fail("nothing but white space");
        return isList || values.size() != 1 ? values : std::move(values.front());
    }

  private:
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool startsWith(std::string_view piece) const { return text_.substr(at_).starts_with(piece); }

    /// Past white space and comments.
    void skip() {
        while (at_ < text_.size()) {
            if (isSpace(text_[at_])) ++at_;
            else if (startsWith("//")) at_ = std::min(text_.find('\n', at_), text_.size());
            else if (startsWith("/*")) skipBlockComment();
            else return;
        }
    }

    void skipBlockComment() {
        const std::size_t end = text_.find("*/", at_ + 2);
        if (end == std::string_view::npos) fail("the comment does not end");
        at_ = end + 2;
    }

    /// Past a character and what may follow it, if it is here.
    bool take(char c) {
        if (at_ >= text_.size() || text_[at_] != c) return false;
        ++at_;
        skip();
        return true;
    }

    json value() {
        const char c = peek();
        if (c == '[') return nested(&Reader::array);
        if (c == '{') return nested(&Reader::object);
        if (c == '"' || c == '\'') return string();
        if (isNumberPart(c) && !isWordStart(c)) return number();
        return word();
    }

    json nested(json (Reader::*read)()) {
        if (depth_ == deepest) fail("nested more than " + std::to_string(deepest) + " deep");
        ++depth_;
        ++at_;
        skip();
        json result = (this->*read)();
        --depth_;
        return result;
    }

    json array() {
        json result = json::array();
        while (!take(']')) {
            result.push_back(value());
            if (!take(',') && peek() != ']') fail("expected , or ] but found " + found());
        }
        return result;
    }

    json object() {
        json result = json::object();
        while (!take('}')) {
            std::string name = memberName();
            if (!take(':')) fail("expected : but found " + found());
            result[std::move(name)] = value();
            if (!take(',') && peek() != '}') fail("expected , or } but found " + found());
        }
        return result;
    }

    std::string memberName() {
        if (peek() == '"' || peek() == '\'') return string();
        if (!isWordStart(peek())) fail("expected a member's name but found " + found());
        return std::string(takeWhile(isWord));
    }

    std::string_view takeWhile(bool (*belongs)(char)) {
        const std::size_t start = at_;
        while (at_ < text_.size() && belongs(text_[at_])) ++at_;
        const std::string_view taken = text_.substr(start, at_ - start);
        skip();
        return taken;
    }

    json word() {
        if (!isWordStart(peek())) fail("expected a value but found " + found());
        const std::size_t start = at_;
        const std::string_view name = takeWhile(isWord);
        if (name == "true") return true;
        if (name == "false") return false;
        if (name == "null") return nullptr;
        at_ = start;
        fail(std::string(name.substr(0, 40)) + " is not a value");
    }

    json number() {
        const std::size_t start = at_;
        std::string digits(takeWhile(isNumberPart));
        if (digits.front() == '+') digits.erase(0, 1);
        const std::size_t first = digits.starts_with('-') ? 1 : 0;
        if (digits.substr(first).starts_with('.')) digits.insert(first, "0");
        if (digits.ends_with('.')) digits += '0';
        json result = json::parse(digits, nullptr, false);
        if (result.is_discarded()) {
            at_ = start;
            fail("not a number, or too large a one");
        }
        return result;
    }

    std::string string() {
        const std::size_t start = at_;
        const char quote = text_[at_++];
        std::string result;
        while (at_ < text_.size() && text_[at_] != quote && text_[at_] != '\n') {
            if (text_[at_] == '\\') appendEscaped(result);
            else result += text_[at_++];
        }
        if (peek() != quote) {
            at_ = start;
            fail("the string does not end");
        }
        ++at_;
        skip();
        return result;
    }

    void appendEscaped(std::string& text) {
        ++at_;
        constexpr std::string_view letters = "nrtbf";
        constexpr std::string_view meanings = "\n\r\t\b\f";
        const char c = peek();
        if (c == 'u') {
            text += utf8(escapedScalar());
            return;
        }
        const std::size_t known = letters.find(c);
        const bool isItself = c == '"' || c == '\'' || c == '\\' || c == '/';
        if (known == std::string_view::npos && !isItself) fail("unknown escape");
        text += isItself ? c : meanings[known];
        ++at_;
    }

    /// What "uXXXX" means, of which two may make one; half of a pair is U+FFFD.
    std::uint32_t escapedScalar() {
        const std::uint32_t first = escapedUnit();
        if (first < 0xD800 || first > 0xDFFF) return first;
        constexpr std::uint32_t replacement = 0xFFFD;
        if (first > 0xDBFF || !startsWith("\\u")) return replacement;
        ++at_;
        const std::uint32_t second = escapedUnit();
        if (second < 0xDC00 || second > 0xDFFF) return replacement;
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    }

    std::uint32_t escapedUnit() {
        std::uint32_t unit = 0;
        for (std::size_t i = 1; i <= 4; ++i) {
            const auto digit = at_ + i < text_.size() ? hexDigit(text_[at_ + i]) : std::nullopt;
            if (!digit) fail("four hexadecimal digits must follow \\u");
            unit = unit * 16 + *digit;
        }
        at_ += 5;
        return unit;
    }

    std::string found() const {
        if (at_ >= text_.size()) return "the end";
        return "\"" + std::string(firstCharacters(text_.substr(at_, 32), 1)) + "\"";
    }

    [[noreturn]] void fail(const std::string& why) const {
        throw JsonError(placeIn(text_, at_) + ": " + why);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace

json parseLenientJson(std::string_view text) {
    if (firstInvalidUtf8(text) == std::string_view::npos) return Reader(text).document();
    return Reader(repairedUtf8(text)).document();
}

}  // namespace tapcore
