// What can be done to windows. Each asks the window manager and returns; nothing waits for it, or for any program.
#pragma once

#include "Platform/X11/ApplicationTable.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/PropertyMirror.h"
#include "Platform/X11/ServerTime.h"

#include <memory>
#include <set>
#include <vector>

namespace korvane::platform::x11 {

// Bringing forward is put together over one turn of the loop: "this application", "this window of it" and "restored"
// are told one by one and in either order, and must not let another window of the application come up in between.
class WindowActions final : public EventListener {
public:
    WindowActions(Connection &connection, PropertyMirror &mirror, ApplicationTable &table, ServerTime &time);
    ~WindowActions() override;

    void close(WindowId window);
    void minimize(WindowId window);
    void restore(WindowId window);
    // Above the others, and active.
    void raise(WindowId window);
    // The window that this turn has named, or else the one of the application that was active last.
    void activate(Pid pid, bool allWindows);

    void handle(const xcb_generic_event_t &event) override;

private:
    struct Application {
        Pid pid = 0;
        WindowId named = 0;
        bool raised = false;  // the name came with raising, which counts for more than restoring
        bool activated = false, allWindows = false;
    };
    struct Turn {
        std::vector<WindowId> restored;
        std::vector<Application> applications;  // the last one is in front in the end
    };

    Application &application(Pid pid);
    void schedule();
    void carryOut(const Turn &turn, xcb_timestamp_t time);
    void raiseAll(const ApplicationEntry &entry);
    void bringForward(WindowId window, xcb_timestamp_t time);
    void putOnTop(WindowId window);
    WindowId latest(const ApplicationEntry &entry) const;

    Connection &connection;
    PropertyMirror &mirror;
    ApplicationTable &table;
    ServerTime &serverTime;
    Turn turn;
    bool scheduled = false;
    std::set<WindowId> restoring;  // asked for, and not on the screen yet
    // Of the last turn.
    std::vector<WindowId> lastTargets;
    xcb_timestamp_t lastTime = XCB_CURRENT_TIME;
    std::shared_ptr<WindowActions *> self = std::make_shared<WindowActions *>(this);
};

}  // namespace korvane::platform::x11
