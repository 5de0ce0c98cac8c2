// Keeps one panel for each screen. The panels are made again when screens come and go, and are as tall as their rows
// need. They fade away when the pointer has left them and come back at the screen's edge.
#pragma once

#include "Controllers/TaskbarPanel.h"
#include "Models/AppModel/AppModel.h"
#include "Models/Bar/AutoHide.h"
#include "Models/Bar/PanelGeometry.h"
#include "Models/Bar/PointerFollower.h"
#include "Ports/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace korvane {

// What the panels report. Rectangles are in desktop coordinates. Functions that are not set are not called.
struct TaskbarCallbacks {
    std::function<void(const platform::Rect &)> onStart, onStartHover;
    std::function<void()> showSettings;
    std::function<bool()> startMenuContainsMouse;
    std::function<void(double)> setStartMenuOpacity;
};

class TaskbarPanelController {
public:
    TaskbarPanelController(AppModel &model, platform::Platform &platform, TaskbarCallbacks callbacks);
    ~TaskbarPanelController();

    // Makes the panels.
    void show();
    // Shows the bar when its key is pressed. Returns the frame of the panel on the screen with the focus; absent
    // without panels.
    std::optional<platform::Rect> revealForShortcut();

    const std::vector<std::unique_ptr<TaskbarPanel>> &panels() const { return allPanels; }
    // Cached: computed again only when one of its inputs has changed.
    const OverflowGeometry &overflowGeometry();
    // While a task is resized by hand, no panel changes its height or fades under the pointer.
    void setTaskResizePaused(bool paused);
    bool isTaskResizePaused() const { return autoHide.isTaskResizePaused(); }

    // Checks the pointer once: shows, fades or hides each panel, and updates its height.
    void updateAutoHide() { autoHide.update(); }
    // The interval between two of these checks. Absent when only the pointer or the model can cause a change.
    std::optional<double> visibilityTimerInterval() const { return autoHide.visibilityTimerInterval(); }
    std::optional<double> fadeTimerInterval() const { return autoHide.fadeTimerInterval(); }

private:
    struct HeightAnimation;

    void rebuildPanels();
    std::unique_ptr<TaskbarPanel> makePanel(const platform::Screen &screen);
    void schedulePass();
    void runPass();
    void propertyPublished(Property property);
    void adjustHeights();
    void animateHeight(double height, TaskbarPanel &panel);
    void animationFrame();

    AutoHideSurroundings autoHideSurroundings();
    AutoHideActions autoHideActions();
    void applySystemPause(bool paused);
    bool isPaused() const;
    bool isHeldOpen() const;
    void follow();
    void pointerMoved(platform::Point place);

    AppModel &model;
    platform::Platform &platform;
    TaskbarCallbacks callbacks;
    ViewServices services;
    std::vector<std::unique_ptr<TaskbarPanel>> allPanels;
    std::vector<HeightAnimation> animations;
    platform::Subscription animationTimer, screenObserver, translucencyObserver;
    AutoHide autoHide;
    PointerFollower follower;
    platform::Subscription modelObservation, propertyObservation;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);  // posted calls hold it weakly
    bool passScheduled = false, shown = false;
    std::int64_t knownMonitorRate, knownFadeRate;
    std::pair<bool, bool> knownPause;
    std::optional<GeometryKey> cachedGeometryKey;
    OverflowGeometry cachedGeometry;
};

}  // namespace korvane
