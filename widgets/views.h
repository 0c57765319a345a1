#pragma once

#include <optional>

#include "core/widget/widget_snapshot.h"
#include "core/words/words.h"
#include "drawing/node.h"
#include "drawing/text.h"

// What the widgets show. Each view draws itself from the canvas's top left corner, in points, and keeps to
// the canvas's size. It refers to what it shows, which must outlive it. A snapshot may hold any numbers, and
// lists of any length; drawing takes time and memory in proportion. Views keep nothing, so that threads may
// draw at the same time.

namespace tapwidgets {

/// What a view draws on and with.
struct Canvas {
    drawing::Size size;
    const tapcore::Words& words;  ///< in the snapshot's language; must outlive the canvas
};

/// The total of the day, and how it stands against the usual.
struct TodayWidget {
    const tapcore::WidgetSnapshot& snapshot;
    const Canvas& canvas;

    std::optional<drawing::Node> drawing() const;
};

/// The day hour by hour, as a line over an area. Hours beyond the 24th are not shown.
struct HoursWidget {
    const tapcore::WidgetSnapshot& snapshot;
    const Canvas& canvas;

    std::optional<drawing::Node> drawing() const;
};

/// The board with its keys coloured by use; nothing without bounds that have an extent.
struct HeatmapWidget {
    const tapcore::WidgetSnapshot& snapshot;
    const Canvas& canvas;

    std::optional<drawing::Node> drawing() const;
};

/// A bar for each day; nothing without days.
struct WeekWidget {
    const tapcore::WidgetSnapshot& snapshot;
    const Canvas& canvas;

    std::optional<drawing::Node> drawing() const;
};

/// What every widget shows while there is nothing of today.
struct Waiting {
    Canvas canvas;                    ///< its texts are in the language that the user prefers
    const drawing::TextWidth& width;  ///< tells which words have room in a line

    drawing::Node drawing() const;
};

}  // namespace tapwidgets
