#include "Controllers/TaskbarPanelController.h"

#include "Controllers/EaseOut.h"
#include "Views/Metrics.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace korvane {
namespace {

// The toolkit counts from the top like the display's own coordinates, but may have its origin elsewhere.
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
    // It leaves the origin of a screen where the device has it, and counts in points from there.
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
    : model(appModel), platform(system), callbacks(std::move(taskbarCallbacks))
{
    const std::weak_ptr<bool> stillHere = alive;
    model.setTaskResizePauseHandler([this, stillHere](bool paused) {
        if (!stillHere.expired())
            setTaskResizePaused(paused);
    });
    screenObserver = platform.screens.observeChanges([this] { rebuildPanels(); });
    translucencyObserver = platform.panels.observeTranslucency([this] { schedulePass(); });
    modelConnection = model.changed.connect([this] { schedulePass(); });
}

TaskbarPanelController::~TaskbarPanelController() = default;

void TaskbarPanelController::show()
{
    rebuildPanels();
}

void TaskbarPanelController::rebuildPanels()
{
    animations.clear();
    animationTimer.reset();
    allPanels.clear();
    for (const platform::Screen &screen : platform.screens.all())
        allPanels.push_back(makePanel(screen));
    runPass();
}

std::unique_ptr<TaskbarPanel> TaskbarPanelController::makePanel(const platform::Screen &screen)
{
    auto panel =
        std::make_unique<TaskbarPanel>(model, services, platform, screen, toolkitRectangle(platform.screens, screen));
    panel->orderFront();
    return panel;
}

// However many properties change in one turn, the views look once.
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
        panel->view().setTranslucent(translucent);
        panel->view().updateFromModel();
    }
    adjustHeights();
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

void TaskbarPanelController::adjustHeights()
{
    if (resizePaused)
        return;
    const double wanted = overflowGeometry().normalHeight;
    for (const auto &panel : allPanels) {
        const auto running = std::find_if(animations.begin(), animations.end(),
                                          [&](const HeightAnimation &one) { return one.panel == panel.get(); });
        const double heading = running != animations.end() ? running->to : panel->panelHeight();
        if (std::abs(heading - wanted) > metrics::heightTolerance)
            animateHeight(wanted, *panel);
    }
}

void TaskbarPanelController::animateHeight(double height, TaskbarPanel &panel)
{
    std::erase_if(animations, [&](const HeightAnimation &one) { return one.panel == &panel; });
    animations.push_back({&panel, panel.panelHeight(), height, platform.loop.monotonicNow()});
    if (!animationTimer)
        animationTimer = platform.loop.repeat(platform::Seconds(metrics::animationFrameSeconds), platform::Seconds(0),
                                              [this] { animationFrame(); });
}

void TaskbarPanelController::animationFrame()
{
    const auto now = platform.loop.monotonicNow();
    std::erase_if(animations, [&](const HeightAnimation &one) {
        const double time = (now - one.began).count() / metrics::heightAnimationSeconds;
        // The end is set as it is, not as the curve rounds it.
        one.panel->setHeight(time >= 1 ? one.to : one.from + (one.to - one.from) * easeOut(time));
        return time >= 1;
    });
    if (animations.empty())
        animationTimer.reset();
}

void TaskbarPanelController::setTaskResizePaused(bool paused)
{
    resizePaused = paused;
    if (!paused)
        schedulePass();
}

std::optional<platform::Rect> TaskbarPanelController::revealForShortcut()
{
    if (allPanels.empty())
        return std::nullopt;
    const auto screens = platform.screens.all();
    const auto main = platform.screens.main();
    auto target = allPanels.begin();
    if (main && *main < screens.size()) {
        const auto onMain = std::find_if(allPanels.begin(), allPanels.end(),
                                         [&](const auto &panel) { return panel->screen() == screens[*main]; });
        if (onMain != allPanels.end())
            target = onMain;
    }
    model.setTaskbarHidden(false);
    if (callbacks.setStartMenuOpacity)
        callbacks.setStartMenuOpacity(1);
    return (*target)->frame();
}

}  // namespace korvane
