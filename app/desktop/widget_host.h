#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/common/folder/folder_watch.h"
#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/alarm.h"
#include "app/common/system/environment.h"
#include "app/common/system/signals.h"
#include "app/desktop/colour_scheme.h"
#include "app/desktop/desktop_surface.h"
#include "app/desktop/places.h"
#include "app/desktop/widget_choice.h"
#include "app/desktop/widget_window.h"
#include "core/words/words.h"
#include "drawing/painter.h"
#include "widgets/provider.h"

namespace tappora {

/// Shows the chosen widgets, and asks their provider as a desktop does: for a placeholder, a snapshot, a
/// timeline, and for the next one at the moment that its policy names. It asks at once when the file changes
/// or the day turns. In between it sleeps.
class WidgetHost {
  public:
    /// GTK must have been started. Throws Failure, or std::system_error.
    WidgetHost(const std::vector<WidgetChoice>& choices, const Environment& environment);

    /// Runs until one of the signals comes.
    void run(const SignalQueue& signals);

  private:
    struct Shown {
        WidgetChoice choice;
        std::unique_ptr<WidgetWindow> window;
    };

    std::unique_ptr<WidgetWindow> windowOf(const WidgetChoice& choice);
    void followMonitors();
    void placeAll();
    void reload();
    void watchFile();
    void schedule();
    void show(const tapwidgets::Entry& entry);
    void draw();
    tapcore::Instant nextDay(tapcore::Instant now) const;

    Environment environment_;
    WidgetPlaces places_;
    tapwidgets::Provider provider_;
    tapcore::Words systemWords_;
    tapcore::Words words_;  ///< in the snapshot's language
    std::string language_;  ///< that of `words_`, as the snapshot has it
    drawing::TextWidth textWidth_ = drawing::systemTextWidth();
    std::optional<tapwidgets::Entry> shownEntry_;
    tapcore::Instant next_{};  ///< when the provider is to be asked again
    FolderWatch folder_;
    Alarm alarm_;
    Attempt loading_{complain}, watching_{complain};
    std::unique_ptr<DesktopSurface> surface_;
    ColourScheme scheme_;
    std::vector<Shown> shown_;
};

}  // namespace tappora
