#include "tests/Random/RandomDesktop.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace korvane::testing {

using V = SettingsValues;
using platform::Pid;
using platform::Seconds;

namespace {

template <typename List> const typename List::value_type *pick(const List &list, std::uint8_t number)
{
    return list.empty() ? nullptr : &list[number % list.size()];
}

std::vector<std::string> idsOf(const std::vector<RunningAppItem> &items)
{
    std::vector<std::string> ids;
    for (const RunningAppItem &item : items)
        ids.push_back(item.id);
    return ids;
}

}  // namespace

RandomDesktop::RandomDesktop() : platform(desktop.platform()), model(std::make_unique<AppModel>(platform))
{
    for (int i = 0; i < 3; ++i)
        play({Act::launchApplication, static_cast<std::uint8_t>(i), 2});
    model->start();
    desktop.loop.advance(Seconds(0.5));
}

void RandomDesktop::play(const Operation &operation)
{
    if (operation.act < Act::activateTask)
        playOnDesktop(operation);
    else
        playByUser(operation);
    desktop.actions.take();
}

std::optional<Pid> RandomDesktop::application(std::uint8_t number)
{
    std::vector<Pid> regular;
    for (const auto &running : desktop.applications.running())
        if (running.policy == platform::ActivationPolicy::regular)
            regular.push_back(running.pid);
    const auto *found = pick(regular, number);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<std::uint64_t> RandomDesktop::windowOf(Pid pid, std::uint8_t number) const
{
    const auto *process = desktop.applications.process(pid);
    if (!process || !process->windows || process->windows->empty())
        return std::nullopt;
    return (*process->windows)[number % process->windows->size()]->window.hash;
}

void RandomDesktop::setBadges(std::uint8_t number)
{
    platform::simulated::DockItem root;
    root.children.emplace();
    for (const auto &running : desktop.applications.running()) {
        platform::simulated::DockItem item;
        item.title = running.localizedName;
        item.subrole = "AXApplicationDockItem";
        item.statusLabel = (number >> (running.pid % 8)) & 1 ? "1" : "";
        root.children->push_back(std::move(item));
    }
    desktop.applications.setDock(root);
}

void RandomDesktop::playOnDesktop(const Operation &operation)
{
    auto &applications = desktop.applications;
    if (operation.act == Act::launchApplication && applications.running().size() < 6) {
        platform::simulated::Process process;
        process.application.pid = nextPid++;
        // Few names, so that processes share one, and one of them without a bundle.
        const std::string name(1, static_cast<char>('A' + operation.first % 4));
        process.application.localizedName = name;
        if (operation.first % 4 != 3)
            process.application.bundleIdentifier = operation.first % 4 == 2 ? "com.apple.Safari" : "org." + name;
        std::vector<platform::simulated::Window> windows;
        for (int i = 0; i < operation.second % 4; ++i) {
            platform::simulated::Window window;
            window.hash = nextHash++;
            window.title = name + std::to_string(i);
            windows.push_back(std::move(window));
        }
        process.windows = std::move(windows);
        applications.put(std::move(process));
    }
    const auto pid = application(operation.first);
    if (operation.act == Act::letTimePass)
        desktop.loop.advance(Seconds(operation.first * 0.05));
    else if (operation.act == Act::losePermission)
        desktop.accessibility.setTrusted(operation.first % 4 != 0);
    else if (operation.act == Act::gainPermission)
        desktop.accessibility.setTrusted(true);
    else if (operation.act == Act::badgeApplication)
        setBadges(operation.first);
    if (!pid)
        return;
    const auto hash = windowOf(*pid, operation.second);
    switch (operation.act) {
    case Act::endApplication:
        applications.remove(*pid);
        break;
    case Act::openWindow: {
        platform::simulated::Window window;
        window.hash = nextHash++;
        window.title = "New";
        applications.openWindow(*pid, std::move(window));
        break;
    }
    case Act::hideApplication:
        applications.setHidden(*pid, operation.second % 2 == 0);
        break;
    case Act::loseAnswer:
        applications.setReadStatus(*pid, operation.second % 3 == 0 ? platform::AxStatus::cannotComplete
                                                                   : platform::AxStatus::success);
        break;
    default:
        break;
    }
    if (!hash)
        return;
    switch (operation.act) {
    case Act::closeWindow:
        applications.closeWindow(*pid, *hash);
        break;
    case Act::retitleWindow:
        applications.setTitle(*pid, *hash, std::string(1, 'a' + operation.first % 26));
        break;
    case Act::blankTitle:
        applications.setTitle(*pid, *hash, std::nullopt);
        break;
    case Act::focusWindow:
        applications.focusWindow(*pid, *hash);
        break;
    case Act::minimizeWindow:
        applications.setMinimized(*pid, *hash, operation.first % 2 == 0);
        break;
    default:
        break;
    }
}

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

std::optional<std::string> RandomDesktop::brokenPromise()
{
    // What waits for the next turn, and then the desktop as it is at this moment.
    desktop.loop.runPosted();
    model->setTaskbarHidden(false);
    model->refreshForStartMenuShow();
    for (const auto promise : {&RandomDesktop::tasksAreTheWindows, &RandomDesktop::entriesHoldEveryTaskOnce,
                               &RandomDesktop::memoriesAreOfLiveWindows, &RandomDesktop::nothingIsPublishedTwice,
                               &RandomDesktop::whatWasSavedLoadsTheSame})
        if (auto broken = (this->*promise)())
            return broken;
    return std::nullopt;
}

std::optional<std::string> RandomDesktop::tasksAreTheWindows()
{
    if (!model->accessibilityTrusted())
        return std::nullopt;
    std::set<std::string> expected;
    for (const auto &running : desktop.applications.running()) {
        const auto *process = desktop.applications.process(running.pid);
        if (running.policy != platform::ActivationPolicy::regular || !process->windows
            || process->readStatus != platform::AxStatus::success)
            continue;
        for (const auto &node : *process->windows)
            if (!model->isBlacklisted(node->window.title.value_or(running.localizedName.value_or("Application"))))
                expected.insert("ax:" + std::to_string(running.pid) + ":hash:" + std::to_string(node->window.hash));
    }
    const auto ids = idsOf(model->runningApps());
    if (ids.size() != expected.size() || std::set<std::string>(ids.begin(), ids.end()) != expected)
        return "the tasks are not the live windows, each once";
    return std::nullopt;
}

std::optional<std::string> RandomDesktop::entriesHoldEveryTaskOnce()
{
    const auto order = idsOf(model->runningApps());
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < order.size(); ++i)
        places[order[i]] = i;
    for (const bool groupAll : {false, true}) {
        std::multiset<std::string> held;
        std::size_t last = 0;
        bool isFirst = true;
        for (const TaskbarEntry &entry : model->taskbarEntries(groupAll)) {
            const auto members = entry.group ? idsOf(entry.group->windows) : std::vector<std::string>{entry.item->id};
            if (members.empty())
                return "an entry holds no window";
            held.insert(members.begin(), members.end());
            std::size_t earliest = order.size();
            for (const std::string &id : members)
                earliest = std::min(earliest, places.at(id));
            if (!isFirst && earliest <= last)
                return "an entry does not stand at the place of its earliest window";
            last = earliest;
            isFirst = false;
        }
        if (held != std::multiset<std::string>(order.begin(), order.end()))
            return "the entries do not hold every task exactly once";
    }
    return std::nullopt;
}

