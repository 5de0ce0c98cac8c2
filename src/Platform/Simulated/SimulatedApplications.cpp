// The port and the observers. The functions that change the desktop are in DesktopChanges.cpp.
#include "Platform/Simulated/SimulatedApplications.h"

#include <algorithm>
#include <utility>

namespace korvane::platform::simulated {
namespace {

constexpr std::string_view dockIdentifier = "com.apple.dock";

}  // namespace

SimulatedApplications::SimulatedApplications(Behaviour kind, VirtualLoop &mainLoop, ActionLog &actions)
    : behaviour(kind), loop(mainLoop), log(actions)
{}

SimulatedApplications::~SimulatedApplications() = default;

const SimulatedApplications::ProcessNode *SimulatedApplications::process(Pid pid) const
{
    const auto found = processes.find(pid);
    return found == processes.end() ? nullptr : &found->second;
}

SimulatedApplications::ProcessNode *SimulatedApplications::node(Pid pid)
{
    const auto found = processes.find(pid);
    return found == processes.end() ? nullptr : &found->second;
}

const WindowNode *SimulatedApplications::windowNode(Pid pid, Hash hash)
{
    const ProcessNode *owner = process(pid);
    if (!owner)
        return nullptr;
    const auto found = owner->byHash.find(hash);
    return found == owner->byHash.end() ? nullptr : found->second.get();
}

platform::Application SimulatedApplications::applicationOf(Pid pid) const
{
    const ProcessNode *found = process(pid);
    return found ? snapshots[found->place] : Application{};
}

std::optional<platform::Application> SimulatedApplications::find(Pid pid)
{
    const ProcessNode *found = process(pid);
    return found ? std::optional(snapshots[found->place]) : std::nullopt;
}

std::vector<platform::Application> SimulatedApplications::withBundleIdentifier(std::string_view bundleIdentifier)
{
    if (bundleIdentifier == dockIdentifier)
        ++dockQueryCount;
    std::vector<Application> found;
    std::copy_if(snapshots.begin(), snapshots.end(), std::back_inserter(found),
                 [&](const Application &application) { return application.bundleIdentifier == bundleIdentifier; });
    return found;
}

platform::ImagePtr SimulatedApplications::icon(Pid pid)
{
    const ProcessNode *found = process(pid);
    return found ? found->icon : nullptr;
}

bool SimulatedApplications::hide(Pid pid)
{
    if (!process(pid))
        return false;
    log.add("hide", {std::int64_t(pid)});
    if (isLive())
        setHidden(pid, true);
    return true;
}

bool SimulatedApplications::unhide(Pid pid)
{
    if (!process(pid))
        return false;
    log.add("unhide", {std::int64_t(pid)});
    if (isLive())
        setHidden(pid, false);
    return true;
}

bool SimulatedApplications::terminate(Pid pid)
{
    if (!process(pid))
        return false;
    log.add("terminate", {std::int64_t(pid)});
    if (isLive())
        remove(pid);
    return true;
}

bool SimulatedApplications::activate(Pid pid, platform::Activate options)
{
    if (!process(pid))
        return false;
    log.add("activate", {std::int64_t(pid), static_cast<std::int64_t>(options)});
    if (isLive())
        bringForward(pid, options == platform::Activate::allWindows);
    return true;
}

bool SimulatedApplications::becomeAccessory()
{
    log.add("becomeAccessory");
    accessory = !refusesAccessory;
    return accessory;
}

platform::Subscription SimulatedApplications::observe(ApplicationEvent event, std::function<void()> callback)
{
    return applicationObservers[static_cast<std::size_t>(event)].add(std::move(callback));
}

platform::Subscription SimulatedApplications::observe(SessionEvent event, std::function<void()> callback)
{
    return sessionObservers[static_cast<std::size_t>(event)].add(std::move(callback));
}

void SimulatedApplications::notify(ApplicationEvent event)
{
    loop.post([this, event, token = std::weak_ptr(alive)] {
        if (!token.expired())
            applicationObservers[static_cast<std::size_t>(event)].notify();
    });
}

void SimulatedApplications::notify(SessionEvent event)
{
    loop.post([this, event, token = std::weak_ptr(alive)] {
        if (!token.expired())
            sessionObservers[static_cast<std::size_t>(event)].notify();
    });
}

std::size_t SimulatedApplications::observerCount() const
{
    std::size_t count = 0;
    for (const auto &observers : applicationObservers)
        count += observers.count();
    for (const auto &observers : sessionObservers)
        count += observers.count();
    return count;
}

const Window *SimulatedApplications::window(Pid pid, Hash hash) const
{
    const ProcessNode *owner = process(pid);
    if (!owner)
        return nullptr;
    const auto found = owner->byHash.find(hash);
    return found == owner->byHash.end() ? nullptr : &found->second->window;
}

std::size_t SimulatedApplications::windowCount(Pid pid) const
{
    const ProcessNode *owner = process(pid);
    return owner && owner->windows ? owner->windows->size() : 0;
}

std::optional<SimulatedApplications::Hash> SimulatedApplications::focusedWindow(Pid pid) const
{
    const ProcessNode *owner = process(pid);
    return owner ? owner->focused : std::nullopt;
}

std::optional<platform::Pid> SimulatedApplications::active() const
{
    const auto found = std::find_if(snapshots.begin(), snapshots.end(), [](const auto &each) { return each.active; });
    return found == snapshots.end() ? std::nullopt : std::optional(found->pid);
}

std::vector<WindowPtr> SimulatedApplications::onScreen() const
{
    std::vector<WindowPtr> visible;
    for (const Application &application : snapshots) {
        const ProcessNode &owner = *process(application.pid);
        if (application.hidden || !owner.windows)
            continue;
        std::copy_if(owner.windows->begin(), owner.windows->end(), std::back_inserter(visible),
                     [](const WindowPtr &each) { return each->window.minimized != true; });
    }
    std::stable_sort(visible.begin(), visible.end(),
                     [](const WindowPtr &left, const WindowPtr &right) { return left->raised > right->raised; });
    return visible;
}

}  // namespace korvane::platform::simulated
