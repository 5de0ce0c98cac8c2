// From a click on a task to its window.
#include "Models/AppModel/AppModel.h"

namespace korvane {

using platform::Activate;
using platform::Element;

void AppModel::raise(const Element &window, Pid pid)
{
    platform.accessibility.perform(window, "AXRaise");
    platform.accessibility.set(platform.accessibility.application(pid), "AXFrontmost", true);
}

void AppModel::activate(const RunningAppItem &item)
{
    const Pid pid = item.processIdentifier;
    if (!platform.applications.find(pid))
        return;
    if (!item.isActive)
        recordRecent(item);
    const Element window = trusted ? resolveWindow(item) : nullptr;
    if (!window) {
        // There is no refresh here: the next regular refresh finds the result.
        platform.applications.unhide(pid);
        platform.applications.activate(pid, Activate::allWindows);
        return;
    }
    if (discovery.isMinimized(window)) {
        platform.accessibility.set(window, "AXMinimized", false);
        raise(window, pid);
        platform.applications.unhide(pid);
        platform.applications.activate(pid, Activate::none);
    } else if (item.isActive) {
        platform.accessibility.set(window, "AXMinimized", true);
    } else {
        // The application is activated first, then the window is raised. In the other order, another window could stay
        // above it.
        platform.applications.unhide(pid);
        platform.applications.activate(pid, Activate::none);
        raise(window, pid);
    }
    refreshAfterWindowStateChange();
}

void AppModel::activateApplication(Pid pid)
{
    if (!platform.applications.find(pid))
        return;
    if (const auto windows = discovery.windows(pid)) {
        for (const Element &window : *windows)
            platform.accessibility.set(window, "AXMinimized", false);
        if (!windows->empty())
            raise(windows->front(), pid);
    }
    platform.applications.unhide(pid);
    platform.applications.activate(pid, Activate::allWindows);
    refreshAfterWindowStateChange();
}

void AppModel::activateAttentionApp(const AttentionAppItem &item)
{
    const auto application = platform.applications.find(item.processIdentifier);
    if (!application)
        return;
    if (application->bundlePath) {
        openApplication(*application->bundlePath, item.bundleIdentifier);
    } else {
        platform.applications.unhide(item.processIdentifier);
        platform.applications.activate(item.processIdentifier, Activate::allWindows);
    }
    refreshAfterWindowStateChange();
}

void AppModel::launch(const std::string &bundleIdentifier)
{
    if (const auto path = platform.launching.applicationPath(bundleIdentifier))
        openApplication(*path, bundleIdentifier);
}

void AppModel::openApplication(const std::string &path, const std::optional<std::string> &bundleIdentifier)
{
    platform.launching.openApplication(path, true);
    const auto identifier = bundleIdentifier ? bundleIdentifier : platform.launching.bundleIdentifier(path);
    if (!identifier)
        return;
    delayed.schedule(platform::Seconds(0.1), [this, bundle = *identifier] {
        const auto running = platform.applications.withBundleIdentifier(bundle);
        if (!running.empty())
            platform.applications.activate(running.front().pid, Activate::allWindows);
    });
}

}  // namespace korvane
