// The overflow rows: the lock, drags, and what a hovering pointer opens.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Bar/OverflowHover.h"
#include "Models/Bar/OverflowReturnLock.h"
#include "Models/Bar/TaskDropDelegates.h"
#include "Platform/Simulated/VirtualLoop.h"

#include <map>
#include <memory>
#include <set>
#include <stdexcept>

namespace korvane::vectors {
namespace {

using IDs = std::set<std::string>;

RunningAppItem itemOf(const std::string &id)
{
    RunningAppItem item;
    item.id = id;
    return item;
}

// A list of one string is a window, a longer one a group and its windows.
std::vector<TaskbarEntry> entriesFrom(const Json &list)
{
    std::vector<TaskbarEntry> entries;
    for (const Json &names : list) {
        if (names.size() == 1) {
            entries.push_back(TaskbarEntry::ofItem(itemOf(names.at(0))));
            continue;
        }
        RunningAppGroup group;
        group.id = names.at(0);
        for (std::size_t i = 1; i < names.size(); ++i)
            group.windows.push_back(itemOf(names.at(i)));
        entries.push_back(TaskbarEntry::ofGroup(std::move(group)));
    }
    return entries;
}

Json idsOf(const std::vector<TaskbarEntry> &entries)
{
    Json ids = Json::array();
    for (const TaskbarEntry &entry : entries)
        ids.push_back(entry.id);
    return ids;
}

// Gives the step's own result; null for one without.
Json lockStep(OverflowReturnLock &lock, const Json &step)
{
    const std::string name = step.at(0);
    if (name == "button")
        lock.toggle(step.at(1), entriesFrom(step.at(2)));
    else if (name == "eject")
        lock.ejectNonfittingLockedMainEntries(entriesFrom(step.at(1)), step.at(2));
    else if (name == "retain")
        lock.retainLockedMainGroupMembers(entriesFrom(step.at(1)));
    else if (name == "prune")
        lock.pruneLockedMainWindowIDs(step.at(1).get<IDs>());
    else if (name == "setTaskPosition")
        lock.taskPositionSet(step.at(1).get<IDs>(), step.at(2), step.at(3));
    else if (name == "drag")
        lock.setDraggedWindowIDs(step.at(1).get<IDs>());
    else if (name == "mainDrop")
        lock.recordManualMainDrop();
    else if (name == "overflowDrop")
        lock.recordManualOverflowDrop();
    else if (name == "rowEndDrop")
        lock.recordOverflowRowEndDrop(step.at(1), entriesFrom(step.at(2)), step.at(3));
    else if (name == "partition") {
        const auto [main, overflow] = lock.partitionForLock(entriesFrom(step.at(1)));
        return Json::array({idsOf(main), idsOf(overflow)});
    } else
        throw std::runtime_error("no step " + name);
    return nullptr;
}

// One drag over the targets of a case. Writes down what its drops ask of the model.
class Drag final : public TaskDropRequests {
public:
    explicit Drag(const Json &targets)
    {
        for (const auto &[letter, target] : targets.items())
            delegates[letter] = delegateOf(target);
    }

    Json step(const Json &step)
    {
        const std::string letter = step.at(0), event = step.at(1);
        Json result;
        if (letter == "view") {
            state.draggedTaskID = step.at(2).get<std::string>();
        } else {
            TaskDropDelegate &target = *delegates.at(letter);
            const double x = step.size() > 2 && step.at(2).is_number() ? step.at(2).get<double>() : 0;
            if (event == "dropEntered")
                target.dropEntered(x);
            else if (event == "dropUpdated")
                result = target.dropUpdated(x) == DropProposal::move ? "move" : "none";
            else if (event == "dropExited")
                target.dropExited();
            else if (event == "performDrop")
                result = target.performDrop(x);
            else
                throw std::runtime_error("no event " + event);
        }
        return {{"result", result},
                {"draggedTaskID", optionalJson(state.draggedTaskID)},
                {"taskDropCue", optionalJson(state.taskDropCue)},
                {"calls", calls}};
    }

private:
    void groupTask(const std::string &id, const std::string &targetID) override
    {
        calls.push_back({"groupTask", id, targetID});
    }
    void dropTaskOnRow(const std::string &id, const std::string &adjacentTo, bool after) override
    {
        calls.push_back({"dropTaskOnRow", id, adjacentTo, after});
    }
    void dropTask(const std::string &id, const RunningAppGroup &group) override
    {
        calls.push_back({"dropTask", id, group.id});
    }
    void dropTaskAtOverflowRowEnd(const std::string &id, const std::string &targetID) override
    {
        calls.push_back({"dropTaskAtOverflowRowEnd", id, targetID});
    }

