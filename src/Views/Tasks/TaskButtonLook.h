// What a task's button shows, decided without a widget.
#pragma once

#include "Models/AppModel/AppModel.h"

#include <optional>
#include <string>

namespace korvane {

// A strip along the edge of a button.
struct Strip {
    Rgb color;
    double opacity = 1;
    friend bool operator==(const Strip &, const Strip &) = default;
};

struct TaskButtonLook {
    std::string text;
    std::string toolTip;
    ImagePtr icon;
    std::string glyph;  // in place of the icon; empty for none
    bool isActive = false;
    double fillOpacity = 0;    // of white, or of the colour
    std::optional<Rgb> color;  // absent: white
    std::optional<Strip> strip;
    bool stripAtTop = false;
    Choice<NotificationBadgeStyle> markStyle = NotificationBadgeStyle::none;  // of the notification mark
    bool chevron = false;                                                     // shown when the button opens a list
    bool closeGlyph = false;
    friend bool operator==(const TaskButtonLook &, const TaskButtonLook &) = default;
};

namespace TaskButtonLooks {

TaskButtonLook ofItem(const AppModel &model, const RunningAppItem &item, bool stripAtTop);
TaskButtonLook ofGroup(const AppModel &model, const RunningAppGroup &group, bool stripAtTop);
// The look of a window in its group's list. It has neither fill nor colour.
TaskButtonLook ofWindowRow(const AppModel &model, const RunningAppItem &item);

}  // namespace TaskButtonLooks
}  // namespace korvane
