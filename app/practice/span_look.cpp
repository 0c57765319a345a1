#include "app/practice/span_look.h"

#include <algorithm>
#include <iterator>
#include <utility>

// Curses' macros that clash with our own names.
#undef columns
#undef lines

namespace tappora {
namespace {

enum Pair : short { own, green, yellow, red, magenta, cyan, blue };

constexpr std::pair<Pair, short> pairs[] = {{green, COLOR_GREEN}, {yellow, COLOR_YELLOW},
                                            {red, COLOR_RED},     {magenta, COLOR_MAGENTA},
                                            {cyan, COLOR_CYAN},   {blue, COLOR_BLUE}};

// By style; a style that is not here looks plain.
const std::pair<SpanStyle, SpanLook> looks[] = {
    {SpanStyle::plain, {}},
    {SpanStyle::faint, {A_DIM, A_DIM, own}},
    {SpanStyle::strong, {A_BOLD, A_BOLD, own}},
    {SpanStyle::right, {A_DIM, A_NORMAL, green}},
    {SpanStyle::corrected, {A_UNDERLINE, A_UNDERLINE, yellow}},
    {SpanStyle::wrong, {A_BOLD | A_UNDERLINE, A_BOLD | A_UNDERLINE, red}},
    {SpanStyle::next, {A_REVERSE, A_REVERSE, own}},
    {SpanStyle::nextWrong, {A_REVERSE | A_BOLD | A_UNDERLINE, A_REVERSE | A_BOLD, red}},
    {SpanStyle::learning, {A_NORMAL, A_NORMAL, yellow}},
    {SpanStyle::learned, {A_BOLD, A_NORMAL, green}},
    {SpanStyle::slipping, {A_UNDERLINE, A_NORMAL, magenta}},
    {SpanStyle::pinky, {A_NORMAL, A_NORMAL, magenta}},
    {SpanStyle::ring, {A_NORMAL, A_NORMAL, blue}},
    {SpanStyle::middle, {A_NORMAL, A_NORMAL, green}},
    {SpanStyle::index, {A_NORMAL, A_NORMAL, cyan}},
    {SpanStyle::thumb, {A_UNDERLINE, A_UNDERLINE, own}},
};

}  // namespace

SpanLook lookOf(SpanStyle style) {
    const auto* found = std::find_if(std::begin(looks), std::end(looks),
                                     [&](const auto& look) { return look.first == style; });
    return found == std::end(looks) ? SpanLook() : found->second;
}

void defineColours(short background) {
    for (const auto& [pair, colour] : pairs) init_pair(pair, colour, background);
}

}  // namespace tappora
