#include "Models/Bar/AutoHide.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvane {
namespace {

using platform::Point;
using platform::Rect;
using platform::Seconds;

// The far edges do not belong to a rectangle. Otherwise a point between two screens would be on both.
bool contains(const Rect &rectangle, const Point &point)
{
    return point.x >= rectangle.x && point.x < rectangle.x + rectangle.width && point.y >= rectangle.y
           && point.y < rectangle.y + rectangle.height;
}

bool intersects(const Rect &left, const Rect &right)
{
    return left.x < right.x + right.width && right.x < left.x + left.width && left.y < right.y + right.height
           && right.y < left.y + left.height;
}

// Only the strip contains all its edges, because a pointer at the screen's edge is on the last pixel.
bool isAtEdge(const Rect &frame, const Point &pointer)
{
    return pointer.x >= frame.x && pointer.x <= frame.x + frame.width && pointer.y >= frame.y
           && pointer.y <= frame.y + AutoHide::revealStrip;
}

std::optional<Rect> screenOf(const AutoHidePanel &panel, const std::vector<Rect> &screens)
{
    if (const auto own = panel.screenFrame())
        return own;
    const auto found = std::find_if(screens.begin(), screens.end(),
                                    [&](const Rect &screen) { return intersects(screen, panel.frame()); });
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

// What one look knows and finds.
struct AutoHide::Look {
    Seconds now;
    Point pointer;
    std::vector<Rect> screens;
    AutoHideInputs inputs;
    bool held = false;
    bool heldByMenu = false;  // by the start menu, which may close while the pointer rests on it
    AutoHideOutcome outcome;
};

AutoHide::AutoHide(platform::MainLoop &mainLoop, const SettingsValues &values, AutoHideSurroundings around,
                   AutoHideActions owner)
    : loop(mainLoop), settings(values), surroundings(std::move(around)), actions(std::move(owner))
{}

void AutoHide::addPanel(AutoHidePanel &panel, std::optional<Seconds> lastInside)
{
    panels.push_back({&panel, lastInside});
}

std::optional<Seconds> AutoHide::lastPointerInside(const AutoHidePanel &panel) const
{
    const auto found = std::ranges::find(panels, &panel, &Panel::panel);
    return found == panels.end() ? std::nullopt : found->lastPointerInside;
}

// ---------------------------------------------------------------------------------------------------- looks

AutoHide::Seen AutoHide::seen(const Point &pointer) const
{
    return {pointer, surroundings.inputs(), settings.autoHideEnabled, settings.autoHideOverflow};
}

AutoHideOutcome AutoHide::update()
{
    Look look{.now = loop.monotonicNow(),
              .pointer = surroundings.pointer(),
              .screens = surroundings.screens(),
              .inputs = surroundings.inputs(),
              .held = surroundings.held(),
              .heldByMenu = false,
              .outcome = {}};
    lastLook = look.now;
    look.outcome.allHidden = !panels.empty();
    for (Panel &panel : panels)
        lookAt(panel, look);
    actions.setTaskbarHidden(look.outcome.allHidden);
    if (look.outcome.fading)
        startFadeTimer();
    else
        stopFadeTimer();
    // If the next look can find nothing new, the timer rests until the pointer moves or the model changes.
    const Seen now = seen(look.pointer);
    const bool settled = !look.outcome.waiting && !look.held && !look.heldByMenu && lastSeen == now;
    lastSeen = now;
    if (settled)
        visibilityLooks.reset();
    return look.outcome;
}

void AutoHide::lookAt(Panel &panel, Look &look)
{
    AutoHidePanel &bar = *panel.panel;
    const auto screen = screenOf(bar, look.screens);
    if (!screen)
        return;
    const bool wasHidden = bar.contentOpacity().value_or(1) <= hiddenOpacity;
    if (!settings.autoHideEnabled) {
        look.outcome.allHidden = false;
        show(panel, look, *screen);
        return;
    }
    const Rect frame = bar.frame();
    // The empty part of a tall panel whose rows are tucked away is not the bar.
    const bool tucked = settings.autoHideOverflow && !look.inputs.taskOverflowRowsVisible;
    const double hitHeight = tucked ? look.inputs.geometry.collapsedHeight : frame.height;
    const auto inStartMenu = [&] {
        const bool contained = surroundings.startMenuContainsMouse();
        look.heldByMenu = look.heldByMenu || contained;
        return contained;
    };
    const bool inside = !wasHidden && contains({frame.x, frame.y, frame.width, hitHeight}, look.pointer);
    const bool active = inside || (wasHidden && isAtEdge(frame, look.pointer)) || inStartMenu() || look.inputs.listOpen
                        || (look.held && !wasHidden);
    if (active) {
        look.outcome.allHidden = false;
        show(panel, look, *screen);
        if (wasHidden && settings.lockApplicationsContainerToTaskbar)
            actions.onStart(frame);
        return;
    }
    if (wasHidden)
        return;
    look.outcome.allHidden = false;
    look.outcome.waiting = true;  // also for the look that finds it hidden
    const double elapsed = panel.lastPointerInside ? (look.now - *panel.lastPointerInside).count() : 0.0;
    if (elapsed >= graceSeconds && fade(panel, elapsed) > hiddenOpacity)
        look.outcome.fading = true;
}

void AutoHide::show(Panel &panel, const Look &look, const Rect &screen)
{
    panel.lastPointerInside = look.now;
    setPanelState(*panel.panel, 1, false);
    actions.setStartMenuOpacity(1);
    if (std::abs(panel.panel->headingHeight() - look.inputs.geometry.normalHeight) > heightTolerance)
        panel.panel->setHeight(look.inputs.geometry.normalHeight, screen);
}

// For a visible bar that the pointer has left. Returns the new opacity.
double AutoHide::fade(Panel &panel, double elapsed)
{
    if (settings.appRefreshRate == 0) {
        setPanelState(*panel.panel, 0, true);
        actions.setStartMenuOpacity(0);
        return 0;
    }
    const double duration = static_cast<double>(settings.animationDurationMS) / 1000;
    // The order of the arguments matters: when 0 is divided by 0, std::max returns 0 and not NaN.
    const double value = std::max(0.0, 1 - (elapsed - graceSeconds) / duration);
    setPanelState(*panel.panel, value, false);
    actions.setStartMenuOpacity(value);
    if (value <= hiddenOpacity)
        setPanelState(*panel.panel, 0, true);
    return value;
}

// Writes only what differs. If redundant writes are not avoided, writes everything.
void AutoHide::setPanelState(AutoHidePanel &panel, double opacity, bool ignoresMouse)
{
    const bool writeAll = !settings.expertAvoidRedundantPanelWrites;
    if (writeAll || std::abs(panel.contentOpacity().value_or(1) - opacity) > opacityTolerance)
        panel.setContentOpacity(opacity);
    if (writeAll || panel.ignoresMouseEvents() != ignoresMouse)
        panel.setIgnoresMouseEvents(ignoresMouse);
}

std::optional<Rect> AutoHide::reveal(const std::optional<Rect> &mainScreen)
{
    if (panels.empty())
        return std::nullopt;
    for (Panel &panel : panels) {
        setPanelState(*panel.panel, 1, false);
        panel.lastPointerInside = loop.monotonicNow();
    }
    actions.setTaskbarHidden(false);
    actions.setStartMenuOpacity(1);
    resume();
    const auto target =
        std::ranges::find(panels, mainScreen, [](const Panel &panel) { return panel.panel->screenFrame(); });
    return (target == panels.end() ? panels.front() : *target).panel->frame();
}

// While the timer rested, the pointer did not move. So a panel that had the pointer at the last look has had it until
// now.
void AutoHide::resume()
{
    if (visibilityLooks || resizePaused || surroundings.paused())
        return;
    const Seconds now = loop.monotonicNow();
    for (Panel &panel : panels)
        if (panel.lastPointerInside == lastLook)
            panel.lastPointerInside = now;
    lastLook = now;
    configureVisibilityTimer();
}

void AutoHide::resumeIfInputsChanged()
{
    if (lastSeen && lastSeen != seen(lastSeen->pointer))
        resume();
}

// ---------------------------------------------------------------------------------------------------- timers

void AutoHide::configureVisibilityTimer()
{
    visibilityLooks.reset();
    const auto interval = visibilityTimer(settings, surroundings.paused());
    if (interval && !resizePaused)
        visibilityLooks = loop.repeat(Seconds(*interval), Seconds(*interval * timerTolerance), [this] { update(); });
}

void AutoHide::startFadeTimer()
{
    const auto interval = fadeTimer(runningFadeInterval, true, settings, surroundings.paused());
    if (interval == runningFadeInterval)
        return;
    runningFadeInterval = interval;
    fadeLooks = loop.repeat(Seconds(*interval), Seconds(*interval * timerTolerance), [this] { update(); });
}

void AutoHide::stopFadeTimer()
{
    fadeLooks.reset();
    runningFadeInterval.reset();
}

void AutoHide::restartFadeTimerIfActive()
{
    if (!fadeLooks)
        return;
    stopFadeTimer();
    startFadeTimer();
}

void AutoHide::pauseChanged()
{
    if (surroundings.paused()) {
        visibilityLooks.reset();
        stopFadeTimer();
    } else if (!resizePaused) {
        configureVisibilityTimer();
        update();
    }
}

void AutoHide::setTaskResizePaused(bool paused)
{
    resizePaused = paused;
    configureVisibilityTimer();
    if (paused)
        stopFadeTimer();
}

std::optional<double> AutoHide::visibilityTimerInterval() const
{
    return visibilityLooks ? visibilityTimer(settings, false) : std::nullopt;
}

// ---------------------------------------------------------------------------------------------------- rules

double AutoHide::visibilityInterval(std::int64_t appMonitorRefreshRate)
{
    return 1.0 / static_cast<double>(std::clamp<std::int64_t>(appMonitorRefreshRate, 1, 20));
}

double AutoHide::fadeInterval(std::int64_t appRefreshRate)
{
    return 1.0 / static_cast<double>(std::clamp<std::int64_t>(appRefreshRate, 10, 60));
}

std::optional<double> AutoHide::visibilityTimer(const SettingsValues &values, bool paused)
{
    return paused ? std::nullopt : std::optional(visibilityInterval(values.appMonitorRefreshRate));
}

std::optional<double> AutoHide::fadeTimer(const std::optional<double> &running, bool wanted,
                                          const SettingsValues &values, bool paused)
{
    if (!wanted)
        return std::nullopt;
    if (running)
        return running;
    return values.appRefreshRate <= 0 || paused ? std::nullopt : std::optional(fadeInterval(values.appRefreshRate));
}

}  // namespace korvane
