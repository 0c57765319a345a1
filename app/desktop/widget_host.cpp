#include "app/desktop/widget_host.h"

#include <gdkmm/display.h>
#include <glibmm/main.h>

#include <algorithm>
#include <functional>

#include "app/common/folder/language.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/host_clock.h"
#include "app/common/widget/widget_file.h"
#include "core/counting/day.h"

namespace tappora {
namespace {

using tapcore::Instant;
using tapcore::Words;
using tapwidgets::Entry;

/// Has the main loop do something whenever a descriptor is readable.
void onReadable(int descriptor, const std::function<void()>& act) {
    Glib::MainContext::get_default()->signal_io().connect(
        [act](Glib::IOCondition) {
            act();
            return true;
        },
        descriptor, Glib::IO_IN);
}

}  // namespace

WidgetHost::WidgetHost(const std::vector<WidgetChoice>& choices, const Environment& environment)
    : environment_(environment),
      places_(environment_),
      provider_({}, sharedFolders(environment), hostNow, environment.calendar),
      systemWords_(systemWords(environment)),
      words_(wordsIn(Words::source, environment)),
      language_(Words::source),
      surface_(desktopSurface()),
      scheme_([this] { draw(); }) {
    for (const WidgetChoice& choice : choices) shown_.push_back({choice, windowOf(choice)});
}

/// A window that keeps the places to which the user moves it.
std::unique_ptr<WidgetWindow> WidgetHost::windowOf(const WidgetChoice& choice) {
    const auto keep = [this, name = choice.name()](const WidgetPlace& place) {
        try {
            places_.keep(name, place);
        } catch (const std::exception& error) {
            complain(error.what());  // the widget stays where it is until the next start
        }
    };
    return std::make_unique<WidgetWindow>(sizeOf(choice.family), *surface_, keep);
}

void WidgetHost::run(const SignalQueue& signals) {
    const auto loop = Glib::MainLoop::create();
    onReadable(signals.descriptor(), [&] { loop->quit(); });
    onReadable(alarm_.descriptor(), [this] { reload(); });
    onReadable(folder_.descriptor(), [this] {
        if (folder_.takeNote()) reload();
    });
    followMonitors();
    placeAll();
    show(provider_.placeholder());
    show(provider_.getSnapshot());
    reload();
    loop->run();
}

void WidgetHost::followMonitors() {
    const auto display = Gdk::Display::get_default();
    display->signal_monitor_added().connect([this](const Glib::RefPtr<Gdk::Monitor>&) { placeAll(); });
    display->signal_monitor_removed().connect([this](const Glib::RefPtr<Gdk::Monitor>&) { placeAll(); });
}

/// To where the user last moved each, and the others in rows.
void WidgetHost::placeAll() {
    const std::vector<Monitor> there = monitors();
    if (there.empty()) return;
    const std::vector<MonitorArea> areas = areasOf(there);
    std::vector<drawing::Size> sizes;
    for (const Shown& shown : shown_) sizes.push_back(shown.window->desktopSize());
    const std::vector<WidgetPlace> rows = rowsOn(areas.front(), sizes);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const WidgetPlace place = places_.find(shown_[i].choice.name(), areas, sizes[i]).value_or(rows[i]);
        shown_[i].window->moveTo(monitorOf(place, there), place.x, place.y);
    }
}

void WidgetHost::reload() {
    next_ = hostNow() + tapwidgets::Provider::refresh;
    const bool isLoaded = loading_.run([this] {
        followHostZone();
        watchFile();
        const tapwidgets::Timeline timeline = provider_.getTimeline();
        next_ = timeline.policy.after;
        show(timeline.entries.back());
    });
    if (!isLoaded) show({hostNow(), std::nullopt});  // rather none than yesterday's counts
    schedule();
}

/// A folder that has been made in the meantime is watched from now on, so before the file is read. When it
/// cannot be watched, the file is still read at its times.
void WidgetHost::watchFile() {
    watching_.run([this] {
        if (provider_.url()) folder_.add(provider_.url()->parent_path());
    });
}

void WidgetHost::schedule() {
    while (!alarm_.set(std::min(next_, nextDay(hostNow())))) {
    }
}

void WidgetHost::show(const Entry& entry) {
    shownEntry_ = entry;
    if (entry.snapshot && entry.snapshot->language != language_) {
        words_ = wordsIn(entry.snapshot->language, environment_);
        language_ = entry.snapshot->language;
    }
    draw();
}

void WidgetHost::draw() {
    if (!shownEntry_) return;
    for (const Shown& shown : shown_)
        shown.window->show(tapwidgets::picture(*shown.choice.widget, *shownEntry_, shown.choice.family,
                                               {words_, systemWords_, textWidth_}),
                           {.theme = scheme_.theme()});
}

Instant WidgetHost::nextDay(Instant moment) const {
    const tapcore::Calendar& calendar = environment_.calendar;
    return tapcore::Day(moment, calendar).adding(1, calendar).date(calendar);
}

}  // namespace tappora
