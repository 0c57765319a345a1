#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/words/words.h"
#include "drawing/node.h"
#include "widgets/timeline.h"
#include "widgets/views.h"

namespace tapwidgets {

/// A widget's content; nothing when the snapshot has not what it shows.
using ContentView = std::optional<drawing::Node> (*)(const tapcore::WidgetSnapshot& snapshot,
                                                     const Canvas& canvas);

/// One of the widgets that a desktop is offered.
struct Widget {
    std::string_view kind;  ///< names it to the system, in every version: "TapToday"
    std::string_view name;  ///< what a user calls it: "today"
    std::span<const Family> families;
    ContentView content;

    /// The keys of the texts that the system shows of it.
    std::string nameKey() const { return "widget." + std::string(name); }
    std::string aboutKey() const { return nameKey() + "_about"; }
};

/// All of them, in the order that they are offered.
extern const std::array<Widget, 4> bundle;

/// The texts that a widget is drawn with.
struct Texts {
    const tapcore::Words& snapshot;  ///< in the snapshot's language
    const tapcore::Words& system;    ///< in the one that the user prefers
    drawing::TextWidth width;        ///< measures as they will be painted
};

/// A widget as it looks on the desktop: its content, or Waiting, inside a container of the family's size. The
/// family must be one of the widget's.
drawing::Picture picture(const Widget& widget, const Entry& entry, Family family, const Texts& texts);

}  // namespace tapwidgets
