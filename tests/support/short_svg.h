#pragma once

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>

#include "drawing/svg_text.h"

namespace drawing {

/// The smallest box around the ends and handles of a path of relative steps, and how many curves it has.
struct PathSummary {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    int curves = 0;

    explicit PathSummary(const std::string& data) {
        double x = 0, y = 0;
        char step = 'M';
        const char* at = data.c_str();
        const auto number = [&] {
            char* end = nullptr;
            const double value = std::strtod(at, &end);
            at = *end == ' ' ? end + 1 : end;
            return value;
        };
        const auto take = [&](double byX, double byY, bool isEnd) {
            include(x + byX, y + byY);
            if (isEnd) x += byX, y += byY;
        };
        while (*at != '\0') {
            if (std::isalpha(static_cast<unsigned char>(*at)) != 0) step = *at++;
            if (step == 'z') continue;
            if (step == 'M') x = number(), y = number(), include(x, y);
            if (step == 'h') take(number(), 0, true);
            if (step == 'v') take(0, number(), true);
            if (step == 'l') takePoint(number, take, true);
            if (step == 'c') {
                ++curves;
                for (int i = 0; i < 3; ++i) takePoint(number, take, i == 2);
            }
        }
    }

  private:
    static void takePoint(const auto& number, const auto& take, bool isEnd) {
        const double byX = number();
        take(byX, number(), isEnd);
    }
    void include(double x, double y) {
        left = std::min(left, x), right = std::max(right, x);
        top = std::min(top, y), bottom = std::max(bottom, y);
    }
};

/// An SVG text to be read and compared by people: the paths of many curves are only counted and measured, as
/// "16 curves in 0 0 170 170", and what all texts or lines say alike is left out.
inline std::string shortSvg(std::string svg) {
    for (const std::string alike : {" stroke-linecap=\"round\" stroke-linejoin=\"round\"",
                                    " style=\"font-variant-numeric:tabular-nums\""})
        for (std::size_t at = svg.find(alike); at != std::string::npos; at = svg.find(alike, at))
            svg.erase(at, alike.size());
    const std::string opening = " d=\"";
    for (std::size_t at = svg.find(opening); at != std::string::npos; at = svg.find(opening, at)) {
        at += opening.size();
        const std::size_t size = svg.find('"', at) - at;
        const PathSummary path(svg.substr(at, size));
        if (path.curves <= 4) continue;
        const auto tenth = [](double value) { return ' ' + svgNumber(value, 1); };
        svg.replace(at, size,
                    std::to_string(path.curves) + " curves in" + tenth(path.left) + tenth(path.top) +
                        tenth(path.right - path.left) + tenth(path.bottom - path.top));
    }
    return svg;
}

}  // namespace drawing
