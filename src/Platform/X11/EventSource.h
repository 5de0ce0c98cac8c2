// Wakes the run loop for the X connection: for new bytes on its descriptor, and for events that the library already
// read while it waited for a reply. For those events the descriptor does not wake.
#pragma once

#include <functional>
#include <xcb/xcb.h>

namespace korvane::platform::x11 {

class EventSource {
public:
    // `event` is called for each event in order, `drained` when no event is left, `lost` once when the server is gone.
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
    State *state;  // belongs to the loop's source, which counts references
};

}  // namespace korvane::platform::x11
