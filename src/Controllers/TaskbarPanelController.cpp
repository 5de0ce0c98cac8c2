#include "Controllers/TaskbarPanelController.h"

#include "Controllers/EaseOut.h"
#include "Views/Kit/Metrics.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace korvane {
namespace {

// The toolkit counts from the top, like the display's own coordinates, but its origin may be different.
QRect toolkitRectangle(platform::Screens &screens, const platform::Screen &screen)
{
    platform::Rect bounds = screen.number ? screens.displayBounds(*screen.number) : platform::Rect();
    if (bounds.width <= 0) {
        const auto all = screens.all();
        bounds = screen.frame;
        bounds.y =
            (all.empty() ? screen.frame.height : all.front().frame.height) - screen.frame.y - screen.frame.height;
    }
    const QScreen *primary = QGuiApplication::primaryScreen();
    const QPointF origin = primary ? QPointF(primary->geometry().topLeft()) : QPointF();
    // The toolkit keeps the origin of a screen in device pixels and counts in points from there.
    return QRectF(origin.x() + bounds.x * screen.scale, origin.y() + bounds.y * screen.scale, bounds.width,
                  bounds.height)
        .toRect();
}

}  // namespace

struct TaskbarPanelController::HeightAnimation {
    TaskbarPanel *panel;
    double from, to;
    platform::Seconds began;
};

TaskbarPanelController::TaskbarPanelController(AppModel &appModel, platform::Platform &system,
                                               TaskbarCallbacks taskbarCallbacks)
    : model(appModel), platform(system), callbacks(std::move(taskbarCallbacks)),
      autoHide(system.loop, appModel.settings(), autoHideSurroundings(), autoHideActions()),
      follower(system, [this](platform::Point place) { pointerMoved(place); }),
      knownMonitorRate(appModel.settings().appMonitorRefreshRate), knownFadeRate(appModel.settings().appRefreshRate),
      knownPause(appModel.systemIsInactive(), appModel.settings().expertPauseWhenDisplaySleeps)
{
    const std::weak_ptr<bool> stillHere = alive;
    model.setTaskResizePauseHandler([this, stillHere](bool paused) {
        if (!stillHere.expired())
            setTaskResizePaused(paused);
    });
    screenObserver = platform.screens.observeChanges([this] { rebuildPanels(); });
    translucencyObserver = platform.panels.observeTranslucency([this] { schedulePass(); });
    autoHide.configureVisibilityTimer();
    modelObservation = model.changed.add([this] { schedulePass(); });
    propertyObservation = model.published.add([this](Property property) { propertyPublished(property); });
}

TaskbarPanelController::~TaskbarPanelController() = default;

void TaskbarPanelController::show()
{
    shown = true;
    rebuildPanels();
}

void TaskbarPanelController::rebuildPanels()
{
    if (!shown)
        return;
    animations.clear();
    animationTimer.reset();
    autoHide.removePanels();
    allPanels.clear();
    model.setTaskOverflowRowsVisible(false);  // the new views begin with their rows tucked away
    for (const platform::Screen &screen : platform.screens.all())
        allPanels.push_back(makePanel(screen));
    runPass();
    autoHide.configureVisibilityTimer();
}

std::unique_ptr<TaskbarPanel> TaskbarPanelController::makePanel(const platform::Screen &screen)
{
    auto panel =
        std::make_unique<TaskbarPanel>(model, services, platform, screen, toolkitRectangle(platform.screens, screen),
                                       [this](TaskbarPanel &grown, double height) { animateHeight(height, grown); });
    if (callbacks.showSettings)
        panel->view().setShowSettings(callbacks.showSettings);
    autoHide.addPanel(*panel);
    panel->orderFront();
    return panel;
}

// If many properties change in one turn, the views are still updated only once.
void TaskbarPanelController::schedulePass()
{
    if (passScheduled)
        return;
    passScheduled = true;
    platform.loop.post([this, stillHere = std::weak_ptr<bool>(alive)] {
        if (!stillHere.expired())
            runPass();
    });
}

