// One bar: what a person did to it and what follows from that. The bar owns the rows that are held open, the lock, a
// drag, the widths set by hand, the grip that sets them, and the layout that results from all these. The view reads
// them and arranges its widgets. The view also finds out what lies under the pointer and tells the bar.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Models/Bar/OverflowHover.h"
#include "Models/Bar/OverflowReturnLock.h"
#include "Models/Bar/TaskDrag.h"
#include "Models/Bar/TaskResize.h"
#include "Models/Bar/TaskbarPass.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace korvane {

// What a bar tells its view.
struct BarActions {
    // A new layout is needed. Comes from the run loop, only once for any number of changes, and not at all if update()
    // ran before.
    std::function<void()> passWanted;
    // Rows have opened or closed, or the grip has another place. The layout has not changed.
    std::function<void()> rowsChanged;
    // The place under a drag has changed.
    std::function<void()> cueChanged;
};

class Bar {
public:
    Bar(AppModel &model, platform::MainLoop &loop, MeasureText measure, BarActions actions);
    Bar(const Bar &) = delete;
    Bar &operator=(const Bar &) = delete;
    // Gives up a drag, and a width that is just being set by hand.
    ~Bar();

    // ------------------------------------------------------------------------------------------------ the pass
    // Lays the present tasks out over that width, in points, and tells the model how many rows there are.
    void update(double width);
    const TaskbarLayout &layout() const { return current; }
    // Whether the button of the entry at that place of the layout may show something else than before the last
    // update().
    bool buttonChanged(std::size_t entry) const { return allButtonsChanged || changedButtons[entry]; }
    // Null when no entry has that identifier.
    const TaskbarEntry *entry(const std::string &entryID) const;

    // ------------------------------------------------------------------------------------------------ rows
    const OverflowHover &overflowHover() const { return hover; }
    const OverflowReturnLock &overflowReturnLock() const { return lock; }
    // The pointer is over that overflow row, or over no row. `tucked` means that the row shows only its top. `x` counts
    // from the left edge of the screen and is absent when the pointer is on no screen.
    void pointerOverRow(const std::optional<int> &rowID, bool tucked, const std::optional<double> &x);
    void overflowArrowHoverChanged(bool hovered) { hover.overflowArrowHoverChanged(hovered); }
    void clickOverflowArrow() { hover.toggleArrow(model.taskRowsExpanded()); }
    void clickOverflowReturnLock();
    // "Set First" and "Set Last" for the windows that the drag id stands for.
    void setTaskPosition(const std::string &id, const std::set<std::string> &windowIDs, bool first);

    // ------------------------------------------------------------------------------------------------ dragging
    // A drag begins. The drag id stands for those windows. An earlier drag that has not ended is given up.
    void beginDrag(const std::string &dragID, std::set<std::string> windowIDs);
    // Null while nothing is dragged.
    const TaskDrag *drag() const { return currentDrag.get(); }
    // The pointer is over that place, or over no place, at `x` in the view. Returns whether a drop there would be
    // taken.
    DropProposal dragMovedTo(const std::optional<TaskDropPlace> &place, double x);
    // To be called after an update(): tells what lies under a drag that rests.
    void dragRestsOver(const std::optional<TaskDropPlace> &place, double x);
    // The pointer left the bar.
    void dragLeft();
    // Drops what is dragged. If it was closed during the drag, nothing is dropped. Returns whether the drop was taken.
    bool drop(const std::optional<TaskDropPlace> &place, double x);
    // The toolkit's drag is over. Does nothing when it was dropped on this bar.
    void endDrag();

    // ------------------------------------------------------------------------------------------------ widths
    const TaskWidthOverrides::Overrides &taskWidthOverrides() const { return overrides; }
    // The entry whose button shows the grip.
    const std::optional<std::string> &armedResizeID() const { return armedID; }
    // Shows the grip on the entry's button. Does nothing when the grip is already there.
    void armResize(const std::string &entryID);
    // The grip of the armed entry; null while none is armed.
    TaskResize *grip() { return armedID ? resize.get() : nullptr; }

private:
    TaskbarPassInput passInput() const;
    void runPass();
    bool rerunPass(const TaskChanges &changes);
    void noteChangedButtons(const TaskChanges &changes);
    bool groupingChanged();
    void forgetWhatIsGone();
    void letLockFollowGroups();
    void ejectWhatDoesNotFit();
    void endedDrag();
    void disarm();
    void wantPass();
    bool isStillThere(const std::string &dragID) const;

    AppModel &model;
    platform::MainLoop &loop;
    MeasureText measure;
    BarActions actions;
    double width = 0;  // of the last pass
    TaskbarLayout current;
    TaskChanges pending{.everything = true, .list = true, .ids = {}};  // since the last pass
    platform::Subscription taskChanges;
    bool allButtonsChanged = true;
    std::vector<bool> changedButtons;  // one for each entry of the layout
    int reportedRowCount = 0;

    OverflowHover hover;
    OverflowReturnLock lock;
    std::optional<int> pointedRow;  // the overflow row under the pointer
    std::unique_ptr<TaskDrag> currentDrag;
    TaskWidthOverrides::Overrides overrides;
    std::optional<std::string> armedID;
    std::unique_ptr<TaskResize> resize;
    // As they were in the previous pass.
    std::optional<std::pair<std::size_t, std::size_t>> knownMainCounts;
    StringMap knownGroupMembers, knownGroupNames, knownGroupIcons;
    StringSet knownUngroupedWindows;

    bool passIsWanted = false;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);  // posted calls hold it weakly
};

}  // namespace korvane
