// The part of the controller that AutoHide uses to fade the panels away and to bring them back.
#include "Controllers/TaskbarPanelController.h"

#include "Views/Kit/Popover.h"

#include <QApplication>
#include <algorithm>

namespace korvane {

namespace {

// A menu is a window of its own, but it is the child of the button that opened it.
bool belongsToPanel(const QWidget *menu)
{
    while (menu && !qobject_cast<const TaskbarPanel *>(menu))
        menu = menu->parentWidget();
    return menu != nullptr;
}

// Whether a menu or a list above the bar covers the place. Then the pointer is not over the rows beneath.
bool isCovered(const QPoint &place)
{
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&place](const QWidget *window) {
        return window->isVisible() && window->windowType() != Qt::ToolTip && !qobject_cast<const TaskbarPanel *>(window)
               && window->geometry().contains(place);
    });
}

}  // namespace

AutoHideSurroundings TaskbarPanelController::autoHideSurroundings()
{
    return {.pointer = [this] { return platform.pointer.location(); },
            .screens =
                [this] {
                    std::vector<platform::Rect> frames;
                    for (const platform::Screen &screen : platform.screens.all())
                        frames.push_back(screen.frame);
                    return frames;
                },
            .inputs =
                [this] {
                    return AutoHideInputs{overflowGeometry(), model.taskOverflowRowsVisible(),
                                          !model.openGroupedLists().empty()};
                },
            .held = [this] { return isHeldOpen(); },
            .startMenuContainsMouse =
                [this] { return callbacks.startMenuContainsMouse && callbacks.startMenuContainsMouse(); },
            .paused = [this] { return isPaused(); }};
}

AutoHideActions TaskbarPanelController::autoHideActions()
{
    return {.setTaskbarHidden = [this](bool hidden) { model.setTaskbarHidden(hidden); },
            .setStartMenuOpacity =
                [this](double opacity) {
                    if (callbacks.setStartMenuOpacity)
                        callbacks.setStartMenuOpacity(opacity);
                },
            .onStart =
                [this](const platform::Rect &frame) {
                    if (callbacks.onStart)
                        callbacks.onStart(frame);
                }};
}

bool TaskbarPanelController::isPaused() const
{
    return model.systemIsInactive() && model.settings().expertPauseWhenDisplaySleeps;
}

// Whether something is open above the bar or is dragged over it. The bar must not hide then.
bool TaskbarPanelController::isHeldOpen() const
{
    return Popover::anyOpen() || belongsToPanel(QApplication::activePopupWidget())
           || std::ranges::any_of(allPanels, [](const auto &panel) { return panel->view().bar().drag() != nullptr; });
}

// The pointer matters only if the bar hides, or if rows are tucked away.
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
    // The bar does not change while the user sets a tab's width.
    if (!autoHide.isTaskResizePaused())
        for (const auto &panel : allPanels) {
            const auto inView = panel->inView(place);
            const bool covered = inView && isCovered(panel->view().mapToGlobal(*inView));
            panel->view().pointerMoved(covered ? std::nullopt : inView);
        }
    if (model.settings().autoHideEnabled)
        autoHide.resume();
}

std::optional<platform::Rect> TaskbarPanelController::revealForShortcut()
{
    const auto screens = platform.screens.all();
    const auto main = platform.screens.main();
    return autoHide.reveal(main && *main < screens.size() ? std::optional(screens[*main].frame) : std::nullopt);
}

}  // namespace korvane