void TaskbarPanelController::runPass()
{
    passScheduled = false;
    const bool translucent = platform.panels.translucencyAvailable();
    for (const auto &panel : allPanels) {
        panel->setTranslucent(translucent);
        panel->reserveStrip(!model.settings().autoHideEnabled);
        panel->view().updateFromModel();
    }
    adjustHeights();
    follow();
    // A timer that was stopped starts again when one of its inputs has changed.
    autoHide.resumeIfInputsChanged();
}

// Handles the properties that the timers depend on. A change takes effect at the next turn, and only if the value
// differs.
void TaskbarPanelController::propertyPublished(Property property)
{
    using V = SettingsValues;
    if (property != &V::appMonitorRefreshRate && property != &V::appRefreshRate
        && property != ModelProperty::systemIsInactive && property != &V::expertPauseWhenDisplaySleeps)
        return;
    platform.loop.post([this, stillHere = std::weak_ptr<bool>(alive)] {
        if (stillHere.expired())
            return;
        const SettingsValues &settings = model.settings();
        if (std::exchange(knownMonitorRate, settings.appMonitorRefreshRate) != settings.appMonitorRefreshRate)
            autoHide.configureVisibilityTimer();
        if (std::exchange(knownFadeRate, settings.appRefreshRate) != settings.appRefreshRate)
            autoHide.restartFadeTimerIfActive();
        const std::pair pause(model.systemIsInactive(), settings.expertPauseWhenDisplaySleeps);
        if (std::exchange(knownPause, pause) != pause)
            applySystemPause(isPaused());
    });
}

const OverflowGeometry &TaskbarPanelController::overflowGeometry()
{
    const SettingsValues &settings = model.settings();
    const GeometryKey key{std::max(0, model.taskOverflowRowCount() - 1), settings.tuckAwayOverflowPixels,
                          settings.overflowCardOverlapPixels, settings.autoHideOverflow, model.taskRowsExpanded()};
    if (cachedGeometryKey != key) {
        cachedGeometry = PanelGeometry::overflowGeometry(key);
        cachedGeometryKey = key;
    }
    return cachedGeometry;
}

// Visible panels follow their rows at once. A panel that is hidden or is fading gets its height when it is back.
void TaskbarPanelController::adjustHeights()
{
    if (autoHide.isTaskResizePaused())
        return;
    const double wanted = overflowGeometry().normalHeight;
    for (const auto &panel : allPanels)
        if (panel->contentOpacity() == 1.0 && std::abs(panel->headingHeight() - wanted) > AutoHide::heightTolerance)
            panel->setHeight(wanted, panel->screen().frame);
}

void TaskbarPanelController::animateHeight(double height, TaskbarPanel &panel)
{
    std::erase_if(animations, [&](const HeightAnimation &one) { return one.panel == &panel; });
    animations.push_back({&panel, panel.panelHeight(), height, platform.loop.monotonicNow()});
    if (!animationTimer)
        animationTimer = platform.loop.repeat(platform::Seconds(Metrics::animationFrameSeconds), platform::Seconds(0),
                                              [this] { animationFrame(); });
}

void TaskbarPanelController::animationFrame()
{
    const auto now = platform.loop.monotonicNow();
    std::erase_if(animations, [&](const HeightAnimation &one) {
        const double time = (now - one.began).count() / Metrics::heightAnimationSeconds;
        // At the end the exact height is set, because the curve could give a rounded one.
        one.panel->setPanelHeight(time >= 1 ? one.to : one.from + (one.to - one.from) * easeOut(time));
        return time >= 1;
    });
    if (animations.empty())
        animationTimer.reset();
}

void TaskbarPanelController::applySystemPause(bool paused)
{
    autoHide.pauseChanged();
    if (paused)
        follower.stop();
    else if (!autoHide.isTaskResizePaused())
        follow();
}

void TaskbarPanelController::setTaskResizePaused(bool paused)
{
    autoHide.setTaskResizePaused(paused);
    if (!paused)
        schedulePass();
}

}  // namespace korvane
