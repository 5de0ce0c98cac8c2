// Computes how many tasks stay on the main row, how wide each task is, and how the other tasks form overflow rows. The
// input is the screen's width, the room of the fixed controls and the wanted width of each task. Pure. The same input
// gives the same result to the last bit, because the sums are taken in one fixed order. Lengths are points.
#pragma once

#include <span>
#include <vector>

namespace korvane {

struct OverflowRow {
    int id = 0;            // 1 for the row nearest the bar
    int lower = 0;         // index in the task list of the row's first task
    int count = 0;         // tasks on the row
    bool reversed = true;  // laid out right to left, the first task at the right end
    double leading = 0;    // x of the row's left edge on the screen
    std::vector<double> widths;
    double height = 0;
    double bufferWidth = 0;  // of the buffer tab at the row's right end
    friend bool operator==(const OverflowRow &, const OverflowRow &) = default;
};

struct TaskLayout {
    std::vector<double> widths;             // of every task, main row first
    int mainCount = 0;                      // leading tasks on the main row
    std::vector<OverflowRow> overflowRows;  // nearest the bar first
    friend bool operator==(const TaskLayout &, const TaskLayout &) = default;
};

struct MainRow {
    int count = 0;
    std::vector<double> widths;
    friend bool operator==(const MainRow &, const MainRow &) = default;
};

namespace TaskLayoutEngine {

inline constexpr double minimumTabWidth = 64;
inline constexpr double firstRowBufferWidth = 96;
inline constexpr double bufferReductionPerRow = 32;
inline constexpr double firstRowLimit = 400;  // keeps the area above the start button and the launchers clear
inline constexpr double firstRowHeight = 34;
inline constexpr double rowHeightReduction = 2;
inline constexpr double minimumRowHeight = 28;

// Height of the overflow row with that zero-based number.
double rowHeight(int rowNumber);

using Widths = std::span<const double>;
// A null pointer means a minimum of 64 for every task. A list that is shorter than the list of tasks is a programming
// error that ends the process.
using MinimumWidths = const std::vector<double> *;

// How many leading widths fit side by side. The first always fits, and less room than 64 counts as 64.
int packedCount(Widths widths, double available);
// The same, when the row may be squeezed to take in one more task.
int mainCapacity(Widths widths, double available);
// The main row's tasks and their widths. Without packing, exactly one more task is taken in if at most half of it
// sticks out and the row can give that much. With packing, every task counts with its minimum width.
MainRow compressedMainRow(Widths widths, double available, MinimumWidths minimumWidths = nullptr,
                          bool packToMinimums = false);
TaskLayout makeLayout(double screenWidth, double quicklyLaunchRightEdge, double mainTrailingControlsWidth,
                      Widths widths, MinimumWidths minimumWidths, bool packMainRowToMinimums = false);
// The caller has fixed which tasks belong to the main row. No other task moves onto it, even if there is room. Main
// tasks that do not fit come first on the overflow rows.
TaskLayout makeLockedLayout(double screenWidth, double quicklyLaunchRightEdge, double mainTrailingControlsWidth,
                            Widths mainWidths, Widths overflowWidths, MinimumWidths mainMinimumWidths,
                            bool packMainRowToMinimums = false);

}  // namespace TaskLayoutEngine
}  // namespace korvane
