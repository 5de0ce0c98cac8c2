// The backend's own connection to the X server. It is apart from the view toolkit's, so that what each listens to, and
// what goes wrong, stays apart.
#pragma once

#include "Platform/X11/Atoms.h"
#include "Platform/X11/EventSource.h"
#include "Ports/MainLoop.h"

#include <array>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace korvane::platform::x11 {

// Hears every event of the connection.
class EventListener {
public:
    EventListener() = default;
    EventListener(const EventListener &) = delete;
    EventListener &operator=(const EventListener &) = delete;
    virtual ~EventListener() = default;

    virtual void handle(const xcb_generic_event_t &event) = 0;
    // No event is waiting any more; the place to ask the server again for all that has changed, at once.
    virtual void settle() {}
};

// The type of an event without the bit that tells it was sent by another client.
inline int typeOf(const xcb_generic_event_t &event)
{
    return event.response_type & 0x7f;
}

class Connection {
public:
    // Null when the display can't be opened. An empty name is that of the environment. When the server goes away later,
    // the loop is told to end.
    static std::unique_ptr<Connection> open(const std::string &display, MainLoop &loop);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // What the server can do beyond the core; an event number is 0 when it can't.
    struct Extensions {
        bool clientIds = false;  // telling the process of a window
        std::uint8_t selectionEvent = 0, monitorEvent = 0, saverEvent = 0;
    };

    operator xcb_connection_t *() const { return handle; }
    xcb_window_t root() const { return screen->root; }
    // A window of our own that is never shown.
    xcb_window_t ownWindow() const { return window; }
    // The root window and those that this connection has made. They report here what everything else rests on, so
    // nobody who follows the windows of other programs may change what they report.
    bool isOurs(xcb_window_t candidate) const
    {
        const auto mask = setup().resource_id_mask;
        return candidate == root() || (candidate & ~mask) == (window & ~mask);
    }
    int screenNumber() const { return number; }
    const xcb_setup_t &setup() const { return *xcb_get_setup(handle); }
    const xcb_screen_t &screenInfo() const { return *screen; }
    const Extensions &extensions() const { return found; }
    const Atoms &atoms() const { return known; }
    xcb_atom_t operator[](Atom atom) const { return known[atom]; }
    // The number of a name outside the table; asks the server.
    xcb_atom_t intern(const std::string &name);

    // Listeners are told in the order of joining and outlive the connection's use of them.
    void join(EventListener &listener);
    void leave(EventListener &listener);

    // Tells the window manager about a window.
    void tellManager(xcb_window_t about, Atom message, const std::array<std::uint32_t, 5> &data);
    // Adds to what the root window reports to us.
    void watchRoot(std::uint32_t mask);
    void unwatchRoot(std::uint32_t mask);
    // Waits until the server has done all that was asked of it.
    void finish();

private:
    Connection(xcb_connection_t *connection, int screenNumber, MainLoop &mainLoop);
    void findExtensions();
    void internAtoms();
    void handleEvent(const xcb_generic_event_t &event);

    xcb_connection_t *handle;
    int number;
    MainLoop &loop;
    xcb_screen_t *screen = nullptr;
    xcb_window_t window = XCB_NONE;
    std::uint32_t rootMask = 0;
    Extensions found;
    Atoms known;
    std::vector<EventListener *> listeners;
    std::unique_ptr<EventSource> source;
};

}  // namespace korvane::platform::x11
