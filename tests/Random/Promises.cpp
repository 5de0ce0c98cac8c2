// What holds whatever was done before.
#include "tests/Random/RandomDesktop.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace korvane::testing {
namespace {

std::vector<std::string> idsOf(const std::vector<RunningAppItem> &items)
{
    std::vector<std::string> ids;
    for (const RunningAppItem &item : items)
        ids.push_back(item.id);
    return ids;
}

}  // namespace

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
    const SettingsValues before = model->settings();
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
