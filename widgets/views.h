#pragma once

#include <optional>

#include "core/widget/widget_snapshot.h"
#include "core/words/words.h"
#include "drawing/node.h"
#include "drawing/text.h"

// What the widgets show. Each view draws itself from the canvas's top left corner. It refers to what it
// shows, which must outlive it.

namespace tapwidgets {

/// What a view draws on and with.
struct Canvas {
    drawing::Size size;
    const tapcore::Words& words;  ///< in the snapshot's language
};

/// The total of the day, and how it stands against the usual.
struct TodayWidget {
    const tapcore::WidgetSnapshot& snapshot;
    const Canvas& canvas;

    std::optional<drawing::Node> drawing() const;
};

/// The day hour by hour, as a line over an area.
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
