#include "Models/Tray/Tray.h"

#include <algorithm>
#include <cmath>

namespace korvane {
namespace {

constexpr float lowLevel = 0.34F, highLevel = 0.67F, silence = 0.001F;
constexpr float unknownLevel = 0.5F;
constexpr double smallestDelta = 0.01;

}  // namespace

namespace TrayRules {

std::string_view brightnessSymbol(float level)
{
    if (level < lowLevel)
        return "sun.min.fill";
    return level < highLevel ? "sun.max" : "sun.max.fill";
}

std::string_view volumeSymbol(float level)
{
    if (level <= silence)
        return "speaker.slash.fill";
    if (level < lowLevel)
        return "speaker.wave.1.fill";
    return level < highLevel ? "speaker.wave.2.fill" : "speaker.wave.3.fill";
}

std::int64_t clockInterval(std::int64_t refreshSeconds)
{
    return std::clamp<std::int64_t>(refreshSeconds, 1, 2);
}

double attentionBadgeYOffset(bool compact, const Choice<NotificationBadgeStyle> &style)
{
    if (compact)
        return 0;
    if (style == NotificationBadgeStyle::dot)
        return -7;
    return style == NotificationBadgeStyle::line ? -12 : -4;
}

int percent(float level)
{
    return static_cast<int>(std::lround(level * 100.0F));
}

}  // namespace TrayRules

HoverList::HoverList(platform::MainLoop &loop, platform::Seconds restTime, std::function<void(bool)> observer)
    : wait(restTime), changed(std::move(observer)), delayed(loop)
{}

void HoverList::hover(bool value)
{
    const std::uint64_t token = ++hoverToken;
    if (value)
        delayed.schedule(wait, [this, token] {
            if (token == hoverToken)
                show(true);
        });
}

void HoverList::show(bool value)
{
    if (isShowing == value)
        return;
    isShowing = value;
    changed(value);
}

LevelControl::LevelControl(platform::MainLoop &loop, LevelControlActions owner)
    : actions(std::move(owner)), delayed(loop), currentLevel(actions.current().value_or(unknownLevel))
{}

void LevelControl::readSystem()
{
    const float before = currentLevel;
    if (const auto system = actions.current())
        currentLevel = *system;
    if (currentLevel != before)
        actions.changed();
}

void LevelControl::click()
{
    if (const auto system = actions.current())
        currentLevel = *system;
    showing = !showing;
    actions.changed();
}

bool LevelControl::scroll(double delta)
{
    if (!(std::abs(delta) > smallestDelta))
        return false;
    const double size = actions.scrollRate() / 100;
    const double step = delta > 0 ? size : -size;
    const auto system = actions.current();
    // A screen with few levels rounds a small step to nothing. So the small steps are added up until they make one step
    // of the screen.
    const bool unmoved = showing && system && system == lastScrolledFrom;
    const double from = unmoved ? currentLevel : system.value_or(currentLevel);
    const auto level = static_cast<float>(std::clamp(from + step, 0.0, 1.0));
    if (!actions.set(level))
        return false;
    lastScrolledFrom = system;
    currentLevel = level;
    showing = true;
    scheduleSliderDismiss();
    actions.changed();
    return true;
}

void LevelControl::slide(float level)
{
    currentLevel = level;
    actions.set(level);
    actions.changed();
}

// The previous call is cancelled, because only the last step of the wheel counts.
void LevelControl::scheduleSliderDismiss()
{
    delayed.cancel(sliderDismissWorkItem);
    sliderDismissWorkItem = delayed.schedule(sliderDismissal, [this] { dismissed(); });
}

void LevelControl::dismissed()
{
    if (!showing)
        return;
    showing = false;
    actions.changed();
}

void LevelControl::disappeared()
{
    delayed.cancel(sliderDismissWorkItem);
}

}  // namespace korvane
