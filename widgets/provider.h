#pragma once

#include <filesystem>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "core/foundation/calendar.h"
#include "core/widget/widget_snapshot.h"
#include "widgets/timeline.h"

namespace tapwidgets {

/// Feeds all widgets from the snapshot's file, which it reads again at each question. Whatever is wrong with
/// the file has one outcome: an entry without a snapshot. Nothing here throws. It keeps nothing between two
/// questions, and may be asked by several threads at once if its clock may.
class Provider {
  public:
    /// How long a timeline is good for: a quarter of an hour.
    static constexpr std::chrono::seconds refresh{900};

    /// The group of programs whose container holds the file: the value of "PellotGroupID" in the widgets' own
    /// information dictionary, when it is a text.
    static std::optional<std::string> groupID(const nlohmann::json& information);

    /// `clock` is asked for the moment of each entry, and the calendar for the day it falls on.
    Provider(const std::optional<std::string>& groupID, const tapcore::WidgetSnapshot::SharedFolders& folders,
             std::function<tapcore::Instant()> clock, tapcore::Calendar calendar);

    /// What to show before anything was read.
    Entry placeholder() const;
    /// What to show at once.
    Entry getSnapshot() const;
    /// One entry, for now, and the wish to be asked again after `refresh`.
    Timeline getTimeline() const;

    /// The file's snapshot, when it is today's. Nothing too for a file larger than 16 MB.
    std::optional<tapcore::WidgetSnapshot> read() const;

    /// Where the file is looked for; nothing when there is no place for it.
    const std::optional<std::filesystem::path>& url() const { return url_; }

  private:
    std::optional<tapcore::WidgetSnapshot> read(tapcore::Instant now) const;

    std::optional<std::filesystem::path> url_;
    std::function<tapcore::Instant()> clock_;
    tapcore::Calendar calendar_;
};

}  // namespace tapwidgets
