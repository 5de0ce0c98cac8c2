#include "Platform/X11/WindowActions.h"

#include <algorithm>
#include <utility>

namespace korvane::platform::x11 {
namespace {

// In requests: they come from a person's action in a pager or taskbar, not from the window's own program.
constexpr std::uint32_t sourceIsPager = 2;

}  // namespace

WindowActions::WindowActions(Connection &server, PropertyMirror &windows, ApplicationTable &applications,
                             ServerTime &time)
    : connection(server), mirror(windows), table(applications), serverTime(time)
{
    connection.join(*this);
}

WindowActions::~WindowActions()
{
    connection.leave(*this);
}

// A manager may report that a window is minimised before it removes the window from the screen. A request to restore it
// has no effect in between, because the window is still there. So the window is shown again when it disappears.
void WindowActions::handle(const xcb_generic_event_t &event)
{
    if (restoring.empty())
        return;
    if (typeOf(event) == XCB_MAP_NOTIFY)
        restoring.erase(reinterpret_cast<const xcb_map_notify_event_t &>(event).window);
    else if (typeOf(event) == XCB_DESTROY_NOTIFY)
        restoring.erase(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window);
    else if (typeOf(event) == XCB_UNMAP_NOTIFY) {
        const WindowId window = reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window;
        if (restoring.erase(window) == 0)
            return;
        xcb_map_window(connection, window);
        // The restored window may take the focus from the window that should have it.
        for (const WindowId target : lastTargets)
            bringForward(target, lastTime);
        xcb_flush(connection);
    }
}

void WindowActions::close(WindowId window)
{
    if (mirror.managed()) {
        connection.tellManager(window, Atom::netCloseWindow, {XCB_CURRENT_TIME, sourceIsPager});
        return;
    }
    const WindowRecord *record = mirror.find(window);
    if (!record || !record->closable)
        return;
    // Without a window manager, the message is sent directly to the window.
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection[Atom::wmProtocols];
    event.data.data32[0] = connection[Atom::wmDeleteWindow];
    xcb_send_event(connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&event));
}

void WindowActions::minimize(WindowId window)
{
    restoring.erase(window);
    connection.tellManager(window, Atom::wmChangeState, {iconicState});
}

void WindowActions::restore(WindowId window)
{
    const WindowRecord *record = mirror.find(window);
    if (!record)
        return;
    turn.restored.push_back(window);
    if (Application &owner = application(record->pid); !owner.raised)
        owner.named = window;
    schedule();
}

void WindowActions::raise(WindowId window)
{
    const WindowRecord *record = mirror.find(window);
    if (!record)
        return;
    Application &owner = application(record->pid);
    owner.named = window;
    owner.raised = owner.activated = true;
    schedule();
}

void WindowActions::activate(Pid pid, bool allWindows)
{
    Application &owner = application(pid);
    owner.activated = true;
    owner.allWindows = owner.allWindows || allWindows;
    schedule();
}

WindowActions::Application &WindowActions::application(Pid pid)
{
    auto &list = turn.applications;
    const auto known = std::find_if(list.begin(), list.end(), [pid](const auto &one) { return one.pid == pid; });
    Application one = known == list.end() ? Application{pid} : *known;
    if (known != list.end())
        list.erase(known);
    list.push_back(one);
    return list.back();
}

void WindowActions::schedule()
{
    if (std::exchange(scheduled, true))
        return;
    serverTime.ask([weak = std::weak_ptr(self)](xcb_timestamp_t time) {
        const auto living = weak.lock();
        if (!living)
            return;
        WindowActions &actions = **living;
        actions.scheduled = false;
        actions.carryOut(std::exchange(actions.turn, {}), time);
    });
}

void WindowActions::carryOut(const Turn &now, xcb_timestamp_t time)
{
    std::vector<WindowId> targets;
    for (const Application &one : now.applications) {
        const ApplicationEntry *entry = table.find(one.pid);
        if (!one.activated || !entry)
            continue;
        const WindowId target = one.named != 0 && mirror.find(one.named) ? one.named : latest(*entry);
        if (target != 0)
            targets.push_back(target);
    }
    for (const WindowId window : now.restored)
        if (std::find(targets.begin(), targets.end(), window) == targets.end()) {
            xcb_map_window(connection, window);
            restoring.insert(window);
        }
    for (const Application &one : now.applications)
        if (const ApplicationEntry *entry = table.find(one.pid); entry && one.activated && one.allWindows)
            raiseAll(*entry);
    for (const WindowId window : targets)
        bringForward(window, time);
    lastTargets = std::move(targets);
    lastTime = time;
    xcb_flush(connection);
}

// Their relative order stays.
void WindowActions::raiseAll(const ApplicationEntry &entry)
{
    for (const WindowId window : mirror.stacking()) {
        const WindowRecord *record = mirror.find(window);
        const bool task = std::find(entry.tasks.begin(), entry.tasks.end(), window) != entry.tasks.end();
        if (task && record && !record->minimized)
            putOnTop(window);
    }
}

void WindowActions::bringForward(WindowId window, xcb_timestamp_t time)
{
    const WindowRecord *record = mirror.find(window);
    if (!record)
        return;
    putOnTop(window);
    if (!mirror.managed()) {
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
        return;
    }
    // Not every manager switches to the desktop of the window that becomes active.
    if (record->desktop != everyDesktop && record->desktop != mirror.currentDesktop())
        connection.tellManager(connection.root(), Atom::netCurrentDesktop, {record->desktop, time});
    connection.tellManager(window, Atom::netActiveWindow, {sourceIsPager, time, XCB_NONE});
}

void WindowActions::putOnTop(WindowId window)
{
    if (mirror.managed()) {
        connection.tellManager(window, Atom::netRestackWindow, {sourceIsPager, XCB_NONE, XCB_STACK_MODE_ABOVE});
        return;
    }
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

// A visible window is preferred to one that would have to be restored.
WindowId WindowActions::latest(const ApplicationEntry &entry) const
{
    const WindowRecord *best = nullptr;
    const auto before = [](const WindowRecord &left, const WindowRecord &right) {
        return left.minimized != right.minimized ? right.minimized : left.lastActive > right.lastActive;
    };
    const auto consider = [&](WindowId window) {
        const WindowRecord *record = mirror.find(window);
        const bool task = std::find(entry.tasks.begin(), entry.tasks.end(), window) != entry.tasks.end();
        if (record && task && (!best || before(*record, *best)))
            best = record;
    };
    // If no window was ever active, the topmost one is chosen.
    std::for_each(mirror.stacking().rbegin(), mirror.stacking().rend(), consider);
    std::for_each(entry.tasks.begin(), entry.tasks.end(), consider);
    return best ? best->id : 0;
}

}  // namespace korvane::platform::x11