    std::unique_ptr<TaskDropDelegate> delegateOf(const Json &target)
    {
        const std::string type = target.at("type");
        const DropCommitted committed = [this](const std::string &id, bool into) {
            calls.push_back({"onDropCommitted", id, into});
        };
        if (type == "task")
            return std::make_unique<TaskReorderDropDelegate>(state, *this, itemOf(target.at("targetID")),
                                                             target.at("targetWidth"), target.at("placeAfterTarget"),
                                                             committed);
        if (type == "group") {
            RunningAppGroup group;
            group.id = target.at("targetID");
            for (const Json &id : target.at("windows"))
                group.windows.push_back(itemOf(id));
            return std::make_unique<CustomGroupDropDelegate>(state, *this, std::move(group), target.at("targetWidth"),
                                                             target.at("placeAfterTarget"), committed);
        }
        if (type == "row")
            return std::make_unique<TaskRowDropDelegate>(state, *this, optionalMember<std::string>(target, "targetID"),
                                                         committed);
        if (type == "edge")
            return std::make_unique<TaskEdgeDropDelegate>(state, *this, target.at("targetID"), target.at("after"),
                                                          committed);
        if (type == "rowEnd")
            return std::make_unique<OverflowRowEndDropDelegate>(
                state, *this, optionalMember<std::string>(target, "targetID"), [this](const std::string &id) {
                    calls.push_back({"onDropCommitted", id});
                });
        throw std::runtime_error("no target of type " + type);
    }

    TaskDragState state;
    Json calls = Json::array();
    std::map<std::string, std::unique_ptr<TaskDropDelegate>> delegates;
};

Json visualEnds(const Json &arguments)
{
    const auto entries = entriesFrom(arguments.at("entries"));
    const std::size_t lower = arguments.at("lower"), count = arguments.at("count");
    const bool reversed = arguments.at("reversed");
    return {{"orderedRowTarget", optionalJson(TaskDrops::orderedRowTarget(entries, lower, count, reversed))},
            {"orderedRowEndTarget", optionalJson(TaskDrops::orderedRowEndTarget(entries, lower, count, reversed))}};
}

}  // namespace

Outcome runOverflowLock(const Json &testCase, const Json &)
{
    OverflowReturnLock lock;
    Json got = Json::array();
    for (const Json &step : testCase.at("steps")) {
        const Json result = lockStep(lock, step);
        Json state{{"overflowReturnLocked", lock.overflowReturnLocked()},
                   {"lockedMainWindowIDs", lock.lockedMainWindowIDs()},
                   {"draggedWindowIDs", lock.draggedWindowIDs()}};
        if (!result.is_null())
            state["result"] = result;
        got.push_back(std::move(state));
    }
    return compared(testCase.at("expected"), got);
}

Outcome runDragAndDrop(const Json &testCase, const Json &)
{
    const std::string function = testCase.at("function");
    if (function == "trace") {
        Drag drag(testCase.at("targets"));
        Json got = Json::array();
        for (const Json &step : testCase.at("steps"))
            got.push_back(drag.step(step));
        return compared(testCase.at("expected"), got);
    }
    const Json &arguments = testCase.at("arguments");
    if (function == "cue")
        return compared(testCase.at("expected"),
                        Json(TaskDrops::cue(arguments.at("targetID"), arguments.at("targetWidth"), arguments.at("x"))));
    if (function == "visualEnds")
        return compared(testCase.at("expected"), visualEnds(arguments));
    return Outcome::skip("no function " + function);
}

Outcome runOverflowHover(const Json &testCase)
{
    platform::simulated::VirtualLoop loop;
    const Json &setup = testCase.at("setup");
    bool visible = false, expanded = setup.at("taskRowsExpanded");
    OverflowHover machine(loop, {[&](bool value) { visible = value; }, [&](bool value) { expanded = value; }, [] {}},
                          setup.at("autoHideOverflow"));
    Json got = Json::array();
    double now = 0;
    for (const Json &event : testCase.at("events")) {
        const double time = event.at(0).get<double>() / 1000;
        loop.advance(platform::Seconds(time - now));
        now = time;
        const std::string name = event.at(1);
        if (name == "enter")
            machine.overflowHoverChanged(true, event.at(2), event.at(3).get<double>() - event.at(4).get<double>());
        else if (name == "leave")
            machine.overflowHoverChanged(false, event.at(2), std::nullopt);
        else if (name == "arrowEnter" || name == "arrowLeave")
            machine.overflowArrowHoverChanged(name == "arrowEnter");
        else if (name == "arrowClick")
            machine.toggleArrow(expanded);
        else if (name == "setAutoHideOverflow")
            machine.setAutoHideOverflow(event.at(2));
        else if (name == "dragReveal")
            machine.revealForDrag();
        else if (name == "dragEnd")
            machine.dragEnded();
        else if (name != "look")
            throw std::runtime_error("no event " + name);
        got.push_back({{"hoveredOverflowRows", machine.hoveredOverflowRows()},
                       {"pendingHoverEnters", machine.pendingHoverEnters()},
                       {"pendingHoverLeaves", machine.pendingHoverLeaves()},
                       {"overflowLatchedOpen", machine.overflowLatchedOpen()},
                       {"overflowDragReveal", machine.overflowDragReveal()},
                       {"overflowArrowHovered", machine.overflowArrowHovered()},
                       {"overflowOpen", machine.overflowOpen()},
                       {"autoHideOverflow", machine.autoHideOverflow()},
                       {"taskRowsExpanded", expanded},
                       {"taskOverflowRowsVisible", visible}});
    }
    return compared(testCase.at("expected"), got);
}

}  // namespace korvane::vectors
