#pragma once

class QMainWindow;

namespace zentro {

class SettingsStore;

/// Keeps which tool bars begin a new row, and the place of the main window, in the settings.
void SaveToolBarLayout(const QMainWindow& window, SettingsStore& settings);

/// Puts the tool bars into the rows of the settings, where a layout has been saved.
void RestoreToolBarLayout(QMainWindow& window, const SettingsStore& settings);

/// Keeps the main window's place beside the layout.
void SaveMainWindowPlace(const QMainWindow& window, SettingsStore& settings);

/// Puts the main window where it was, never off the screen; on a first start where it has room.
void RestoreMainWindowPlace(QMainWindow& window, const SettingsStore& settings);

}  // namespace zentro
