#pragma once

#include <curses.h>

#include "app/practice/frame.h"

namespace tappora {

/// How a span is shown: attributes without colours, attributes with them, and the colour pair, 0 for the
/// terminal's own.
struct SpanLook {
    attr_t plain = A_NORMAL;
    attr_t coloured = A_NORMAL;
    short pair = 0;
};

SpanLook lookOf(SpanStyle style);

/// Defines the colour pairs, all on one background. Curses must have started its colours.
void defineColours(short background);

}  // namespace tappora