std::optional<std::string> RandomDesktop::memoriesAreOfLiveWindows()
{
    const auto &recents = model->settings().recentWindowIDs;
    if (recents.size() > 8 || std::set<std::string>(recents.begin(), recents.end()).size() != recents.size())
        return "the recents are more than eight, or one stands there twice";
    const auto ids = idsOf(model->runningApps());
    std::set<std::string> valid(ids.begin(), ids.end());
    for (const RunningAppItem &item : model->runningApps()) {
        valid.insert(Identifiers::automaticGroup(item.processIdentifier));
        if (const auto member = model->settings().customGroupMembers.find(item.id);
            member != model->settings().customGroupMembers.end())
            valid.insert(Identifiers::customGroup(member->second));
    }
    for (const auto &[id, color] : model->liveTabColors())
        if (!valid.contains(id))
            return "the colour of " + id + " outlived its window";
    for (const std::string &id : model->manualLiveColorIDs())
        if (!valid.contains(id))
            return "the mark of a colour set by hand outlived " + id;
    const auto &memory = model->windowMemory();
    for (const auto *windows : {&memory.activeWindowIDsByApplication(), &memory.previousWindowIDsByApplication()})
        for (const auto &[key, id] : *windows)
            if (!valid.contains(id))
                return "the memory of " + key + " holds a closed window";
    return std::nullopt;
}

std::optional<std::string> RandomDesktop::nothingIsPublishedTwice()
{
    std::string published;
    // The colours are left out: a window of the blacklist whose application has a default colour takes it with every
    // tick and loses it with every full refresh, and is not drawn.
    const auto observation = model->published.add([&](Property property) {
        if (property != ModelProperty::liveTabColors)
            published += std::string(property.name()) + " ";
    });
    model->refresh();
    model->refresh(false, true);
    if (!published.empty())
        return "a repeated refresh published " + published;
    return std::nullopt;
}

std::optional<std::string> RandomDesktop::whatWasSavedLoadsTheSame()
{
    // Without a change the lists that are saved by their operations are as they are stored.
    const V before = model->settings();
    const AppModel loaded(platform);
    for (const Setting &setting : settingsTable()) {
        bool same = true;
        std::visit([&](auto member) { same = before.*member == loaded.settings().*member; }, setting.member);
        if (!same)
            return "the setting " + std::string(setting.property) + " was not saved as it stands";
    }
    return std::nullopt;
}

}  // namespace korvane::testing
