// A time stamp of the server, for requests that a window manager would refuse without one.
#pragma once

#include "Platform/X11/Connection.h"

#include <functional>
#include <vector>

namespace korvane::platform::x11 {

class ServerTime final : public EventListener {
public:
    ServerTime(Connection &server, MainLoop &loop);
    ~ServerTime() override;

    // Calls `use` with the server's current time at a later turn of the loop. Nothing waits for it. If the server does
    // not answer soon enough, `use` is called with XCB_CURRENT_TIME.
    void ask(std::function<void(xcb_timestamp_t)> use);

    void handle(const xcb_generic_event_t &event) override;

private:
    void answer(xcb_timestamp_t time);

    Connection &connection;
    MainLoop &loop;
    std::vector<std::function<void(xcb_timestamp_t)>> waiting;
    Subscription limit;
};

}  // namespace korvane::platform::x11
