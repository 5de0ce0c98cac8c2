#include "Models/Bar/Bar.h"

#include <algorithm>

namespace korvane {

Bar::Bar(AppModel &appModel, platform::MainLoop &mainLoop, MeasureText measureText, BarActions owner)
    : model(appModel), loop(mainLoop), measure(std::move(measureText)), actions(std::move(owner)),
      hover(mainLoop,
            {[this](bool visible) { model.setTaskOverflowRowsVisible(visible); },
             [this](bool expanded) { model.setTaskRowsExpanded(expanded); }, [this] { actions.rowsChanged(); }},
            appModel.settings().autoHideOverflow),
      knownGroupMembers(appModel.settings().customGroupMembers)
{
    taskChanges = model.tasksChanged.add([this](const TaskChanges &changes) { pending.merge(changes); });
}

Bar::~Bar()
{
    // The view must not be called any more.
    actions = {[] {}, [] {}, [] {}};
    currentDrag.reset();
    if (resize)
        resize->cancelled();
}

void Bar::update(double newWidth)
{
    passIsWanted = false;
    hover.setAutoHideOverflow(model.settings().autoHideOverflow);
    pending.list = pending.list || width != newWidth;
    const bool regrouped = groupingChanged();
    pending.everything = pending.everything || regrouped;
    width = newWidth;
    // Changes that happen during this pass belong to the next pass.
    const TaskChanges changes = std::exchange(pending, {});
    if (changes.everything || changes.list || !rerunPass(changes)) {
        forgetWhatIsGone();
        runPass();
        letLockFollowGroups();
        noteChangedButtons(changes);
    }
    ejectWhatDoesNotFit();
    // If the task of the grip is gone, the grip must not keep the list from changing any longer.
    if (armedID && !entry(*armedID))
        disarm();
    // The bars of all screens share one count, and the last writer wins. So each bar reports only its own changes.
    if (std::exchange(reportedRowCount, current.rowCount) != current.rowCount)
        model.setTaskOverflowRowCount(current.rowCount);
}

const TaskbarEntry *Bar::entry(const std::string &entryID) const
{
    const auto found = std::ranges::find(current.entries, entryID, &TaskbarEntry::id);
    return found == current.entries.end() ? nullptr : &*found;
}

TaskbarPassInput Bar::passInput() const
{
    return {.runningApps = model.runningApps(),
            .settingsTask = model.settingsTaskItem(),
            .settings = model.settings(),
            .quicklyLaunchItemCount = 0,
            .width = width,
            .showsAttentionIndicator = model.shouldShowTaskbarAttentionIndicator(),
            .taskWidthOverrides = overrides,
            .overflowReturnLocked = lock.overflowReturnLocked(),
            .lockedMainWindowIDs = lock.lockedMainWindowIDs()};
}

void Bar::runPass()
{
    current = TaskbarPass::run(passInput(), measure);
}

// When the list is the same and only single tasks have changed, only these tasks are measured and only their buttons
// are set.
bool Bar::rerunPass(const TaskChanges &changes)
{
    std::vector<std::size_t> places;
    for (const std::string &id : changes.ids)
        if (const auto place = model.placeOfTask(id))
            places.push_back(*place);
    const auto entries = TaskbarPass::rerun(current, passInput(), places, measure);
    if (!entries)
        return false;
    allButtonsChanged = false;
    changedButtons.assign(current.entries.size(), false);
    for (const std::size_t changed : *entries)
        changedButtons[changed] = true;
    return true;
}

// After a pass over the whole list. Every group counts as changed, because its windows are not compared.
void Bar::noteChangedButtons(const TaskChanges &changes)
{
    allButtonsChanged = changes.everything;
    changedButtons.assign(current.entries.size(), false);
    if (allButtonsChanged)
        return;
    const auto settingsTask = model.settingsTaskItem();
    for (std::size_t i = 0; i < current.entries.size(); ++i) {
        const TaskbarEntry &one = current.entries[i];
        changedButtons[i] = one.group || changes.ids.contains(one.id) || (settingsTask && settingsTask->id == one.id);
    }
}

// Many different operations make and dissolve groups. So the settings that they write are compared.
bool Bar::groupingChanged()
{
    const SettingsValues &settings = model.settings();
    const bool changed = knownGroupMembers != settings.customGroupMembers
                         || knownGroupNames != settings.customGroupNames || knownGroupIcons != settings.customGroupIcons
                         || knownUngroupedWindows != settings.forcedUngroupedWindows;
    if (changed) {
        knownGroupNames = settings.customGroupNames;
        knownGroupIcons = settings.customGroupIcons;
        knownUngroupedWindows = settings.forcedUngroupedWindows;
    }
    return changed;
}

void Bar::forgetWhatIsGone()
{
    const auto settingsTask = model.settingsTaskItem();
    TaskWidthOverrides::prune(overrides, model.runningApps(), model.settings().customGroupMembers,
                              settingsTask ? std::optional(settingsTask->id) : std::nullopt);
    if (!lock.overflowReturnLocked())
        return;
    OverflowReturnLock::WindowIDs live;
    for (const RunningAppItem &item : model.runningApps())
        live.insert(item.id);
    if (settingsTask)
        live.insert(settingsTask->id);
    lock.pruneLockedMainWindowIDs(live);
}

// A window that has joined a group on the main row is now on the main row too.
void Bar::letLockFollowGroups()
{
    if (knownGroupMembers == model.settings().customGroupMembers)
        return;
    knownGroupMembers = model.settings().customGroupMembers;
    const auto named = lock.lockedMainWindowIDs().size();
    lock.retainLockedMainGroupMembers(current.entries);
    if (named != lock.lockedMainWindowIDs().size())
        runPass();
}

// What the layout has pushed out of the main row stays out. Each round removes windows from the lock or ends the loop.
void Bar::ejectWhatDoesNotFit()
{
    const auto mainCounts = [this] { return std::pair(current.mainCount, current.partitionMainCount); };
    while (knownMainCounts && *knownMainCounts != mainCounts()) {
        knownMainCounts = mainCounts();
        const auto named = lock.lockedMainWindowIDs().size();
        lock.ejectNonfittingLockedMainEntries(current.entries, current.mainCount);
        if (named == lock.lockedMainWindowIDs().size())
            break;
        runPass();
        noteChangedButtons({.everything = true, .list = true, .ids = {}});
    }
    knownMainCounts = mainCounts();
}

void Bar::wantPass()
{
    pending.list = true;
    if (passIsWanted)
        return;
    passIsWanted = true;
    loop.post([this, stillHere = std::weak_ptr<bool>(alive)] {
        if (!stillHere.expired() && passIsWanted)
            actions.passWanted();
    });
}

// ---------------------------------------------------------------------------------------------------- rows

void Bar::pointerOverRow(const std::optional<int> &rowID, bool tucked, const std::optional<double> &x)
{
    if (currentDrag && rowID && tucked)
        hover.revealForDrag();
    if (rowID == pointedRow)
        return;
    if (const auto left = std::exchange(pointedRow, rowID))
        hover.overflowHoverChanged(false, *left, x);
    if (rowID)
        hover.overflowHoverChanged(true, *rowID, x);
}

void Bar::clickOverflowReturnLock()
{
    lock.toggle(current.mainCount, current.entries);
    wantPass();
}

void Bar::setTaskPosition(const std::string &id, const std::set<std::string> &windowIDs, bool first)
{
    lock.taskPositionSet(windowIDs, first, current.hasOverflow);
    model.setTaskPosition(id, first);
    wantPass();
}

// ---------------------------------------------------------------------------------------------------- dragging

void Bar::beginDrag(const std::string &dragID, std::set<std::string> windowIDs)
{
    endDrag();
    currentDrag = std::make_unique<TaskDrag>(dragID, std::move(windowIDs), TaskDrag::Surroundings{model, hover, lock});
}

DropProposal Bar::dragMovedTo(const std::optional<TaskDropPlace> &place, double x)
{
    if (!currentDrag)
        return DropProposal::none;
    const DropProposal proposal = currentDrag->movedTo(place, x, current);
    actions.cueChanged();
    return proposal;
}

void Bar::dragRestsOver(const std::optional<TaskDropPlace> &place, double x)
{
    if (currentDrag)
        currentDrag->layoutChanged(place, x, current);
}

void Bar::dragLeft()
{
    if (!currentDrag)
        return;
    currentDrag->left();
    actions.cueChanged();
}

bool Bar::isStillThere(const std::string &dragID) const
{
    return entry(dragID) || !model.windowsForDragID(dragID).empty();
}

bool Bar::drop(const std::optional<TaskDropPlace> &place, double x)
{
    if (!currentDrag)
        return false;
    const bool taken = isStillThere(currentDrag->draggedTaskID()) && currentDrag->drop(place, x, current);
    endedDrag();
    return taken;
}

void Bar::endDrag()
{
    if (currentDrag)
        endedDrag();
}

void Bar::endedDrag()
{
    // The drag gives itself up if it was not dropped. When it calls back meanwhile, there is no current drag any more.
    const auto ended = std::move(currentDrag);
    ended->giveUp();
    actions.cueChanged();
    wantPass();
}

// ---------------------------------------------------------------------------------------------------- widths

void Bar::armResize(const std::string &entryID)
{
    if (armedID == entryID)
        return;
    disarm();
    armedID = entryID;
    resize = std::make_unique<TaskResize>(TaskResizeActions{
        [this] { model.beginTaskResize(); }, [this, entryID](double newWidth) { overrides[entryID] = newWidth; },
        [this] { model.endTaskResize(); },
        [this] {
            armedID.reset();
            wantPass();
        }});
    actions.rowsChanged();
}

void Bar::disarm()
{
    armedID.reset();
    if (const auto grip = std::move(resize))
        grip->cancelled();
}

}  // namespace korvane
