#include "Platform/X11/ApplicationTable.h"

#include "Platform/X11/ProcessInfo.h"
#include "Platform/X11/TaskRules.h"

#include <algorithm>
#include <unistd.h>
#include <unordered_set>
#include <utility>

namespace korvane::platform::x11 {

ApplicationTable::ApplicationTable(PropertyMirror &windows, ApplicationCatalogue &applications)
    : mirror(windows), catalogue(applications), catalogueRevision(applications.revision())
{
    MirrorChanges everything;
    everything.structure = everything.active = true;
    apply(everything);
}

ApplicationEntry *ApplicationTable::find(Pid pid)
{
    const auto known = entries.find(pid);
    return known == entries.end() ? nullptr : &known->second;
}

bool ApplicationTable::minimized(const ApplicationEntry &entry) const
{
    return !entry.tasks.empty() && std::all_of(entry.tasks.begin(), entry.tasks.end(), [this](WindowId id) {
        const WindowRecord *record = window(id);
        return record && record->minimized;
    });
}

void ApplicationTable::touch(Pid pid)
{
    if (ApplicationEntry *entry = find(pid))
        entry->revision = ++revisions;
}

std::optional<ApplicationEvent> ApplicationTable::apply(const MirrorChanges &changes)
{
    std::optional<ApplicationEvent> event;
    const auto activated = [&event] { event = event.value_or(ApplicationEvent::activated); };
    if (changes.structure && regroup(event))
        activated();
    std::unordered_set<Pid> touched;
    for (const WindowId id : changes.content)
        if (const WindowRecord *record = window(id); record && find(record->pid)) {
            touched.insert(record->pid);
            activated();
        }
    for (const Pid pid : touched) {
        touch(pid);
        if (const auto hiding = updateHiding(*find(pid)); hiding && event == ApplicationEvent::activated)
            event = hiding;
    }
    // The task with the focus may also change when a dialog comes, goes or changes its owner.
    if (changes.active || changes.structure) {
        const auto previous = std::pair(activeTask, activePid);
        const Pid previousPid = activePid;
        findActive();
        if (previous != std::pair(activeTask, activePid)) {
            touch(previousPid);
            touch(activePid);
            stale = true;
            activated();
        }
    }
    if (changes.manager) {
        for (auto &[pid, entry] : entries)
            entry.revision = ++revisions;
        activated();
    }
    for (const WindowId id : changes.icons)
        if (const WindowRecord *record = window(id))
            if (ApplicationEntry *entry = find(record->pid); entry && entry->icon && entry->iconIsOfWindow) {
                entry->icon.reset();
                entry->revision = ++revisions;
                activated();
            }
    return event;
}

// Returns whether the application's tasks or its data have changed.
bool ApplicationTable::regroup(std::optional<ApplicationEvent> &event)
{
    const FindWindow find = [this](WindowId id) { return mirror.find(id); };
    std::unordered_map<Pid, std::vector<WindowId>> tasks;
    std::vector<Pid> newOrder;
    tasks[getpid()];
    for (const WindowId id : mirror.order()) {
        const WindowRecord *record = mirror.find(id);
        if (!record)
            continue;
        auto &list = tasks[record->pid];
        if (!isTask(*record, find))
            continue;
        if (list.empty())
            newOrder.push_back(record->pid);
        list.push_back(id);
    }
    if (tasks[getpid()].empty())
        newOrder.push_back(getpid());

    bool different = false;
    const std::unordered_set<Pid> remaining(newOrder.begin(), newOrder.end());
    for (const Pid pid : order)
        if (!remaining.contains(pid))
            event = ApplicationEvent::terminated;
    std::erase_if(entries, [&](const auto &entry) { return !tasks.contains(entry.first); });
    const std::unordered_set<Pid> known(order.begin(), order.end());
    for (auto &[pid, list] : tasks) {
        ApplicationEntry &entry = entries[pid];
        if (!list.empty() && !known.contains(pid))
            event = ApplicationEvent::launched;
        if (entry.tasks != list || entry.revision == 0) {
            entry.tasks = std::move(list);
            entry.revision = ++revisions;
            different = true;
        }
        different = describe(pid, entry) || different;
        if (const auto hiding = updateHiding(entry); hiding && !event)
            event = hiding;
    }
    if (newOrder != order) {
        order = std::move(newOrder);
        different = true;
    }
    stale = stale || different;
    return different;
}

// The first window describes the application. Returns whether anything has changed.
bool ApplicationTable::describe(Pid pid, ApplicationEntry &entry)
{
    const Application previous = entry.snapshot;
    const bool first = previous.pid != pid;
    WindowOrigin origin;
    if (const WindowRecord *front = entry.tasks.empty() ? nullptr : window(entry.tasks.front()))
        origin = front->origin;
    origin.executablePath = first ? executableOf(pid) : entry.origin.executablePath;
    entry.snapshot.pid = pid;
    entry.snapshot.policy = entry.tasks.empty() ? ActivationPolicy::accessory : ActivationPolicy::regular;
    if (first || origin != entry.origin) {
        entry.origin = std::move(origin);
        identify(pid, entry);
    }
    return entry.snapshot != previous;
}

void ApplicationTable::identify(Pid pid, ApplicationEntry &entry)
{
    Application &application = entry.snapshot;
    entry.icon.reset();
    if (auto identity = catalogue.match(entry.origin)) {
        application.localizedName = std::move(identity->name);
        application.bundleIdentifier = std::move(identity->bundleIdentifier);
        application.bundlePath = std::move(identity->entryPath);
        entry.iconName = std::move(identity->iconName);
        return;
    }
    application.bundleIdentifier.reset();
    application.bundlePath.reset();
    entry.iconName.clear();
    if (!entry.origin.className.empty())
        application.localizedName = entry.origin.className;
    else if (!entry.origin.instanceName.empty())
        application.localizedName = entry.origin.instanceName;
    else
        application.localizedName = processName(pid);
}

const std::vector<Application> &ApplicationTable::running()
{
    identifyAgain();
    if (std::exchange(stale, false)) {
        runningApplications.clear();
        for (const Pid pid : order) {
            ApplicationEntry &entry = entries.at(pid);
            entry.snapshot.active = pid == activePid;
            runningApplications.push_back(entry.snapshot);
        }
        appendWindowless();
    }
    return runningApplications;
}

void ApplicationTable::identifyAgain()
{
    const unsigned revision = catalogue.revision();
    if (revision == catalogueRevision)
        return;
    catalogueRevision = revision;
    for (auto &[pid, entry] : entries) {
        const Application before = entry.snapshot;
        const std::string iconBefore = entry.iconName;
        identify(pid, entry);
        if (entry.snapshot == before && entry.iconName == iconBefore)
            continue;
        entry.revision = ++revisions;
        identityChanged = stale = true;
    }
}

bool ApplicationTable::takeIdentityChange()
{
    identifyAgain();
    return std::exchange(identityChanged, false);
}

void ApplicationTable::appendWindowless()
{
    const std::size_t withWindows = runningApplications.size();
    for (const BadgedProcess &candidate : badgedProcesses) {
        const auto end = runningApplications.begin() + static_cast<std::ptrdiff_t>(withWindows);
        const bool known = std::any_of(runningApplications.begin(), end, [&](const Application &application) {
            return application.pid == candidate.snapshot.pid || application.bundlePath == candidate.snapshot.bundlePath;
        });
        if (!known)
            runningApplications.push_back(candidate.snapshot);
    }
}

std::optional<ApplicationEvent> ApplicationTable::setBadged(std::vector<BadgedProcess> processes)
{
    if (processes == badgedProcesses)
        return std::nullopt;
    const auto pids = [](const std::vector<BadgedProcess> &list) {
        std::unordered_set<Pid> found;
        for (const BadgedProcess &one : list)
            found.insert(one.snapshot.pid);
        return found;
    };
    const auto before = pids(badgedProcesses), now = pids(processes);
    badgedProcesses = std::move(processes);
    stale = true;
    const auto isIn = [](const auto &set) { return [&set](Pid pid) { return set.contains(pid); }; };
    if (!std::all_of(now.begin(), now.end(), isIn(before)))
        return ApplicationEvent::launched;
    return std::all_of(before.begin(), before.end(), isIn(now)) ? ApplicationEvent::activated
                                                                : ApplicationEvent::terminated;
}

const BadgedProcess *ApplicationTable::badged(Pid pid) const
{
    const auto found = std::find_if(badgedProcesses.begin(), badgedProcesses.end(),
                                    [pid](const BadgedProcess &process) { return process.snapshot.pid == pid; });
    return found == badgedProcesses.end() ? nullptr : &*found;
}

void ApplicationTable::findActive()
{
    const FindWindow find = [this](WindowId id) { return mirror.find(id); };
    const WindowRecord *task = taskFor(mirror.active(), find);
    const WindowRecord *owner = task ? task : mirror.find(mirror.active());
    activeTask = task ? task->id : 0;
    activePid = owner ? owner->pid : 0;
}

// An application is hidden when all its windows are minimised. It is no longer hidden when any of its windows is shown,
// for whatever reason.
std::optional<ApplicationEvent> ApplicationTable::updateHiding(ApplicationEntry &entry)
{
    if (entry.hiddenWindows.empty())
        return std::nullopt;
    std::erase_if(entry.hiddenWindows, [this](WindowId id) { return !window(id); });
    const bool allMinimized = minimized(entry);
    if (allMinimized && !entry.hiddenWindows.empty()) {
        if (std::exchange(entry.snapshot.hidden, true))
            return std::nullopt;
        stale = true;
        return ApplicationEvent::hidden;
    }
    if (!entry.snapshot.hidden)
        return std::nullopt;
    entry.hiddenWindows.clear();
    entry.snapshot.hidden = false;
    stale = true;
    return ApplicationEvent::unhidden;
}

}  // namespace korvane::platform::x11
