// Passes changes on. The first change after a quiet moment is passed on at once; later ones are collected, for one
// frame.
#pragma once

#include "Ports/Applications.h"
#include "Ports/MainLoop.h"

#include <functional>
#include <optional>

namespace korvane::platform::x11 {

constexpr Seconds frameTime{0.016};

class ChangeDelivery {
public:
    // `deliver` gets one event that stands for all changes since its last call.
    ChangeDelivery(MainLoop &loop, std::function<void(ApplicationEvent)> deliver);

    // Call it from the run loop only.
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
