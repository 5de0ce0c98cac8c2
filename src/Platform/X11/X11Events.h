// The mouse on the whole desktop, from the raw events of XInput 2. They come no matter which window has the pointer.
#pragma once

#include "Platform/X11/Connection.h"
#include "Ports/Events.h"

#include <memory>

namespace korvane::platform {

class X11Events final : public Events, private x11::EventListener {
public:
    explicit X11Events(x11::Connection &connection);
    ~X11Events() override;

    // Without the extension no event is reported, and nobody can wait for a motion.
    [[nodiscard]] Subscription observePresses(std::function<void()> callback) override;
    [[nodiscard]] Subscription nextMotion(std::function<void()> callback) override;

private:
    struct Observers;
    class Observation;

    void handle(const xcb_generic_event_t &event) override;

    x11::Connection &connection;
    std::uint8_t extension = 0;  // its number; 0 when the server does not have it
    std::shared_ptr<Observers> observers;
};

}  // namespace korvane::platform
