#include "app/tray/tray_item.h"

#include <fmt/format.h>

#include <chrono>
#include <memory>

#include "app/common/command_line/companion.h"
#include "app/common/control/pause_time.h"
#include "app/common/control/recorder_client.h"
#include "app/common/program.h"
#include "app/common/system/resources.h"
#include "app/tray/tray_programs.h"
#include "core/foundation/integers.h"

namespace tappora {
namespace {

using Counting = TrayState::Counting;

constexpr guint secondsBetween = 5;
/// The menu does not open while a recorder is waited for.
constexpr Asking asking{.patience = std::chrono::milliseconds(1000)};

const char* iconOf(Counting counting) {
    switch (counting) {
        case Counting::yes:
            return "tappora-counting";
        case Counting::paused:
            return "tappora-paused";
        case Counting::no:
            return "tappora-off";
    }
    return "";
}

gboolean refreshItem(gpointer item) {
    static_cast<TrayItem*>(item)->refresh();
    return G_SOURCE_CONTINUE;
}

}  // namespace

TrayItem::TrayItem(const Environment& environment)
    : environment_(environment), widgetsProgram_(companionFile("tappora-widgets")) {
    const std::string icons = (resourceFolder(environment) / "Tray").string();
    indicator_ = app_indicator_new_with_path("tappora", iconOf(Counting::no),
                                             APP_INDICATOR_CATEGORY_APPLICATION_STATUS, icons.c_str());
    menu_ = GTK_WIDGET(g_object_ref_sink(gtk_menu_new()));
    text_ = addLabelled("", [] {});
    gtk_widget_set_sensitive(text_, FALSE);
    addLine();
    addPauses();
    addLine();
    addPrograms();
    addLine();
    addLabelled("Quit", [] { gtk_main_quit(); });
    gtk_widget_show_all(menu_);
    app_indicator_set_menu(indicator_, GTK_MENU(menu_));
    app_indicator_set_status(indicator_, APP_INDICATOR_STATUS_ACTIVE);
    refresh();
    timer_ = g_timeout_add_seconds(secondsBetween, refreshItem, this);
}

TrayItem::~TrayItem() {
    g_source_remove(timer_);
    g_object_unref(indicator_);
    g_object_unref(menu_);
}

void TrayItem::onChosen(GtkMenuItem*, gpointer chosen) {
    try {
        (*static_cast<Chosen*>(chosen))();
    } catch (const std::exception& error) {
        complain(error.what());
    }
}

GtkWidget* TrayItem::add(GtkWidget* entry, Chosen chosen) {
    auto kept = std::make_unique<Chosen>([this, chosen = std::move(chosen)] {
        if (!isRefreshing_) chosen();
    });
    g_signal_connect_data(
        entry, "activate", G_CALLBACK(onChosen), kept.release(),
        [](gpointer data, GClosure*) { delete static_cast<Chosen*>(data); }, GConnectFlags{});
    gtk_menu_shell_append(GTK_MENU_SHELL(menu_), entry);
    return entry;
}

GtkWidget* TrayItem::addLabelled(const char* label, Chosen chosen) {
    return add(gtk_menu_item_new_with_label(label), std::move(chosen));
}

void TrayItem::addLine() { gtk_menu_shell_append(GTK_MENU_SHELL(menu_), gtk_separator_menu_item_new()); }

void TrayItem::addPauses() {
    pauses_ = {addLabelled("Pause for 15 minutes", [this] { pause({"15m"}); }),
               addLabelled("Pause for an hour", [this] { pause({"1h"}); }),
               addLabelled("Pause until tomorrow", [this] {
                   pause({"until", "00:00"});
               })};
    resume_ = addLabelled("Resume", [this] {
        (void)resumeRecorders(asking, atThisMoment(environment_));
        refresh();
    });
}

void TrayItem::addPrograms() {
    GtkWidget* week = addLabelled("Show the week", [this] { showWeek(); });
    GtkWidget* practice = addLabelled("Practise", [this] { inTerminal("practice"); });
    const bool hasTerminal = !terminalOf(environment_).empty();
    gtk_widget_set_sensitive(week, hasTerminal || opensPages() ? TRUE : FALSE);
    gtk_widget_set_sensitive(practice, hasTerminal ? TRUE : FALSE);
    widgets_ = add(gtk_check_menu_item_new_with_label("Show the widgets"), [this] { switchWidgets(); });
    gtk_widget_set_sensitive(widgets_, widgetsProgram_ ? TRUE : FALSE);
}

void TrayItem::pause(const std::vector<std::string>& words) {
    const Environment now = atThisMoment(environment_);
    (void)pauseRecorders(pauseEnd(words, now.now, now.calendar), asking, now);
    refresh();
}

/// As a page; where nothing opens pages, in a terminal.
void TrayItem::showWeek() {
    if (opensPages()) start({tapporaOf(environment_), "report", "week", "--open"});
    else inTerminal("report");
}

/// A terminal closes when its command ends: what the command prints is kept until Enter.
void TrayItem::inTerminal(const std::string& command) {
    std::vector<std::string> commandLine = terminalOf(environment_);
    const std::string tappora = tapporaOf(environment_);
    for (const char* word : {"sh", "-c", R"("$@"; printf '\nPress Enter to close. '; read -r _)", "sh"})
        commandLine.emplace_back(word);
    commandLine.insert(commandLine.end(), {tappora, command});
    start(commandLine);
}

void TrayItem::switchWidgets() {
    if (areWidgetsShown(*widgetsProgram_)) hideWidgets(*widgetsProgram_);
    else start({widgetsProgram_->string()});
}

void TrayItem::refresh() {
    const Environment now = atThisMoment(environment_);
    isRefreshing_ = true;
    show(trayState(askStatus(asking, now), now));
    showWidgets();
    isRefreshing_ = false;
}

void TrayItem::show(const TrayState& state) {
    if (shown_ == state) return;
    shown_ = state;
    const std::string count = state.today ? tapcore::grouped(*state.today) : "";
    const std::string text = count.empty() ? state.text : fmt::format("{}: {} keys today", state.text, count);
    app_indicator_set_icon_full(indicator_, iconOf(state.counting), state.text.c_str());
    app_indicator_set_label(indicator_, count.c_str(), "99,999");
    app_indicator_set_title(indicator_, ("Tappora: " + text).c_str());
    gtk_menu_item_set_label(GTK_MENU_ITEM(text_), text.c_str());
    const bool isPaused = state.counting == Counting::paused;
    for (GtkWidget* entry : pauses_)
        gtk_widget_set_sensitive(entry, state.counting == Counting::yes ? TRUE : FALSE);
    gtk_widget_set_sensitive(resume_, isPaused ? TRUE : FALSE);
}

void TrayItem::showWidgets() {
    const bool areShown = widgetsProgram_ && areWidgetsShown(*widgetsProgram_);
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(widgets_), areShown ? TRUE : FALSE);
}

}  // namespace tappora
