// Which strip a button wears: the setting that gives its colour, and its opacity.
#pragma once

#include <optional>
#include <string_view>

namespace korvane {

struct StripChoice {
    std::string_view colorSetting;
    double opacity = 1;
    friend bool operator==(const StripChoice &, const StripChoice &) = default;
};

namespace StripRules {

inline constexpr StripChoice activeStrip{"activeWindowStripColor", 0.95};
inline constexpr StripChoice previousStrip{"lastWindowStripColor", 0.72};

// Of a task's button, and of a row in a group's window list; the first rule that holds.
constexpr std::optional<StripChoice> task(bool stripsEnabled, bool isActive, bool isPrevious)
{
    if (stripsEnabled && isActive)
        return activeStrip;
    return stripsEnabled && isPrevious ? std::optional(previousStrip) : std::nullopt;
}

// A group's button never wears the strip of the previous window.
constexpr std::optional<StripChoice> group(bool stripsEnabled, bool holdsActiveStripWindow)
{
    return task(stripsEnabled, holdsActiveStripWindow, false);
}

}  // namespace StripRules
}  // namespace korvane
