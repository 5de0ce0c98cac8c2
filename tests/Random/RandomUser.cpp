// What a person does to the bar.
#include "tests/Random/Pick.h"
#include "tests/Random/RandomDesktop.h"

namespace korvane::testing {

using V = SettingsValues;

std::optional<RunningAppItem> RandomDesktop::task(std::uint8_t number) const
{
    const auto *found = pick(model->runningApps(), number);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<RunningAppGroup> RandomDesktop::group(std::uint8_t number, bool customOnly) const
{
    std::vector<RunningAppGroup> groups;
    for (const TaskbarEntry &entry : model->taskbarEntries(number % 2 == 0))
        if (entry.group && (entry.group->isCustom || !customOnly))
            groups.push_back(*entry.group);
    const auto *found = pick(groups, number);
    return found ? std::optional(*found) : std::nullopt;
}

std::string RandomDesktop::dragID(std::uint8_t number) const
{
    const auto item = task(number);
    const auto dragged = group(number, false);
    switch (number % 3) {
    case 0:
        return item ? item->id : "nothing";
    case 1:
        return item ? "groupwindow::" + item->id : "groupwindow::nothing";
    default:
        return dragged ? "group::" + dragged->id : "group::auto:none";
    }
}

void RandomDesktop::playByUser(const Operation &operation)
{
    const auto item = task(operation.first), other = task(operation.second);
    const auto anyGroup = group(operation.first, false), customGroup = group(operation.first, true);
    const std::string drag = dragID(operation.first);
    switch (operation.act) {
    case Act::closeAll:
        if (operation.first % 8 == 0)
            model->closeAllWindows();
        return;
    case Act::hideAll:
        model->hideVisibleWindows();
        return;
    case Act::moveToEnd:
        model->setTaskPosition(drag, operation.second % 2 == 0);
        return;
    case Act::changeGroupingMode: {
        const auto &modes = choiceTexts<GroupingMode>;
        model->set(&V::groupingMode, modes[operation.first % modes.size()].choice);
        model->regroupTaskbarForCurrentSettings();
        return;
    }
    case Act::newWindowsFirst:
        model->set(&V::newWindowsGo, operation.first % 2 == 0 ? NewWindowsPlace::first : NewWindowsPlace::last);
        return;
    case Act::hideBar:
        model->setTaskbarHidden(operation.first % 2 == 0);
        return;
    case Act::restoreDefaults:
        if (operation.first % 8 == 0)
            model->restoreDefaults();
        return;
    default:
        break;
    }
    if (anyGroup && operation.act == Act::closeGroup)
        model->closeWindows(*anyGroup);
    if (anyGroup && operation.act == Act::dropOntoGroup)
        model->dropTask(dragID(operation.second), *anyGroup);
    if (customGroup && operation.act == Act::renameGroup)
        model->renameCustomGroup(*customGroup, std::string(operation.second % 3, 'n'));
    if (customGroup && operation.act == Act::closeCustomGroup)
        model->closeAndRemoveCustomGroup(*customGroup);
    if (!item)
        return;
    switch (operation.act) {
    case Act::activateTask:
        model->activate(*item);
        break;
    case Act::closeTask:
        model->closeFrontWindow(*item);
        break;
    case Act::quitApplication:
        model->quit(*item);
        break;
    case Act::createGroup:
        model->createCustomGroup({*item, *other});
        break;
    case Act::groupTwoTasks:
        model->groupTask(drag, other->id);
        break;
    case Act::returnToParent:
        model->returnToParentGroup(*item);
        break;
    case Act::dropOnRow:
        model->dropTaskOnRow(drag, other->id, operation.second % 2 == 0);
        break;
    case Act::dropAtRowEnd:
        model->dropTaskAtOverflowRowEnd(drag, other->id);
        break;
    case Act::colorTask:
        model->setLiveTabColorName(operation.second % 3 == 0 ? std::nullopt : std::optional<std::string>("Red"),
                                   operation.second % 2 == 0 ? item->id
                                                             : Identifiers::automaticGroup(item->processIdentifier));
        break;
    case Act::setDefaultColor:
        if (item->bundleIdentifier)
            model->setDefaultAppColorName(operation.second % 2 == 0 ? std::nullopt : std::optional<std::string>("Blue"),
                                          *item->bundleIdentifier, {item->id});
        break;
    case Act::blacklistTask:
        if (operation.second % 2 == 0)
            model->addToBlacklist(item->name);
        else
            model->removeFromBlacklist(item->name);
        break;
    default:
        break;
    }
}

}  // namespace korvane::testing
