// Time and the run loop. The core reads clocks and waits only through this port.
#pragma once

#include "Ports/Subscription.h"

#include <chrono>
#include <functional>

namespace korvane::platform {

using Seconds = std::chrono::duration<double>;

class MainLoop {
public:
    virtual ~MainLoop() = default;

    // For elapsed times; never goes backwards.
    virtual Seconds monotonicNow() const = 0;
    // Since 1970, for the clock on the bar.
    virtual Seconds wallNow() const = 0;
    // Calls when the wall clock was set, or has advanced while the machine slept. Null where the system does not report
    // this.
    [[nodiscard]] virtual Subscription observeClockChanges(std::function<void()>) { return nullptr; }
    // Calls at every multiple of the interval until destroyed, also while a menu, a drag or an alert runs. The
    // tolerance lets the system combine wake-ups.
    [[nodiscard]] virtual Subscription repeat(Seconds interval, Seconds tolerance, std::function<void()> callback) = 0;
    // Calls once after the delay; destroying the subscription cancels it.
    [[nodiscard]] virtual Subscription after(Seconds delay, std::function<void()> callback) = 0;
    // Calls at the next turn, in the order of posting. The only call here that other threads may make.
    virtual void post(std::function<void()> callback) = 0;
    // Ends the program in an orderly way.
    virtual void terminate() = 0;
};

}  // namespace korvane::platform
