#include "ui/shell/tool_bar_layout.h"

#include <QMainWindow>
#include <QScreen>
#include <QToolBar>
#include <array>
#include <string>

#include "settings/settings_store.h"
#include "ui/shell/commands.h"
#include "ui/shell/desk_layout.h"
#include "ui/support/window_place.h"

namespace zentro {

namespace {

constexpr const char* kSaved = "Saved";

std::string RowKey(const ToolBarRow& row) {
    return std::string(row.name) + ".NewRow";
}

struct PlacePart {
    const char* key;
    int (QRect::*get)() const;
};

constexpr std::array kPlaceParts{
    PlacePart{"Window.Left", &QRect::left},
    PlacePart{"Window.Top", &QRect::top},
    PlacePart{"Window.Width", &QRect::width},
    PlacePart{"Window.Height", &QRect::height},
};
constexpr const char* kMaximised = "Window.Maximised";

}  // namespace

void SaveToolBarLayout(const QMainWindow& window, SettingsStore& settings) {
    settings.SaveSetting(SettingNumber::ToolBarLayout, 1, kSaved);
    for (const ToolBarRow& row : ToolBars()) {
        auto* bar = window.findChild<QToolBar*>(row.name);
        if (bar == nullptr) continue;
        settings.SaveSetting(SettingNumber::ToolBarLayout, window.toolBarBreak(bar) ? 1 : 0,
                             RowKey(row));
    }
}

void RestoreToolBarLayout(QMainWindow& window, const SettingsStore& settings) {
    if (!AsBoolean(settings.GetSetting(SettingNumber::ToolBarLayout, kSaved))) return;
    for (const ToolBarRow& row : ToolBars()) {
        auto* bar = window.findChild<QToolBar*>(row.name);
        if (bar == nullptr) continue;
        const bool newRow =
            AsBoolean(settings.GetSetting(SettingNumber::ToolBarLayout, RowKey(row)));
        if (newRow && !window.toolBarBreak(bar)) window.insertToolBarBreak(bar);
        if (!newRow && window.toolBarBreak(bar)) window.removeToolBarBreak(bar);
    }
}

void SaveMainWindowPlace(const QMainWindow& window, SettingsStore& settings) {
    settings.SaveSetting(SettingNumber::ToolBarLayout, window.isMaximized() ? 1 : 0, kMaximised);
    const QRect place =
        window.normalGeometry().isValid() ? window.normalGeometry() : window.geometry();
    for (const PlacePart& part : kPlaceParts) {
        settings.SaveSetting(SettingNumber::ToolBarLayout, (place.*part.get)() * kTwipsPerPixel,
                             part.key);
    }
}

void RestoreMainWindowPlace(QMainWindow& window, const SettingsStore& settings) {
    std::array<int, kPlaceParts.size()> values{};
    for (std::size_t i = 0; i < kPlaceParts.size(); ++i) {
        values[i] =
            AsInteger(settings.GetSetting(SettingNumber::ToolBarLayout, kPlaceParts[i].key)) /
            kTwipsPerPixel;
    }
    const QRect screen = window.screen()->availableGeometry();
    QRect place(values[0], values[1], values[2], values[3]);
    if (place.isEmpty()) {
        place = FirstMainWindowPlace(screen);
    }
    window.setGeometry(KeepWithin(place, screen));
    if (AsBoolean(settings.GetSetting(SettingNumber::ToolBarLayout, kMaximised)))
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

}  // namespace zentro
