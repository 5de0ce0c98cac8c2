// Wakes the run loop for the X connection: for bytes on its descriptor, and for events that the library has already
// read while it waited for a reply, when the descriptor stays silent.
#pragma once

#include <functional>
#include <xcb/xcb.h>

namespace korvane::platform::x11 {

class EventSource {
public:
    // `event` is called for each event in its order, `drained` once none is left, `lost` once when the server is gone.
    struct Calls {
        std::function<void(const xcb_generic_event_t &)> event;
        std::function<void()> drained, lost;
    };

    EventSource(xcb_connection_t *connection, Calls calls);
    ~EventSource();
    EventSource(const EventSource &) = delete;
    EventSource &operator=(const EventSource &) = delete;

private:
    struct State;
    struct Functions;
    State *state;  // lives in the loop's source, which counts its users
};

}  // namespace korvane::platform::x11
