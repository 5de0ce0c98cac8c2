// When the bars fade away and when they come back, decided from the pointer's place and the clock. Looks several times
// a second while something may change, more often while a fade runs, and not at all while nothing can. A fade is worked
// out from the time that has passed, so that a late look does not slow it.
#pragma once

#include "Models/Bar/PanelGeometry.h"
#include "Models/Settings/SettingsTable.h"
#include "Ports/MainLoop.h"
#include "Ports/Values/Geometry.h"

#include <functional>
#include <optional>
#include <vector>

namespace korvane {

// A panel as the machine sees and moves it.
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
};

// What a look depends on beside the settings, the pointer and the clock. Cheap to ask for.
struct AutoHideInputs {
    OverflowGeometry geometry;
    bool taskOverflowRowsVisible = false;
    bool listOpen = false;  // a window list, which brings hidden bars back as well
    friend bool operator==(const AutoHideInputs &, const AutoHideInputs &) = default;
};

// What the machine asks of its owner at a look.
struct AutoHideSurroundings {
    std::function<platform::Point()> pointer;
    std::function<std::vector<platform::Rect>()> screens;
    std::function<AutoHideInputs()> inputs;
    // Something is open above the bars or carried over them: none vanishes beneath it.
    std::function<bool()> held;
    std::function<bool()> startMenuContainsMouse;
    // The screens sleep, or the session is another one's: nothing is looked at.
    std::function<bool()> paused;
};

// What the machine tells its owner, beside what it does to the panels.
struct AutoHideActions {
    std::function<void(bool)> setTaskbarHidden;
    std::function<void(double)> setStartMenuOpacity;
    std::function<void(const platform::Rect &)> onStart;
};

// What one look has found.
struct AutoHideOutcome {
    bool allHidden = false;
    bool fading = false;   // the quick timer is needed
    bool waiting = false;  // a grace time runs out or a fade goes on: the next look may find something else
};

class AutoHide {
public:
    static constexpr double graceSeconds = 0.2;
    static constexpr double hiddenOpacity = 0.01;      // at or below it a panel counts as hidden
    static constexpr double revealStrip = 1;           // of the screen's bottom edge, in points
    static constexpr double heightTolerance = 0.5;     // more is a change
    static constexpr double opacityTolerance = 0.001;  // more is a change, where redundant writes are avoided
    static constexpr double timerTolerance = 0.1;      // part of a timer's interval

    // `settings` are the model's own, and outlive this.
    AutoHide(platform::MainLoop &loop, const SettingsValues &settings, AutoHideSurroundings surroundings,
             AutoHideActions actions);

    // ------------------------------------------------------------------------------------------------ panels
    // A panel that outlives this, or is removed before. The pointer counts as having been on it just now.
    void addPanel(AutoHidePanel &panel) { addPanel(panel, loop.monotonicNow()); }
    void addPanel(AutoHidePanel &panel, std::optional<platform::Seconds> lastPointerInside);
    void removePanels() { panels.clear(); }
    // When the pointer was last seen on it.
    std::optional<platform::Seconds> lastPointerInside(const AutoHidePanel &panel) const;

    // ------------------------------------------------------------------------------------------------ looks
    // One look at the pointer: shows, fades or hides each panel, keeps its height, and lets the timers run or rest.
    AutoHideOutcome update();
    // Shows every panel for a key, and gives the frame of the first one on that screen, else of the first; absent
    // without panels.
    std::optional<platform::Rect> reveal(const std::optional<platform::Rect> &mainScreen);
    // The pointer moved, or a setting did: a timer that rests goes on.
    void resume();
    // The same if anything is not as the last look found it.
    void resumeIfInputsChanged();

    // ------------------------------------------------------------------------------------------------ timers
    // Starts the timer of the looks anew, by the present settings; stops it while paused or a task is resized.
    void configureVisibilityTimer();
    // Nothing while it runs.
    void startFadeTimer();
    void stopFadeTimer();
    // With the present settings; nothing unless it runs.
    void restartFadeTimerIfActive();
    // The system's pause began or ended.
    void pauseChanged();
    // While a task is resized by hand no panel fades under the pointer.
    void setTaskResizePaused(bool paused);
    bool isTaskResizePaused() const { return resizePaused; }
    // Seconds; absent while the timer does not run.
    std::optional<double> visibilityTimerInterval() const;
    std::optional<double> fadeTimerInterval() const { return runningFadeInterval; }

    // ------------------------------------------------------------------------------------------------ rules
    // Seconds between two looks; the rate is held to 1 to 20 a second.
    static double visibilityInterval(std::int64_t appMonitorRefreshRate);
    // Seconds between two frames of a fade; the rate is held to 10 to 60 a second.
    static double fadeInterval(std::int64_t appRefreshRate);
    // The intervals of the two timers; absent: the timer does not run.
    static std::optional<double> visibilityTimer(const SettingsValues &settings, bool paused);
    // `running` is the interval of the timer that runs now, which is left as it is while it is wanted.
    static std::optional<double> fadeTimer(const std::optional<double> &running, bool wanted,
                                           const SettingsValues &settings, bool paused);

private:
    struct Panel {
        AutoHidePanel *panel;
        std::optional<platform::Seconds> lastPointerInside;
    };
    struct Look;
    // What the last look went by.
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
