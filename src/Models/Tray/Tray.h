// The rules of the small controls at the end of the bar, without a widget: which symbol, how often, where, and the two
// machines behind their popovers.
#pragma once

#include "Models/Base/DelayedTasks.h"
#include "Models/Settings/Choices.h"
#include "Ports/MainLoop.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace korvane {

namespace TrayRules {

// Names of symbols. Levels are compared as they are stored, in 32 bits.
std::string_view brightnessSymbol(float level);
std::string_view volumeSymbol(float level);
// Seconds between two looks at the clock, whatever the setting.
std::int64_t clockInterval(std::int64_t refreshSeconds);
// How far the mark that asks for attention is moved down.
double attentionBadgeYOffset(bool compact, const Choice<NotificationBadgeStyle> &style);
// "45%"
int percent(float level);

}  // namespace TrayRules

// A list that opens by a click, or by a pointer that rests.
class HoverList {
public:
    // `changed` is told when the list is to open or to close.
    HoverList(platform::MainLoop &loop, platform::Seconds wait, std::function<void(bool showing)> changed);

    void hover(bool value);
    void click() { show(!isShowing); }
    // The popover was closed by other means.
    void dismissed() { show(false); }
    bool showing() const { return isShowing; }

private:
    void show(bool value);

    platform::Seconds wait;
    std::function<void(bool)> changed;
    DelayedTasks delayed;
    std::uint64_t hoverToken = 0;
    bool isShowing = false;
};

// What a level control asks of its owner and of the system.
struct LevelControlActions {
    std::function<std::optional<float>()> current;
    std::function<bool(float)> set;      // false: it could not be set, and the event is not this control's
    std::function<double()> scrollRate;  // percent for each event of the wheel
    std::function<void()> changed;       // the level, or whether the slider shows
};

// A button for the brightness or the volume, whose slider shows while the wheel turns or after a click.
class LevelControl {
public:
    static constexpr platform::Seconds sliderDismissal{1.5};

    LevelControl(platform::MainLoop &loop, LevelControlActions actions);

    // At appearance.
    void readSystem();
    void click();
    // Whether the event was this control's.
    bool scroll(double delta);
    // The slider was moved.
    void slide(float level);
    // The popover was closed by other means.
    void dismissed();
    // The control goes away: nothing is to come any more.
    void disappeared();

    float level() const { return currentLevel; }
    bool showingSlider() const { return showing; }

private:
    void scheduleSliderDismiss();

    LevelControlActions actions;
    DelayedTasks delayed;
    DelayedTasks::Handle sliderDismissWorkItem;
    float currentLevel;
    std::optional<float> lastScrolledFrom;  // the system's level at the last step of the wheel
    bool showing = false;
};

}  // namespace korvane
