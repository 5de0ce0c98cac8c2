// The rules of the small controls at the end of the bar, without any widget: symbols, intervals, offsets, and the two
// state machines behind the popovers.
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

// Names of symbols. Levels are compared in 32 bits, as they are stored.
std::string_view brightnessSymbol(float level);
std::string_view volumeSymbol(float level);
// Seconds between two looks at the clock: the setting, clamped to 1 to 2.
std::int64_t clockInterval(std::int64_t refreshSeconds);
// By how many points the attention mark is moved down.
double attentionBadgeYOffset(bool compact, const Choice<NotificationBadgeStyle> &style);
// "45%"
int percent(float level);

}  // namespace TrayRules

// A list that opens on a click, or when the pointer rests.
class HoverList {
public:
    // `changed` is called when the list has to open or close.
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
    std::function<bool(float)> set;      // false when it could not be set; the control then does not take the event
    std::function<double()> scrollRate;  // percent per event of the wheel
    std::function<void()> changed;       // the level has changed, or the slider has opened or closed
};

// A button for the brightness or the volume. Its slider shows while the wheel turns or after a click.
class LevelControl {
public:
    static constexpr platform::Seconds sliderDismissal{1.5};

    LevelControl(platform::MainLoop &loop, LevelControlActions actions);

    // To be called when the control appears.
    void readSystem();
    void click();
    // Returns whether the control took the event.
    bool scroll(double delta);
    // The slider was moved.
    void slide(float level);
    // The popover was closed by other means.
    void dismissed();
    // The control disappears: a pending call that closes the slider is cancelled.
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
