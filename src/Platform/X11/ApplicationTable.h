// The applications of the desktop: the mirror's windows by process, with the data of the installed applications.
#pragma once

#include "Platform/Linux/ApplicationCatalogue.h"
#include "Platform/Linux/BadgedPrograms.h"
#include "Platform/X11/PropertyMirror.h"
#include "Ports/Applications.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace korvane::platform::x11 {

struct ApplicationEntry {
    std::vector<WindowId> tasks;  // in the order of the window list
    Application snapshot;
    WindowOrigin origin;
    std::string iconName;
    std::optional<ImagePtr> icon;  // absent until it is requested
    bool iconIsOfWindow = false;   // the icon comes from a window and not from the installed application
    std::uint64_t revision = 0;
    std::vector<WindowId> hiddenWindows;  // windows that hiding has minimised and that unhiding has to restore
};

class ApplicationTable {
public:
    ApplicationTable(PropertyMirror &mirror, ApplicationCatalogue &catalogue);

    // Applies a change. Returns the event that stands for it; absent when nobody can see a difference.
    std::optional<ApplicationEvent> apply(const MirrorChanges &changes);

    // First the applications with tasks, in the order of their first windows, and this process. Then processes without
    // windows, if their application has no windows in another process either.
    const std::vector<Application> &running();
    // Null for a process without windows. A process that has only docks or similar windows is found.
    ApplicationEntry *find(Pid pid);
    // Replaces the badged processes. Returns the event that stands for the difference; absent when there is none.
    std::optional<ApplicationEvent> setBadged(std::vector<BadgedProcess> processes);
    // Null when the process shows no badge.
    const BadgedProcess *badged(Pid pid) const;
    // Asks the catalogue again if it has changed. Returns whether any result differs since the last call.
    bool takeIdentityChange();
    [[nodiscard]] Subscription observeCatalogue(std::function<void()> callback)
    {
        return catalogue.observe(std::move(callback));
    }
    // The process that has the focus; 0 without one.
    Pid focusedPid() const { return activePid; }
    // The task that has the focus, or whose dialog has it; 0 without one.
    WindowId focusedTask() const { return activeTask; }

    bool minimized(const ApplicationEntry &entry) const;
    const WindowRecord *window(WindowId id) const { return mirror.find(id); }

private:
    bool regroup(std::optional<ApplicationEvent> &event);
    void findActive();
    void appendWindowless();
    void identifyAgain();
    void identify(Pid pid, ApplicationEntry &entry);
    bool describe(Pid pid, ApplicationEntry &entry);
    std::optional<ApplicationEvent> updateHiding(ApplicationEntry &entry);
    void touch(Pid pid);

    PropertyMirror &mirror;
    ApplicationCatalogue &catalogue;
    std::unordered_map<Pid, ApplicationEntry> entries;
    std::vector<Pid> order;
    std::vector<BadgedProcess> badgedProcesses;
    std::vector<Application> runningApplications;
    bool stale = true, identityChanged = false;
    unsigned catalogueRevision = 0;
    std::uint64_t revisions = 0;
    WindowId activeTask = 0;
    Pid activePid = 0;
};

}  // namespace korvane::platform::x11
