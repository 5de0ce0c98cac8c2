// The running applications on X11: the processes that own managed windows.
#pragma once

#include "Platform/X11/ApplicationTable.h"
#include "Platform/X11/ChangeDelivery.h"
#include "Platform/X11/WindowActions.h"
#include "Ports/Applications.h"
#include "Ports/ObserverList.h"

#include <array>
#include <map>
#include <string>

namespace korvane::platform {

// Stands for the process that shows the badges. X11 has no such process.
constexpr Pid dockPid = -2;

class X11Applications final : public Applications {
public:
    X11Applications(x11::Connection &connection, x11::PropertyMirror &mirror, x11::ApplicationTable &table,
                    x11::WindowActions &actions, IconLoader loadIcon, MainLoop &loop);

    Pid self() const override;
    const std::vector<Application> &running() override { return table.running(); }
    std::optional<Application> find(Pid pid) override;
    std::vector<Application> withBundleIdentifier(std::string_view bundleIdentifier) override;
    ImagePtr icon(Pid pid) override;
    bool hide(Pid pid) override;
    bool unhide(Pid pid) override;
    // A process that has no window to close gets a signal that asks it to end.
    bool terminate(Pid pid) override;
    bool activate(Pid pid, Activate options) override;
    // Does nothing: a dock window has no icon of its own.
    bool becomeAccessory() override { return true; }
    // All answers come from the mirror, from the catalogue or from announcements, and all three report every change.
    bool announcesEveryChange() const override { return true; }
    [[nodiscard]] Subscription observe(ApplicationEvent event, std::function<void()> callback) override;
    [[nodiscard]] Subscription observe(SessionEvent event, std::function<void()> callback) override;

    // Passes on events of applications and of the session from other parts of the system. Call it from the run loop
    // only.
    void announce(ApplicationEvent event);
    void announce(SessionEvent event);

private:
    ImagePtr windowIcon(const x11::ApplicationEntry &entry);

    x11::Connection &connection;
    x11::PropertyMirror &mirror;
    x11::ApplicationTable &table;
    x11::WindowActions &actions;
    IconLoader loadIcon;
    MainLoop &loop;
    std::map<ApplicationEvent, ObserverList<>> applicationObservers;
    std::map<SessionEvent, ObserverList<>> sessionObservers;
    x11::ChangeDelivery delivery;
    Subscription installed, installing;
};

}  // namespace korvane::platform
