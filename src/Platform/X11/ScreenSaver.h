// Whether the server reports that its screen saver is running.
#pragma once

#include "Platform/X11/Connection.h"

#include <functional>

namespace korvane::platform::x11 {

class ScreenSaver final : public EventListener {
public:
    // `changed` is called when the screen saver starts or stops.
    ScreenSaver(Connection &connection, std::function<void(bool started)> changed);
    ~ScreenSaver() override;

    void handle(const xcb_generic_event_t &event) override;

private:
    Connection &connection;
    std::function<void(bool)> changed;
    bool running = false;
};

}  // namespace korvane::platform::x11
