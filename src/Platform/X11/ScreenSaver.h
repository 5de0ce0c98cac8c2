// Whether the server's screen saver is running, as it reports it.
#pragma once

#include "Platform/X11/Connection.h"

#include <functional>

namespace korvane::platform::x11 {

class ScreenSaver final : public EventListener {
public:
    // Told whether it has started, or stopped.
    ScreenSaver(Connection &connection, std::function<void(bool started)> changed);
    ~ScreenSaver() override;

    void handle(const xcb_generic_event_t &event) override;

private:
    Connection &connection;
    std::function<void(bool)> changed;
    bool running = false;
};

}  // namespace korvane::platform::x11
