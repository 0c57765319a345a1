#include "drawing/svg_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "core/foundation/utf8.h"

namespace drawing {
namespace {

/// A point in hundredths, so that differences between rounded places are exact.
struct Hundredths {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

constexpr int pathDecimals = 2;

/// What is no number becomes 0.
std::int64_t scaled(double value, int decimals) {
    constexpr double furthest = 1e12;
    return std::isnan(value)
               ? 0
               : std::llround(std::clamp(value * std::pow(10.0, decimals), -furthest, furthest));
}

Hundredths inHundredths(Point point) {
    return {scaled(point.x, pathDecimals), scaled(point.y, pathDecimals)};
}

std::string decimal(std::int64_t units, int decimals) {
    std::string digits = std::to_string(std::abs(units));
    const auto places = static_cast<std::size_t>(decimals);
    if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
    digits.insert(digits.size() - places, 1, '.');
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return units < 0 ? "-" + digits : digits;
}

/// Writes path data, knowing where the pen stands and where the contour began.
class PathWriter {
  public:
    void step(Path::Step step, const Point* to) {
        switch (step) {
            case Path::Step::move:
                return moveTo(inHundredths(to[0]));
            case Path::Step::line:
                return lineTo(inHundredths(to[0]));
            case Path::Step::curve:
                return curveTo(inHundredths(to[0]), inHundredths(to[1]), inHundredths(to[2]));
            case Path::Step::close:
                text_ += 'z';
                pen_ = start_;
                return;
        }
    }

    std::string text() && { return std::move(text_); }

  private:
    void moveTo(Hundredths to) {
        text_ += 'M' + decimal(to.x, pathDecimals);
        number(to.y);
        pen_ = start_ = to;
    }

    void lineTo(Hundredths to) {
        if (to.y == pen_.y) text_ += 'h' + decimal(to.x - pen_.x, pathDecimals);
        else if (to.x == pen_.x) text_ += 'v' + decimal(to.y - pen_.y, pathDecimals);
        else pair('l', to);
        pen_ = to;
    }

    void curveTo(Hundredths handle1, Hundredths handle2, Hundredths to) {
        pair('c', handle1);
        pair(' ', handle2);
        pair(' ', to);
        pen_ = to;
    }

    /// A point, relative to the pen.
    void pair(char before, Hundredths to) {
        const std::string x = decimal(to.x - pen_.x, pathDecimals);
        if (before != ' ' || x[0] != '-') text_ += before;
        text_ += x;
        number(to.y - pen_.y);
    }

    /// A number after another; a sign parts them too.
    void number(std::int64_t units) {
        if (units >= 0) text_ += ' ';
        text_ += decimal(units, pathDecimals);
    }

    std::string text_;
    Hundredths pen_;
    Hundredths start_;
};

bool isAllowedControl(char c) { return c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

std::string svgNumber(double value, int decimals) { return decimal(scaled(value, decimals), decimals); }

std::string svgPath(const Path& path) {
    PathWriter writer;
    walk(path, [&](Path::Step step, const Point* to) { writer.step(step, to); });
    return std::move(writer).text();
}

std::string svgTransform(const Transform& transform) {
    if (transform == Transform{}) return "";
    const std::string place = svgNumber(transform.dx, 4) + ' ' + svgNumber(transform.dy, 4) + ')';
    if (transform == Transform::moved(transform.dx, transform.dy)) return "translate(" + place;
    std::string text = "matrix(";
    for (const double part : {transform.xx, transform.yx, transform.xy, transform.yy})
        text += svgNumber(part, 6) + ' ';
    return text + place;
}

std::string svgColour(const Colour& colour) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const double part : {colour.red, colour.green, colour.blue}) {
        const auto byte = static_cast<unsigned>(std::lround((part > 0 ? std::min(part, 1.0) : 0.0) * 255));
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return text;
}

std::string svgEscaped(std::string_view text) {
    std::string result;
    for (const char c : tapcore::repairedUtf8(text)) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20 && !isAllowedControl(c)) result += "\uFFFD";
                else result += c;
        }
    }
    for (const std::string_view forbidden : {"\uFFFE", "\uFFFF"})
        for (auto at = result.find(forbidden); at != std::string::npos; at = result.find(forbidden))
            result.replace(at, forbidden.size(), "\uFFFD");
    return result;
}

}  // namespace drawing
