#pragma once

#include <QRect>

#include "settings/settings_store.h"

class QWidget;

namespace zentro {

/// A setting that keeps a number of a place, in twips (1/1440 inch).
struct PlaceSetting {
    SettingNumber number;
    const char* subKey = "";
};

/// The settings that keep one window's place.
struct PlaceSettings {
    PlaceSetting left;
    PlaceSetting top;
    PlaceSetting width;
    PlaceSetting height;
};

inline constexpr PlaceSettings kSourceWindowPlace{{SettingNumber::SourceWindowLeft},
                                                  {SettingNumber::SourceWindowTop},
                                                  {SettingNumber::SourceWindowWidth},
                                                  {SettingNumber::SourceWindowHeight}};
inline constexpr PlaceSettings kObjectWindowPlace{{SettingNumber::ObjectWindowLeft},
                                                  {SettingNumber::ObjectWindowTop},
                                                  {SettingNumber::ObjectWindowWidth},
                                                  {SettingNumber::ObjectWindowHeight}};
inline constexpr PlaceSettings kOutputWindowPlace{{SettingNumber::OutputWindowLeft},
                                                  {SettingNumber::OutputWindowTop},
                                                  {SettingNumber::OutputWindowWidth},
                                                  {SettingNumber::OutputWindowHeight}};
inline constexpr PlaceSettings kTerminalWindowPlace{{SettingNumber::TerminalWindowLeft},
                                                    {SettingNumber::TerminalWindowTop},
                                                    {SettingNumber::TerminalWindowWidth},
                                                    {SettingNumber::TerminalWindowHeight}};
inline constexpr PlaceSettings kBoardWindowPlace{{SettingNumber::WindowPlaces, "Board.Left"},
                                                 {SettingNumber::WindowPlaces, "Board.Top"},
                                                 {SettingNumber::WindowPlaces, "Board.Width"},
                                                 {SettingNumber::WindowPlaces, "Board.Height"}};
inline constexpr PlaceSettings kVariablesWindowPlace{
    {SettingNumber::WindowPlaces, "Variables.Left"},
    {SettingNumber::WindowPlaces, "Variables.Top"},
    {SettingNumber::WindowPlaces, "Variables.Width"},
    {SettingNumber::WindowPlaces, "Variables.Height"}};
inline constexpr PlaceSettings kPlotWindowPlace{{SettingNumber::WindowPlaces, "Plot.Left"},
                                                {SettingNumber::WindowPlaces, "Plot.Top"},
                                                {SettingNumber::WindowPlaces, "Plot.Width"},
                                                {SettingNumber::WindowPlaces, "Plot.Height"}};
inline constexpr PlaceSettings kHelpWindowPlace{{SettingNumber::WindowPlaces, "Help.Left"},
                                                {SettingNumber::WindowPlaces, "Help.Top"},
                                                {SettingNumber::WindowPlaces, "Help.Width"},
                                                {SettingNumber::WindowPlaces, "Help.Height"}};
inline constexpr PlaceSettings kCalculatorPlace{{SettingNumber::WindowPlaces, "Calculator.Left"},
                                                {SettingNumber::WindowPlaces, "Calculator.Top"},
                                                {SettingNumber::WindowPlaces, "Calculator.Width"},
                                                {SettingNumber::WindowPlaces, "Calculator.Height"}};

/// A logical pixel is 1/96 inch at any density of the screen.
inline constexpr int kTwipsPerPixel = 15;

/// The place in logical pixels; not smaller than a window can be used.
QRect LoadPlace(const SettingsStore& settings, const PlaceSettings& place);
void SavePlace(SettingsStore& settings, const PlaceSettings& place, const QRect& pixels);

/// Whether nobody ever chose the place.
bool IsFactoryPlace(const SettingsStore& settings, const PlaceSettings& place);
/// Nobody ever did.
void ForgetPlace(SettingsStore& settings, const PlaceSettings& place);

/// The place moved, and where it must be made smaller, so that it lies wholly in the area.
QRect KeepWithin(const QRect& place, const QRect& area);

/// Puts a window or a child window of the frame where its settings say, never off the visible area.
void RestorePlace(QWidget& window, const SettingsStore& settings, const PlaceSettings& place);
/// Keeps its place, unless it is minimised or maximised.
void RememberPlace(const QWidget& window, SettingsStore& settings, const PlaceSettings& place);

}  // namespace zentro
