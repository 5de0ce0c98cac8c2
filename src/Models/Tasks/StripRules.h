// How a button shows its state: the opacity of its white fill, and its strip, named by the setting that gives the
// strip's colour.
#pragma once

#include "Models/Settings/SettingsTable.h"

#include <optional>
#include <string>

namespace korvane {

struct StripChoice {
    std::string SettingsValues::*colorSetting;
    double opacity = 1;
    friend bool operator==(const StripChoice &, const StripChoice &) = default;
};

namespace StripRules {

inline constexpr StripChoice activeStrip{&SettingsValues::activeWindowStripColor, 0.95};
inline constexpr StripChoice previousStrip{&SettingsValues::lastWindowStripColor, 0.72};

// The white fill of a button without a colour of its own.
constexpr double highlightOpacity(bool isActive, bool inverted)
{
    return isActive != inverted ? 0.13 : 0.035;
}

// The strip of a task's button, or of a row in a group's window list. The first rule that applies decides.
constexpr std::optional<StripChoice> task(bool stripsEnabled, bool isActive, bool isPrevious)
{
    if (stripsEnabled && isActive)
        return activeStrip;
    return stripsEnabled && isPrevious ? std::optional(previousStrip) : std::nullopt;
}

// A group's button never shows the strip of the previous window.
constexpr std::optional<StripChoice> group(bool stripsEnabled, bool holdsActiveStripWindow)
{
    return task(stripsEnabled, holdsActiveStripWindow, false);
}

}  // namespace StripRules
}  // namespace korvane
