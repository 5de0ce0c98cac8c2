// The applications of the desktop: the mirror's windows by process, with what the installed applications tell of them.
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
    std::optional<ImagePtr> icon;  // absent until asked for
    bool iconIsOfWindow = false;   // and not of what is installed
    std::uint64_t revision = 0;
    std::vector<WindowId> hiddenWindows;  // those that hiding minimised, and showing again has to restore
};

class ApplicationTable {
public:
    ApplicationTable(PropertyMirror &mirror, ApplicationCatalogue &catalogue);

    // Takes a change over; the event that stands for it, or absent when nobody can see a difference.
    std::optional<ApplicationEvent> apply(const MirrorChanges &changes);

    // Those with tasks, by their first window, and this process; then those without windows whose application has none
    // under another process either.
    const std::vector<Application> &running();
    // Null for a process without windows; one that has only docks or the like is found.
    ApplicationEntry *find(Pid pid);
    // In place of those that were set before. The event that stands for the difference, or absent.
    std::optional<ApplicationEvent> setBadged(std::vector<BadgedProcess> processes);
    // Null for a process that is none of them.
    const BadgedProcess *badged(Pid pid) const;
    // Asks the catalogue anew once it has changed. Answers whether anything came out different since the last call.
    bool takeIdentityChange();
    [[nodiscard]] Subscription observeCatalogue(std::function<void()> callback)
    {
        return catalogue.observe(std::move(callback));
    }
    // The process that has the focus; 0 without one.
    Pid focusedPid() const { return activePid; }
    // The task that has the focus, itself or by one of its dialogs; 0 without one.
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
