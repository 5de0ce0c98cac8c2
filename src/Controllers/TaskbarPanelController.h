// One panel for each screen: made, rebuilt when screens come and go, and kept as tall as its rows need.
#pragma once

#include "Controllers/TaskbarPanel.h"
#include "Models/AppModel.h"
#include "Models/PanelGeometry.h"
#include "Platform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace korvane {

// What the panels report; rectangles are in desktop coordinates. Those that are not set do nothing.
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
    // Shows the bar for a key and gives the frame of the panel on the screen with the focus; absent without panels.
    std::optional<platform::Rect> revealForShortcut();

    const std::vector<std::unique_ptr<TaskbarPanel>> &panels() const { return allPanels; }
    // Cached: worked out anew only when one of the values it depends on changed.
    const OverflowGeometry &overflowGeometry();
    // While a task is resized by hand, no panel changes its height under the pointer.
    void setTaskResizePaused(bool paused);
    bool isTaskResizePaused() const { return resizePaused; }

private:
    struct HeightAnimation;

    void rebuildPanels();
    std::unique_ptr<TaskbarPanel> makePanel(const platform::Screen &screen);
    void schedulePass();
    void runPass();
    void adjustHeights();
    void animateHeight(double height, TaskbarPanel &panel);
    void animationFrame();

    AppModel &model;
    platform::Platform &platform;
    TaskbarCallbacks callbacks;
    ViewServices services;
    std::vector<std::unique_ptr<TaskbarPanel>> allPanels;
    std::vector<HeightAnimation> animations;
    platform::Subscription animationTimer, screenObserver, translucencyObserver;
    Connection modelConnection;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);  // what was posted holds it weakly
    bool passScheduled = false, resizePaused = false;
    std::optional<GeometryKey> cachedGeometryKey;
    OverflowGeometry cachedGeometry;
};

}  // namespace korvane
