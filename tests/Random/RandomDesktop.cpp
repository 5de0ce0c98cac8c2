#include "tests/Random/RandomDesktop.h"

#include "tests/Random/Pick.h"

namespace korvane::testing {

using platform::Pid;
using platform::Seconds;

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

}  // namespace korvane::testing
