// Decides from the pointer's place and the clock when the bars fade away and when they come back. It looks several
// times a second while something may change, more often while a fade runs, and not at all while nothing can change. A
// fade is computed from the time that has passed, so that a late look does not slow the fade.
#pragma once

#include "Models/Bar/PanelGeometry.h"
#include "Models/Settings/SettingsTable.h"
#include "Ports/MainLoop.h"
#include "Ports/Values/Geometry.h"

#include <functional>
#include <optional>
#include <vector>

namespace korvane {

// A panel as the state machine sees and moves it.
class AutoHidePanel {
public:
    virtual ~AutoHidePanel() = default;
    // In desktop coordinates.
    virtual platform::Rect frame() const = 0;
    // The frame of the panel's screen; absent when the panel is on no screen.
    virtual std::optional<platform::Rect> screenFrame() const = 0;
    // Of its content; absent without a content.
    virtual std::optional<double> contentOpacity() const = 0;
    virtual bool ignoresMouseEvents() const = 0;
    virtual void setContentOpacity(double opacity) = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    // The height that the panel has or is growing to.
    virtual double headingHeight() const { return frame().height; }
    // Lets the panel grow or shrink to the height. Its lower edge stays where it is.
    virtual void setHeight(double height, const platform::Rect &screen) = 0;
};

// What a look depends on besides the settings, the pointer and the clock. Cheap to ask for.
struct AutoHideInputs {
    OverflowGeometry geometry;
    bool taskOverflowRowsVisible = false;
    bool listOpen = false;  // a window list is open, which also brings hidden bars back
    friend bool operator==(const AutoHideInputs &, const AutoHideInputs &) = default;
};

// What the machine asks of its owner at a look.
struct AutoHideSurroundings {
    std::function<platform::Point()> pointer;
    std::function<std::vector<platform::Rect>()> screens;
    std::function<AutoHideInputs()> inputs;
    // Whether something is open above the bars or dragged over them. While this is true, no bar disappears.
    std::function<bool()> held;
    std::function<bool()> startMenuContainsMouse;
    // Whether the screens sleep or another session is active. While this is true, there are no looks.
    std::function<bool()> paused;
};

// What the machine tells its owner, besides what it does to the panels.
struct AutoHideActions {
    std::function<void(bool)> setTaskbarHidden;
    std::function<void(double)> setStartMenuOpacity;
    std::function<void(const platform::Rect &)> onStart;
};

// What one look has found.
struct AutoHideOutcome {
    bool allHidden = false;
    bool fading = false;   // the quick timer is needed
    bool waiting = false;  // a grace time or a fade is running: the next look may find something else
};

class AutoHide {
public:
    static constexpr double graceSeconds = 0.2;
    static constexpr double hiddenOpacity = 0.01;      // at or below it a panel counts as hidden
    static constexpr double revealStrip = 1;           // height of the strip at the screen's bottom edge, in points
    static constexpr double heightTolerance = 0.5;     // a larger difference is a change
    static constexpr double opacityTolerance = 0.001;  // the same, where redundant writes are avoided
    static constexpr double timerTolerance = 0.1;      // as a part of a timer's interval

    // `settings` belong to the model and outlive this object.
    AutoHide(platform::MainLoop &loop, const SettingsValues &settings, AutoHideSurroundings surroundings,
             AutoHideActions actions);

    // ------------------------------------------------------------------------------------------------ panels
    // The panel must outlive this object, or be removed before. The pointer counts as having been on the panel just
    // now.
    void addPanel(AutoHidePanel &panel) { addPanel(panel, loop.monotonicNow()); }
    void addPanel(AutoHidePanel &panel, std::optional<platform::Seconds> lastPointerInside);
    void removePanels() { panels.clear(); }
    // When the pointer was last seen on the panel.
    std::optional<platform::Seconds> lastPointerInside(const AutoHidePanel &panel) const;

    // ------------------------------------------------------------------------------------------------ looks
    // One look at the pointer: shows, fades or hides each panel, keeps its height, and lets the timers run or rest.
    AutoHideOutcome update();
    // Shows every panel because a key was pressed. Returns the frame of the first panel on that screen. If there is
    // none on it, returns the frame of the first panel. Absent without panels.
    std::optional<platform::Rect> reveal(const std::optional<platform::Rect> &mainScreen);
    // The pointer has moved or a setting has changed: a timer that rests starts again.
    void resume();
    // The same, but only if something has changed since the last look.
    void resumeIfInputsChanged();

    // ------------------------------------------------------------------------------------------------ timers
    // Restarts the timer of the looks with the present settings. Stops it during a pause or while a task is resized.
    void configureVisibilityTimer();
    // Does nothing while the timer runs.
    void startFadeTimer();
    void stopFadeTimer();
    // Uses the present settings. Does nothing unless the timer runs.
    void restartFadeTimerIfActive();
    // The system's pause began or ended.
    void pauseChanged();
    // While a task is resized by hand, no panel fades under the pointer.
    void setTaskResizePaused(bool paused);
    bool isTaskResizePaused() const { return resizePaused; }
    // Seconds; absent while the timer does not run.
    std::optional<double> visibilityTimerInterval() const;
    std::optional<double> fadeTimerInterval() const { return runningFadeInterval; }

    // ------------------------------------------------------------------------------------------------ rules
    // Seconds between two looks; the rate is clamped to 1 to 20 a second.
    static double visibilityInterval(std::int64_t appMonitorRefreshRate);
    // Seconds between two frames of a fade; the rate is clamped to 10 to 60 a second.
    static double fadeInterval(std::int64_t appRefreshRate);
    // The intervals of the two timers; absent: the timer does not run.
    static std::optional<double> visibilityTimer(const SettingsValues &settings, bool paused);
    // `running` is the interval of the timer that runs now. While the timer is wanted, this interval does not change.
    static std::optional<double> fadeTimer(const std::optional<double> &running, bool wanted,
                                           const SettingsValues &settings, bool paused);

private:
    struct Panel {
        AutoHidePanel *panel;
        std::optional<platform::Seconds> lastPointerInside;
    };
    struct Look;
    // The inputs of the last look.
    struct Seen {
        platform::Point pointer;
        AutoHideInputs inputs;
        bool autoHideEnabled, autoHideOverflow;
        friend bool operator==(const Seen &, const Seen &) = default;
    };

    Seen seen(const platform::Point &pointer) const;
    void lookAt(Panel &panel, Look &look);
    void show(Panel &panel, const Look &look, const platform::Rect &screen);
    double fade(Panel &panel, double elapsed);
    void setPanelState(AutoHidePanel &panel, double opacity, bool ignoresMouse);

    platform::MainLoop &loop;
    const SettingsValues &settings;
    AutoHideSurroundings surroundings;
    AutoHideActions actions;
    std::vector<Panel> panels;
    platform::Subscription visibilityLooks, fadeLooks;
    std::optional<double> runningFadeInterval;
    std::optional<Seen> lastSeen;
    platform::Seconds lastLook{0};
    bool resizePaused = false;
};

}  // namespace korvane
