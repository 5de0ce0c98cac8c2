// Passes changes on: the first after a quiet moment at once, those that follow together, at most once a frame.
#pragma once

#include "Ports/Applications.h"
#include "Ports/MainLoop.h"

#include <functional>
#include <optional>

namespace korvane::platform::x11 {

constexpr Seconds frameTime{0.016};

class ChangeDelivery {
public:
    // `deliver` is told the one event that stands for all that has changed since the last time.
    ChangeDelivery(MainLoop &loop, std::function<void(ApplicationEvent)> deliver);

    // To be called from the run loop.
    void add(ApplicationEvent event);

private:
    void flush();

    MainLoop &loop;
    std::function<void(ApplicationEvent)> deliver;
    std::optional<ApplicationEvent> waiting;
    std::optional<Seconds> lastTime;
    bool scheduled = false;
    Subscription timer;
};

}  // namespace korvane::platform::x11
