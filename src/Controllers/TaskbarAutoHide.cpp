// The part of the controller that fades the panels away and brings them back.
#include "Controllers/TaskbarPanelController.h"

#include "Views/Kit/Popover.h"

#include <QApplication>
#include <algorithm>

namespace korvane {

using platform::Seconds;

namespace {

// A menu is a window of its own, but the child of the button that opened it.
bool belongsToPanel(const QWidget *menu)
{
    while (menu && !qobject_cast<const TaskbarPanel *>(menu))
        menu = menu->parentWidget();
    return menu != nullptr;
}

// By a menu or a list above the bar: rows beneath it are not what the pointer means.
bool isCovered(const QPoint &place)
{
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&place](const QWidget *window) {
        return window->isVisible() && window->windowType() != Qt::ToolTip && !qobject_cast<const TaskbarPanel *>(window)
               && window->geometry().contains(place);
    });
}

}  // namespace

bool TaskbarPanelController::isPaused() const
{
    return model.systemIsInactive() && model.settings().expertPauseWhenDisplaySleeps;
}

void TaskbarPanelController::configureVisibilityTimer()
{
    visibilityTimer.reset();
    const auto interval = AutoHide::visibilityTimer(model.settings(), isPaused());
    if (interval)
        visibilityTimer = platform.loop.repeat(Seconds(*interval), Seconds(*interval * AutoHide::timerTolerance),
                                               [this] { timerDidFire(); });
}

// After a rest. The looks that were left out would have found the pointer where it was.
void TaskbarPanelController::resumeVisibilityTimer()
{
    if (visibilityTimer || resizePaused || isPaused())
        return;
    const Seconds now = platform.loop.monotonicNow();
    for (const auto &panel : allPanels)
        if (panel->lastPointerInside == lastLook)
            panel->lastPointerInside = now;
    lastLook = now;
    configureVisibilityTimer();
}

std::optional<double> TaskbarPanelController::visibilityTimerInterval() const
{
    return visibilityTimer ? AutoHide::visibilityTimer(model.settings(), false) : std::nullopt;
}

void TaskbarPanelController::startFadeTimer()
{
    const auto interval = AutoHide::fadeTimer(fadeInterval, true, model.settings(), isPaused());
    if (interval == fadeInterval)
        return;
    fadeInterval = interval;
    fadeTimer = platform.loop.repeat(Seconds(*interval), Seconds(*interval * AutoHide::timerTolerance),
                                     [this] { timerDidFire(); });
}

void TaskbarPanelController::stopFadeTimer()
{
    fadeTimer.reset();
    fadeInterval.reset();
}

void TaskbarPanelController::restartFadeTimerIfActive()
{
    if (!fadeTimer)
        return;
    stopFadeTimer();
    startFadeTimer();
}

void TaskbarPanelController::applySystemPause(bool paused)
{
    if (paused) {
        visibilityTimer.reset();
        stopFadeTimer();
        follower.stop();
        return;
    }
    if (resizePaused)
        return;
    configureVisibilityTimer();
    follow();
    updateAutoHide();
}

// By what is open above the bar or carried over it: it must not vanish beneath.
bool TaskbarPanelController::isHeldOpen() const
{
    return Popover::anyOpen() || belongsToPanel(QApplication::activePopupWidget())
           || std::any_of(allPanels.begin(), allPanels.end(),
                          [](const auto &panel) { return panel->view().dragState().draggedTaskID.has_value(); });
}

TaskbarPanelController::Inputs TaskbarPanelController::inputs()
{
    const SettingsValues &settings = model.settings();
    return {settings.autoHideEnabled, settings.autoHideOverflow, model.taskOverflowRowsVisible(),
            !model.openGroupedLists().empty(), overflowGeometry()};
}

std::vector<AutoHidePanel *> TaskbarPanelController::autoHidePanels() const
{
    std::vector<AutoHidePanel *> list;
    for (const auto &panel : allPanels)
        list.push_back(panel.get());
    return list;
}

void TaskbarPanelController::updateAutoHide()
{
    std::vector<platform::Rect> screens;
    for (const platform::Screen &screen : platform.screens.all())
        screens.push_back(screen.frame);
    const bool held = isHeldOpen();
    bool heldByMenu = false;  // by the start menu, which may close beneath a pointer that rests
    const platform::Point pointer = platform.pointer.location();
    lastLook = platform.loop.monotonicNow();
    const auto outcome = AutoHide::update(autoHidePanels(),
                                          {.now = lastLook,
                                           .pointer = pointer,
                                           .screens = screens,
                                           .geometry = overflowGeometry(),
                                           .settings = model.settings(),
                                           .taskOverflowRowsVisible = model.taskOverflowRowsVisible(),
                                           .listOpen = !model.openGroupedLists().empty(),
                                           .held = held},
                                          {[&] {
                                               const bool contained = callbacks.startMenuContainsMouse
                                                                      && callbacks.startMenuContainsMouse();
                                               heldByMenu = heldByMenu || contained;
                                               return contained;
                                           },
                                           [this](double opacity) {
                                               if (callbacks.setStartMenuOpacity)
                                                   callbacks.setStartMenuOpacity(opacity);
                                           },
                                           [this](const platform::Rect &frame) {
                                               if (callbacks.onStart)
                                                   callbacks.onStart(frame);
                                           }});
    model.setTaskbarHidden(outcome.allHidden);
    if (outcome.fading)
        startFadeTimer();
    else
        stopFadeTimer();
    // Looks that can find nothing new rest until the pointer moves or the model changes.
    const bool settled = !outcome.waiting && !held && !heldByMenu && lastPointer == pointer && lastInputs == inputs();
    lastPointer = pointer;
    lastInputs = inputs();
    if (settled)
        visibilityTimer.reset();
}

// The pointer matters to a bar that hides, and to rows that are tucked away.
void TaskbarPanelController::follow()
{
    const SettingsValues &settings = model.settings();
    const bool matters = settings.autoHideEnabled || (settings.autoHideOverflow && model.taskOverflowRowCount() > 1);
    if (matters && !isPaused())
        follower.start();
    else
        follower.stop();
}

void TaskbarPanelController::pointerMoved(platform::Point place)
{
    // The bar holds still while a width is being set on it.
    if (!resizePaused)
        for (const auto &panel : allPanels) {
            const auto inView = panel->inView(place);
            const bool covered = inView && isCovered(panel->view().mapToGlobal(*inView));
            panel->view().pointerMoved(covered ? std::nullopt : inView);
        }
    if (model.settings().autoHideEnabled)
        resumeVisibilityTimer();
}

std::optional<platform::Rect> TaskbarPanelController::revealForShortcut()
{
    const auto screens = platform.screens.all();
    const auto main = platform.screens.main();
    const auto mainFrame = main && *main < screens.size() ? std::optional(screens[*main].frame) : std::nullopt;
    const auto frame = AutoHide::reveal(autoHidePanels(), mainFrame, platform.loop.monotonicNow(),
                                        model.settings().expertAvoidRedundantPanelWrites);
    if (!frame)
        return std::nullopt;
    model.setTaskbarHidden(false);
    if (callbacks.setStartMenuOpacity)
        callbacks.setStartMenuOpacity(1);
    resumeVisibilityTimer();
    return frame;
}

}  // namespace korvane
