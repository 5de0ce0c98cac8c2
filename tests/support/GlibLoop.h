// A run loop on GLib's default context, with no toolkit, that a test turns until something holds.
#pragma once

#include "Ports/MainLoop.h"

#include <functional>
#include <memory>

namespace korvane::testing {

class GlibLoop final : public platform::MainLoop {
public:
    using Seconds = platform::Seconds;

    Seconds monotonicNow() const override;
    Seconds wallNow() const override;
    [[nodiscard]] platform::Subscription repeat(Seconds interval, Seconds tolerance,
                                                std::function<void()> callback) override;
    [[nodiscard]] platform::Subscription after(Seconds delay, std::function<void()> callback) override;
    void post(std::function<void()> callback) override;
    void terminate() override { hasTerminated = true; }

    bool terminated() const { return hasTerminated; }
    // Serves the loop until the condition holds; false when it does not in good time.
    bool turnUntil(const std::function<bool()> &condition, Seconds limit = Seconds(5));
    // Serves the loop for that long, for what must not happen.
    void turnFor(Seconds time);
    // How often the loop wakes up in that time, other than by the end of the time.
    int turnsWithin(Seconds time);

private:
    bool hasTerminated = false;
};

}  // namespace korvane::testing
