// A time stamp of the server for requests that a window manager would refuse without one.
#pragma once

#include "Platform/X11/Connection.h"

#include <functional>
#include <vector>

namespace korvane::platform::x11 {

class ServerTime final : public EventListener {
public:
    explicit ServerTime(Connection &server);
    ~ServerTime() override;

    // Calls with the present time of the server at a later turn of the loop. Nothing waits meanwhile.
    void ask(std::function<void(xcb_timestamp_t)> use);

    void handle(const xcb_generic_event_t &event) override;

private:
    Connection &connection;
    std::vector<std::function<void(xcb_timestamp_t)>> waiting;
};

}  // namespace korvane::platform::x11
