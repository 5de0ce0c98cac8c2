// What can be done to windows. Each operation asks the window manager and returns. Nothing waits for the manager or for
// a program.
#pragma once

#include "Platform/X11/ApplicationTable.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/PropertyMirror.h"
#include "Platform/X11/ServerTime.h"

#include <memory>
#include <set>
#include <vector>

namespace korvane::platform::x11 {

// All requests to bring windows forward are collected over one turn of the loop. "This application", "this window of
// it" and "restored" come one by one and in any order. Another window of the application must not come to the front in
// between.
class WindowActions final : public EventListener {
public:
    WindowActions(Connection &connection, PropertyMirror &mirror, ApplicationTable &table, ServerTime &time);
    ~WindowActions() override;

    void close(WindowId window);
    void minimize(WindowId window);
    void restore(WindowId window);
    // Puts the window above the others and makes it active.
    void raise(WindowId window);
    // Activates the window that was named in this turn, otherwise the application's window that was active last.
    void activate(Pid pid, bool allWindows);

    void handle(const xcb_generic_event_t &event) override;

private:
    struct Application {
        Pid pid = 0;
        WindowId named = 0;
        bool raised = false;  // the window was named by raising, which has priority over restoring
        bool activated = false, allWindows = false;
    };
    struct Turn {
        std::vector<WindowId> restored;
        std::vector<Application> applications;  // the last one will be in front
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
    std::set<WindowId> restoring;  // requested, but not on the screen yet
    // The windows and the time of the last turn.
    std::vector<WindowId> lastTargets;
    xcb_timestamp_t lastTime = XCB_CURRENT_TIME;
    std::shared_ptr<WindowActions *> self = std::make_shared<WindowActions *>(this);
};

}  // namespace korvane::platform::x11
