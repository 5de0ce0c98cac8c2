// The backend's own connection to the X server. It is separate from the view toolkit's connection, so that the events
// and the errors of one do not affect the other.
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

// Receives every event of the connection.
class EventListener {
public:
    EventListener() = default;
    EventListener(const EventListener &) = delete;
    EventListener &operator=(const EventListener &) = delete;
    virtual ~EventListener() = default;

    virtual void handle(const xcb_generic_event_t &event) = 0;
    // Called when no event is waiting any more. Here all changes can be requested from the server at once.
    virtual void settle() {}
};

// The type of an event, without the bit that marks events from other clients.
inline int typeOf(const xcb_generic_event_t &event)
{
    return event.response_type & 0x7f;
}

class Connection {
public:
    // Null when the display can't be opened. An empty name means the display in the environment. When the server goes
    // away later, the loop is told to end.
    static std::unique_ptr<Connection> open(const std::string &display, MainLoop &loop);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // The extensions of the server. An event number is 0 when the extension is missing.
    struct Extensions {
        bool clientIds = false;  // the server can tell the process of a window
        std::uint8_t selectionEvent = 0, monitorEvent = 0, saverEvent = 0;
    };

    operator xcb_connection_t *() const { return handle; }
    xcb_window_t root() const { return screen->root; }
    // A window of this connection that is never shown.
    xcb_window_t ownWindow() const { return window; }
    // True for the root window and the windows that this connection has made. All other code depends on the events of
    // these windows, so the code that follows other programs' windows must not change which events they send.
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
    // The number of a name that is not in the table. It asks the server.
    xcb_atom_t intern(const std::string &name);

    // Listeners are called in the order in which they joined. They live longer than the connection uses them.
    void join(EventListener &listener);
    void leave(EventListener &listener);

    // Sends the window manager a message about a window.
    void tellManager(xcb_window_t about, Atom message, const std::array<std::uint32_t, 5> &data);
    // Adds events to those that the root window sends us.
    void watchRoot(std::uint32_t mask);
    void unwatchRoot(std::uint32_t mask);
    // Waits until the server has processed all requests.
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
