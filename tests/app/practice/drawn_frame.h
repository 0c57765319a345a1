#pragma once

#include <map>
#include <string>

#include "app/practice/frame.h"

namespace tappora {

/// How the tests write down styles, a column each.
inline const std::map<SpanStyle, char> styleMarks = {
    {SpanStyle::plain, ' '},   {SpanStyle::faint, '.'},     {SpanStyle::strong, 'S'},
    {SpanStyle::right, 'r'},   {SpanStyle::corrected, 'c'}, {SpanStyle::wrong, 'w'},
    {SpanStyle::next, 'N'},    {SpanStyle::nextWrong, 'W'}, {SpanStyle::learning, 'l'},
    {SpanStyle::learned, 'L'}, {SpanStyle::slipping, 's'},  {SpanStyle::pinky, 'P'},
    {SpanStyle::ring, 'R'},    {SpanStyle::middle, 'M'},    {SpanStyle::index, 'I'},
    {SpanStyle::thumb, 'T'},
};

inline std::string withoutBlanksAtTheEnd(std::string line) {
    return line.erase(line.find_last_not_of(' ') + 1);
}

/// A frame with a line of style marks below each line that has styles. "\n" at the start, for raw strings.
inline std::string drawn(const Frame& frame) {
    std::string all = "\n";
    for (const FrameLine& line : frame.lines) {
        std::string text, marks;
        for (const Span& span : line) {
            text += span.text;
            marks += std::string(columnsOf(span.text), styleMarks.at(span.style));
        }
        all += withoutBlanksAtTheEnd(text) + '\n';
        marks = withoutBlanksAtTheEnd(marks);
        if (!marks.empty()) all += marks + '\n';
    }
    return all;
}

}  // namespace tappora
