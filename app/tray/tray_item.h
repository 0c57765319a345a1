#pragma once

#include <libayatana-appindicator/app-indicator.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/common/system/environment.h"
#include "app/tray/tray_state.h"

namespace tappora {

/// The item in the tray and its menu. It asks the recorders every few seconds, and after each choice.
class TrayItem {
  public:
    /// GTK must have been started. Failure when the program's resources are not found.
    explicit TrayItem(const Environment& environment);
    TrayItem(const TrayItem&) = delete;
    TrayItem& operator=(const TrayItem&) = delete;
    ~TrayItem();

    void refresh();

  private:
    using Chosen = std::function<void()>;

    /// Adds an entry to the menu; nothing is done when it is switched by the program itself.
    GtkWidget* add(GtkWidget* entry, Chosen chosen);
    GtkWidget* addLabelled(const char* label, Chosen chosen);
    void addLine();
    void addPauses();
    void addPrograms();
    void pause(const std::vector<std::string>& words);
    void showWeek();
    void inTerminal(const std::string& command);
    void switchWidgets();
    void show(const TrayState& state);
    void showWidgets();
    static void onChosen(GtkMenuItem* entry, gpointer chosen);

    Environment environment_;
    std::optional<std::filesystem::path> widgetsProgram_;
    AppIndicator* indicator_ = nullptr;
    GtkWidget* menu_ = nullptr;
    GtkWidget* text_ = nullptr;
    std::vector<GtkWidget*> pauses_;
    GtkWidget* resume_ = nullptr;
    GtkWidget* widgets_ = nullptr;
    guint timer_ = 0;
    bool isRefreshing_ = false;
    std::optional<TrayState> shown_;
};

}  // namespace tappora
