// The lengths that decide where things stand on a bar. In points. The rules calculate with them and the views draw with
// them.
#pragma once

namespace korvane::LayoutMetrics {

inline constexpr int barHeight = 34;

// The left end of the main row: the start button, then the launchers.
inline constexpr int startButtonWidth = 50;
inline constexpr int launchersPadding = 8;
inline constexpr int launcherSpacing = 5;

// A task's button
inline constexpr int buttonSpacing = 4;  // between two buttons
inline constexpr int buttonPadding = 7;
inline constexpr int buttonIconSize = 25;
inline constexpr int iconTextSpacing = 7;
inline constexpr int besideTitle = 2 * buttonPadding + buttonIconSize + iconTextSpacing;
inline constexpr int groupRoom = 20;        // added to a single window's room, beside a group's title
inline constexpr int customGroupRoom = 16;  // added to another group's room

// The right end of the main row, which is kept free of tasks
inline constexpr int trailingControlsWidth = 124;
inline constexpr int mediaControlsRoom = 107;
inline constexpr int attentionMarkRoom = 23;  // beside the media controls

// An overflow row's card
inline constexpr int cardPadding = 5;
inline constexpr int endCapWidth = 18;
inline constexpr int rowEndRoom = endCapWidth + 2 * cardPadding;  // what a row needs besides its tasks and its buffer
// The empty row that carries the media controls while no task overflows.
inline constexpr int controlsRowBufferWidth = 114;
inline constexpr int controlsRowWidth = controlsRowBufferWidth + rowEndRoom;

static_assert(besideTitle == 46 && rowEndRoom == 28 && controlsRowWidth == 142);

}  // namespace korvane::LayoutMetrics
