#include "Models/Bar/AutoHide.h"

#include <algorithm>
#include <cmath>

namespace korvane::AutoHide {
namespace {

using platform::Point;
using platform::Rect;

// Far edges do not belong to a rectangle, or a point between two screens would be on both.
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

// The strip alone has all its edges: a pointer at the screen's edge is on the last pixel.
bool isAtEdge(const Rect &frame, const Point &pointer)
{
    return pointer.x >= frame.x && pointer.x <= frame.x + frame.width && pointer.y >= frame.y
           && pointer.y <= frame.y + revealStrip;
}

std::optional<Rect> screenOf(const AutoHidePanel &panel, const std::vector<Rect> &screens)
{
    if (const auto own = panel.screenFrame())
        return own;
    const auto found = std::find_if(screens.begin(), screens.end(),
                                    [&](const Rect &screen) { return intersects(screen, panel.frame()); });
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

void show(AutoHidePanel &panel, const Rect &screen, const AutoHideSituation &situation, const AutoHideActions &actions)
{
    panel.lastPointerInside = situation.now;
    setPanelState(panel, 1, false, situation.settings.expertAvoidRedundantPanelWrites);
    actions.setStartMenuOpacity(1);
    if (std::abs(panel.headingHeight() - situation.geometry.normalHeight) > heightTolerance)
        panel.setHeight(situation.geometry.normalHeight, screen);
}

// The pointer has left a bar that can be seen. Gives the opacity.
double fade(AutoHidePanel &panel, double elapsed, const AutoHideSituation &situation, const AutoHideActions &actions)
{
    const SettingsValues &settings = situation.settings;
    const bool avoid = settings.expertAvoidRedundantPanelWrites;
    if (settings.appRefreshRate == 0) {
        setPanelState(panel, 0, true, avoid);
        actions.setStartMenuOpacity(0);
        return 0;
    }
    const double duration = static_cast<double>(settings.animationDurationMS) / 1000;
    // In this order a quotient that is no number, of nothing by nothing, counts as 0.
    const double value = std::max(0.0, 1 - (elapsed - graceSeconds) / duration);
    setPanelState(panel, value, false, avoid);
    actions.setStartMenuOpacity(value);
    if (value <= hiddenOpacity)
        setPanelState(panel, 0, true, avoid);
    return value;
}

}  // namespace

double visibilityInterval(std::int64_t appMonitorRefreshRate)
{
    return 1.0 / static_cast<double>(std::clamp<std::int64_t>(appMonitorRefreshRate, 1, 20));
}

double fadeInterval(std::int64_t appRefreshRate)
{
    return 1.0 / static_cast<double>(std::clamp<std::int64_t>(appRefreshRate, 10, 60));
}

void setPanelState(AutoHidePanel &panel, double opacity, bool ignoresMouse, bool avoidRedundantWrites)
{
    if (!avoidRedundantWrites || std::abs(panel.contentOpacity().value_or(1) - opacity) > opacityTolerance)
        panel.setContentOpacity(opacity);
    if (!avoidRedundantWrites || panel.ignoresMouseEvents() != ignoresMouse)
        panel.setIgnoresMouseEvents(ignoresMouse);
}

AutoHideOutcome update(std::span<AutoHidePanel *const> panels, const AutoHideSituation &situation,
                       const AutoHideActions &actions)
{
    const SettingsValues &settings = situation.settings;
    const bool tucked = settings.autoHideOverflow && !situation.taskOverflowRowsVisible;
    AutoHideOutcome outcome;
    outcome.allHidden = !panels.empty();
    for (AutoHidePanel *const panel : panels) {
        const auto screen = screenOf(*panel, situation.screens);
        if (!screen)
            continue;
        const bool wasHidden = panel->contentOpacity().value_or(1) <= hiddenOpacity;
        if (!settings.autoHideEnabled) {
            outcome.allHidden = false;
            show(*panel, *screen, situation, actions);
            continue;
        }
        const Rect frame = panel->frame();
        // The empty part of a tall panel whose rows are tucked away is not the bar.
        const double hitHeight = tucked ? situation.geometry.collapsedHeight : frame.height;
        const bool inside = !wasHidden && contains({frame.x, frame.y, frame.width, hitHeight}, situation.pointer);
        const bool active = inside || (wasHidden && isAtEdge(frame, situation.pointer))
                            || actions.startMenuContainsMouse() || situation.listOpen || (situation.held && !wasHidden);
        if (active) {
            outcome.allHidden = false;
            show(*panel, *screen, situation, actions);
            if (wasHidden && settings.lockApplicationsContainerToTaskbar)
                actions.onStart(frame);
            continue;
        }
        if (wasHidden)
            continue;
        outcome.allHidden = false;
        const double elapsed = panel->lastPointerInside ? (situation.now - *panel->lastPointerInside).count() : 0.0;
        if (elapsed < graceSeconds) {
            outcome.waiting = true;
            continue;
        }
        if (fade(*panel, elapsed, situation, actions) > hiddenOpacity)
            outcome.fading = outcome.waiting = true;
        else
            outcome.waiting = true;  // the next look finds it hidden
    }
    return outcome;
}

std::optional<Rect> reveal(std::span<AutoHidePanel *const> panels, const std::optional<Rect> &mainScreen,
                           platform::Seconds now, bool avoidRedundantWrites)
{
    if (panels.empty())
        return std::nullopt;
    for (AutoHidePanel *const panel : panels) {
        setPanelState(*panel, 1, false, avoidRedundantWrites);
        panel->lastPointerInside = now;
    }
    const auto target = std::find_if(panels.begin(), panels.end(),
                                     [&](const AutoHidePanel *panel) { return panel->screenFrame() == mainScreen; });
    return (target == panels.end() ? panels.front() : *target)->frame();
}

std::optional<double> visibilityTimer(const SettingsValues &settings, bool paused)
{
    return paused ? std::nullopt : std::optional(visibilityInterval(settings.appMonitorRefreshRate));
}

std::optional<double> fadeTimer(const std::optional<double> &running, bool wanted, const SettingsValues &settings,
                                bool paused)
{
    if (!wanted)
        return std::nullopt;
    if (running)
        return running;
    return settings.appRefreshRate <= 0 || paused ? std::nullopt : std::optional(fadeInterval(settings.appRefreshRate));
}

}  // namespace korvane::AutoHide
