// How the simulated desktop changes: when a test changes it, and on a live desktop when the core asks for something.
#include "Platform/Simulated/SimulatedApplications.h"

#include <algorithm>
#include <utility>

namespace korvane::platform::simulated {

void SimulatedApplications::tell(ApplicationEvent event)
{
    if (isLive())
        notify(event);
}

void SimulatedApplications::windowsChanged(ProcessNode &process)
{
    touch(process);
    if (!isLive() || windowNoticePending)
        return;
    // If many windows changed in one turn, one notice is enough.
    windowNoticePending = true;
    loop.post([this, token = std::weak_ptr(alive)] {
        if (token.expired())
            return;
        windowNoticePending = false;
        applicationObservers[static_cast<std::size_t>(ApplicationEvent::activated)].notify();
    });
}

void SimulatedApplications::touchAll()
{
    for (auto &[pid, process] : processes)
        touch(process);
}

void SimulatedApplications::fill(ProcessNode &process, Process &&content)
{
    const Pid pid = content.application.pid;
    if (!process.element)
        process.element = std::make_shared<const ApplicationNode>(pid);
    const auto known = std::exchange(process.byHash, {});
    process.windows.reset();
    if (content.windows) {
        process.windows.emplace();
        process.windows->reserve(content.windows->size());
        process.byHash.reserve(content.windows->size());
        for (Window &window : *content.windows) {
            const auto before = known.find(window.hash);
            WindowPtr entry;
            // A second window with the same hash becomes an element of its own. It equals the first.
            if (before != known.end() && !process.byHash.contains(window.hash)) {
                entry = before->second;
                entry->window = std::move(window);
            } else {
                entry = std::make_shared<const WindowNode>(pid, std::move(window));
                entry->raised = ++raises;
            }
            process.byHash.try_emplace(entry->hash, entry);
            process.windows->push_back(std::move(entry));
        }
    }
    for (const auto &[hash, entry] : known)
        entry->gone = !process.byHash.contains(hash);
    process.focused = content.focusedWindow;
    process.icon = std::move(content.icon);
    if (isLive() && process.focused)
        if (const auto found = process.byHash.find(*process.focused); found != process.byHash.end())
            found->second->raised = ++raises;
}

void SimulatedApplications::put(Process content)
{
    const Application application = content.application;
    ProcessNode *existing = node(application.pid);
    ProcessNode &process = existing ? *existing : processes[application.pid];
    if (existing) {
        snapshots[process.place] = application;
    } else {
        process.place = snapshots.size();
        snapshots.push_back(application);
    }
    fill(process, std::move(content));
    if (isLive() && application.active)
        setActive(application.pid);
    if (existing) {
        windowsChanged(process);
    } else {
        touch(process);
        tell(ApplicationEvent::launched);
    }
}

void SimulatedApplications::remove(Pid pid)
{
    ProcessNode *process = node(pid);
    if (!process)
        return;
    const bool wasActive = snapshots[process->place].active;
    for (const WindowPtr &window : process->windows.value_or(std::vector<WindowPtr>{}))
        window->gone = true;
    snapshots.erase(snapshots.begin() + static_cast<std::ptrdiff_t>(process->place));
    for (std::size_t place = process->place; place < snapshots.size(); ++place)
        processes.at(snapshots[place].pid).place = place;
    processes.erase(pid);
    tell(ApplicationEvent::terminated);
    if (isLive() && wasActive)
        passFocusOn(pid);
}

void SimulatedApplications::clear()
{
    while (!snapshots.empty())
        remove(snapshots.back().pid);
}

void SimulatedApplications::setDock(const std::optional<DockItem> &root)
{
    if (!root) {
        remove(dockPid);
        return;
    }
    if (!process(dockPid)) {
        Process dock;
        dock.application.pid = dockPid;
        dock.application.policy = platform::ActivationPolicy::prohibited;
        dock.application.localizedName = "Dock";
        dock.application.bundleIdentifier = "com.apple.dock";
        put(std::move(dock));
    }
    processes.at(dockPid).dock = std::make_shared<const DockNode>(dockPid, *root);
    windowsChanged(processes.at(dockPid));
}

void SimulatedApplications::changeApplication(Pid pid, const std::function<void(Application &)> &change)
{
    ProcessNode *owner = node(pid);
    if (!owner)
        return;
    change(snapshots[owner->place]);
    snapshots[owner->place].pid = pid;
    windowsChanged(*owner);
}

void SimulatedApplications::setIcon(Pid pid, platform::ImagePtr icon)
{
    ProcessNode *owner = node(pid);
    if (!owner)
        return;
    owner->icon = std::move(icon);
    windowsChanged(*owner);
}

void SimulatedApplications::setActive(std::optional<Pid> pid)
{
    if (pid && !process(*pid))
        return;
    bool changed = false;
    for (Application &application : snapshots) {
        const bool active = application.pid == pid;
        changed = changed || application.active != active;
        application.active = active;
    }
    if (changed)
        tell(ApplicationEvent::activated);
}

void SimulatedApplications::setHidden(Pid pid, bool hidden)
{
    const ProcessNode *owner = process(pid);
    if (!owner || snapshots[owner->place].hidden == hidden)
        return;
    snapshots[owner->place].hidden = hidden;
    tell(hidden ? ApplicationEvent::hidden : ApplicationEvent::unhidden);
    if (isLive() && hidden && snapshots[owner->place].active)
        passFocusOn(pid);
}

void SimulatedApplications::setTerminated(Pid pid, bool terminated)
{
    if (const ProcessNode *owner = process(pid))
        snapshots[owner->place].terminated = terminated;
}

void SimulatedApplications::openWindow(Pid pid, Window window)
{
    ProcessNode *owner = node(pid);
    if (!owner)
        return;
    const auto entry = std::make_shared<const WindowNode>(pid, std::move(window));
    entry->raised = ++raises;
    if (!owner->windows)
        owner->windows.emplace();
    owner->windows->push_back(entry);
    owner->byHash.try_emplace(entry->hash, entry);
    if (isLive() && entry->window.minimized != true)
        owner->focused = entry->hash;
    windowsChanged(*owner);
}

void SimulatedApplications::closeWindow(Pid pid, Hash hash)
{
    if (const WindowNode *window = windowNode(pid, hash))
        close(*window);
}

void SimulatedApplications::setTitle(Pid pid, Hash hash, std::optional<std::string> title)
{
    const WindowNode *window = windowNode(pid, hash);
    if (!window)
        return;
    window->window.title = std::move(title);
    windowsChanged(*node(pid));
}

void SimulatedApplications::setMinimized(Pid pid, Hash hash, bool minimized)
{
    if (const WindowNode *window = windowNode(pid, hash))
        minimize(*window, minimized);
}

void SimulatedApplications::changeWindow(Pid pid, Hash hash, const std::function<void(Window &)> &change)
{
    const WindowNode *window = windowNode(pid, hash);
    if (!window)
        return;
    change(window->window);
    window->window.hash = hash;  // a window's identity must not change
    windowsChanged(*node(pid));
}

void SimulatedApplications::setFocusedWindow(Pid pid, std::optional<Hash> hash)
{
    ProcessNode *owner = node(pid);
    if (!owner)
        return;
    owner->focused = hash;
    windowsChanged(*owner);
}

void SimulatedApplications::focusWindow(Pid pid, Hash hash)
{
    const WindowNode *window = windowNode(pid, hash);
    if (!window)
        return;
    raise(*window);
    setActive(pid);
}

void SimulatedApplications::setReadStatus(Pid pid, platform::AxStatus status)
{
    ProcessNode *owner = node(pid);
    if (!owner)
        return;
    owner->readStatus = status;
    windowsChanged(*owner);
}

bool SimulatedApplications::raise(const WindowNode &window)
{
    ProcessNode *owner = node(window.pid);
    if (!owner || window.gone)
        return false;
    window.raised = ++raises;
    if (window.window.minimized != true)
        owner->focused = window.hash;
    windowsChanged(*owner);
    return true;
}

bool SimulatedApplications::minimize(const WindowNode &window, bool minimized)
{
    ProcessNode *owner = node(window.pid);
    if (!owner || window.gone)
        return false;
    if (!window.window.minimized || window.window.minimized == minimized)
        return true;
    window.window.minimized = minimized;
    if (!minimized) {
        raise(window);
    } else if (isLive() && owner->focused == window.hash) {
        refocus(*owner);
        if (snapshots[owner->place].active && !owner->focused)
            passFocusOn(window.pid);
    }
    windowsChanged(*owner);
    return true;
}

bool SimulatedApplications::close(const WindowNode &window)
{
    ProcessNode *owner = node(window.pid);
    if (!owner || window.gone || !owner->windows)
        return false;
    window.gone = true;
    const Hash hash = window.hash;
    const Pid pid = window.pid;
    // The list may hold the last reference to the window.
    std::erase_if(*owner->windows, [&](const WindowPtr &each) { return each.get() == &window; });
    owner->byHash.erase(hash);
    if (owner->focused == hash) {
        owner->focused.reset();
        if (isLive()) {
            refocus(*owner);
            if (snapshots[owner->place].active && !owner->focused)
                passFocusOn(pid);
        }
    }
    windowsChanged(*owner);
    return true;
}

void SimulatedApplications::bringForward(Pid pid, bool allWindows)
{
    ProcessNode &owner = *node(pid);
    setHidden(pid, false);
    if (!owner.focused)
        refocus(owner);
    if (owner.windows) {
        // Their relative order stays.
        std::vector<WindowPtr> order;
        std::copy_if(owner.windows->begin(), owner.windows->end(), std::back_inserter(order),
                     [&](const WindowPtr &each) {
                         return each->window.minimized != true && (allWindows || each->hash == owner.focused);
                     });
        std::stable_sort(order.begin(), order.end(),
                         [](const WindowPtr &left, const WindowPtr &right) { return left->raised < right->raised; });
        for (const WindowPtr &window : order)
            window->raised = ++raises;
    }
    setActive(pid);
}

void SimulatedApplications::refocus(ProcessNode &process)
{
    process.focused.reset();
    if (!process.windows)
        return;
    std::uint64_t highest = 0;
    for (const WindowPtr &window : *process.windows)
        if (window->window.minimized != true && window->raised > highest) {
            highest = window->raised;
            process.focused = window->hash;
        }
    touch(process);
}

bool SimulatedApplications::hasVisibleWindow(const ProcessNode &process) const
{
    return process.windows && !snapshots[process.place].hidden
           && std::any_of(process.windows->begin(), process.windows->end(),
                          [](const WindowPtr &each) { return each->window.minimized != true; });
}

void SimulatedApplications::passFocusOn(Pid from)
{
    const WindowNode *next = nullptr;
    for (const Application &application : snapshots) {
        if (application.pid == from || application.hidden)
            continue;
        const ProcessNode &owner = *process(application.pid);
        if (!hasVisibleWindow(owner))
            continue;
        for (const WindowPtr &window : *owner.windows)
            if (window->window.minimized != true && (!next || window->raised > next->raised))
                next = window.get();
    }
    if (!next)
        return;  // the application stays in front although it has no window
    node(next->pid)->focused = next->hash;
    touch(*node(next->pid));
    setActive(next->pid);
}

}  // namespace korvane::platform::simulated
