// When a bar fades away and when it comes back, decided from the pointer's place and the clock. The owner asks several
// times a second; a fade is worked out from the time that has passed, so that a late tick does not slow it.
#pragma once

#include "Models/Bar/PanelGeometry.h"
#include "Models/Settings/SettingsTable.h"
#include "Ports/MainLoop.h"
#include "Ports/Screens.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace korvane {

// A panel as the decision sees and moves it.
class AutoHidePanel {
public:
    virtual ~AutoHidePanel() = default;
    // In desktop coordinates.
    virtual platform::Rect frame() const = 0;
    // Of the screen it is on; absent when it is on none.
    virtual std::optional<platform::Rect> screenFrame() const = 0;
    // Of its content; absent without a content.
    virtual std::optional<double> contentOpacity() const = 0;
    virtual bool ignoresMouseEvents() const = 0;
    virtual void setContentOpacity(double opacity) = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    // The height that it has or is growing to.
    virtual double headingHeight() const { return frame().height; }
    // Lets it grow or shrink to the height, its lower edge staying where it is.
    virtual void setHeight(double height, const platform::Rect &screen) = 0;

    // When the pointer was last seen on it.
    std::optional<platform::Seconds> lastPointerInside;
};

struct AutoHideSituation {
    platform::Seconds now{0};
    platform::Point pointer;
    std::vector<platform::Rect> screens;
    OverflowGeometry geometry;
    const SettingsValues &settings;
    bool taskOverflowRowsVisible = false;
    bool listOpen = false;  // a window list, which brings hidden bars back as well
    bool held = false;      // by something open above the bars or carried over them: none vanishes beneath it
};

struct AutoHideActions {
    std::function<bool()> startMenuContainsMouse;
    std::function<void(double)> setStartMenuOpacity;
    std::function<void(const platform::Rect &)> onStart;
};

struct AutoHideOutcome {
    bool allHidden = false;
    bool fading = false;   // the quick timer is needed
    bool waiting = false;  // a grace time runs out or a fade goes on: the next tick may find something else
};

namespace AutoHide {

inline constexpr double graceSeconds = 0.2;
inline constexpr double hiddenOpacity = 0.01;      // at or below it a panel counts as hidden
inline constexpr double revealStrip = 1;           // of the screen's bottom edge, in points
inline constexpr double heightTolerance = 0.5;     // more is a change
inline constexpr double opacityTolerance = 0.001;  // more is a change, where redundant writes are avoided

// Seconds between two looks; the rate is held to 1 to 20 a second.
double visibilityInterval(std::int64_t appMonitorRefreshRate);
// Seconds between two frames of a fade; the rate is held to 10 to 60 a second.
double fadeInterval(std::int64_t appRefreshRate);
inline constexpr double timerTolerance = 0.1;  // part of the interval

// Writes what differs; with `avoidRedundantWrites` off, everything.
void setPanelState(AutoHidePanel &panel, double opacity, bool ignoresMouse, bool avoidRedundantWrites);
// One look at all panels.
AutoHideOutcome update(std::span<AutoHidePanel *const> panels, const AutoHideSituation &situation,
                       const AutoHideActions &actions);

// Shows every panel for a key, and gives the frame of the first one on that screen, else of the first; absent without
// panels.
std::optional<platform::Rect> reveal(std::span<AutoHidePanel *const> panels,
                                     const std::optional<platform::Rect> &mainScreen, platform::Seconds now,
                                     bool avoidRedundantWrites);

// The intervals of the two timers; absent: the timer does not run. Nothing runs while the system pauses the bar.
std::optional<double> visibilityTimer(const SettingsValues &settings, bool paused);
// `running` is the interval of the timer that runs now, which is left as it is while it is wanted.
std::optional<double> fadeTimer(const std::optional<double> &running, bool wanted, const SettingsValues &settings,
                                bool paused);

}  // namespace AutoHide
}  // namespace korvane
