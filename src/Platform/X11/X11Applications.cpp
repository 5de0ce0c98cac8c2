#include "Platform/X11/X11Applications.h"

#include "Platform/X11/Reply.h"
#include "Platform/X11/WindowIcon.h"

#include <csignal>
#include <unistd.h>

namespace korvane::platform {

using x11::ApplicationEntry;
using x11::WindowId;
using x11::WindowRecord;

X11Applications::X11Applications(x11::Connection &server, x11::PropertyMirror &windows, x11::ApplicationTable &all,
                                 x11::WindowActions &windowActions, IconLoader iconLoader, MainLoop &mainLoop)
    : connection(server), mirror(windows), table(all), actions(windowActions), loadIcon(std::move(iconLoader)),
      loop(mainLoop), delivery(loop, [this](ApplicationEvent event) { applicationObservers[event].notify(); })
{
    mirror.observe([this](const x11::MirrorChanges &changes) {
        if (const auto event = table.apply(changes))
            delivery.add(*event);
    });
    installed = table.observeCatalogue([this] {
        if (!installing)
            installing = loop.after(installingTime, [this] {
                installing.reset();
                if (table.takeIdentityChange())
                    delivery.add(ApplicationEvent::activated);
            });
    });
}

Pid X11Applications::self() const
{
    return getpid();
}

std::optional<Application> X11Applications::find(Pid pid)
{
    if (pid == dockPid)
        return withBundleIdentifier("com.apple.dock").front();
    const ApplicationEntry *entry = table.find(pid);
    if (!entry) {
        const BadgedProcess *badged = table.badged(pid);
        return badged ? std::optional(badged->snapshot) : std::nullopt;
    }
    Application application = entry->snapshot;
    application.active = pid == table.focusedPid();
    return application;
}

std::vector<Application> X11Applications::withBundleIdentifier(std::string_view bundleIdentifier)
{
    if (bundleIdentifier == "com.apple.dock") {
        Application dock;
        dock.pid = dockPid;
        dock.policy = ActivationPolicy::accessory;
        dock.localizedName = "Dock";
        dock.bundleIdentifier = "com.apple.dock";
        return {dock};
    }
    std::vector<Application> found;
    for (const Application &application : running())
        if (application.bundleIdentifier == bundleIdentifier)
            found.push_back(application);
    return found;
}

ImagePtr X11Applications::icon(Pid pid)
{
    ApplicationEntry *entry = table.find(pid);
    if (!entry) {
        const BadgedProcess *badged = table.badged(pid);
        return badged && loadIcon ? loadIcon(badged->iconName) : nullptr;
    }
    if (!entry->icon) {
        ImagePtr image = loadIcon && !entry->iconName.empty() ? loadIcon(entry->iconName) : nullptr;
        entry->iconIsOfWindow = !image;
        entry->icon = image ? image : windowIcon(*entry);
    }
    return *entry->icon;
}

ImagePtr X11Applications::windowIcon(const ApplicationEntry &entry)
{
    // Four megabytes are enough for the largest picture in use, and limit the cost of a mistake.
    constexpr std::uint32_t longest = 1 << 20;
    for (const WindowId window : entry.tasks) {
        const x11::Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, window, connection[x11::Atom::netWmIcon], XCB_ATOM_CARDINAL, 0, longest),
            nullptr)};
        if (!reply || reply->format != 32)
            continue;
        const auto *data = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
        const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / 4;
        if (ImagePtr image = x11::windowIcon({data, count}))
            return image;
    }
    return nullptr;
}

bool X11Applications::hide(Pid pid)
{
    ApplicationEntry *entry = table.find(pid);
    if (!entry)
        return false;
    if (!entry->hiddenWindows.empty())
        return true;
    for (const WindowId window : entry->tasks) {
        const WindowRecord *record = mirror.find(window);
        if (!record || record->minimized)
            continue;
        entry->hiddenWindows.push_back(window);
        actions.minimize(window);
    }
    return true;
}

bool X11Applications::unhide(Pid pid)
{
    ApplicationEntry *entry = table.find(pid);
    if (!entry)
        return false;
    for (const WindowId window : entry->hiddenWindows)
        actions.restore(window);
    // The application stays marked as hidden until its windows are really shown. Then the mirror's changes end it.
    if (!entry->snapshot.hidden)
        entry->hiddenWindows.clear();
    return true;
}

bool X11Applications::terminate(Pid pid)
{
    const ApplicationEntry *entry = table.find(pid);
    if (!entry)
        return false;
    for (const WindowId window : entry->tasks)
        actions.close(window);
    if (entry->tasks.empty() && pid > 0 && pid != self())
        return kill(pid, SIGTERM) == 0;
    return true;
}

bool X11Applications::activate(Pid pid, Activate options)
{
    if (!table.find(pid))
        return false;
    actions.activate(pid, options == Activate::allWindows);
    return true;
}

Subscription X11Applications::observe(ApplicationEvent event, std::function<void()> callback)
{
    return applicationObservers[event].add(std::move(callback));
}

Subscription X11Applications::observe(SessionEvent event, std::function<void()> callback)
{
    return sessionObservers[event].add(std::move(callback));
}

void X11Applications::announce(ApplicationEvent event)
{
    delivery.add(event);
}

void X11Applications::announce(SessionEvent event)
{
    sessionObservers[event].notify();
}

}  // namespace korvane::platform
