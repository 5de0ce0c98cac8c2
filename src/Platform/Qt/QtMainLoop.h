// Time and the run loop on Qt's event loop. One timer of Qt serves all waits, so that wake-ups are put together.
#pragma once

#include "Ports/MainLoop.h"

#include <memory>

namespace korvane::platform {

// To be made on the main thread once a QCoreApplication exists. Subscriptions may outlive it; their calls then end.
class QtMainLoop final : public MainLoop {
public:
    QtMainLoop();
    ~QtMainLoop() override;

    Seconds monotonicNow() const override;
    Seconds wallNow() const override;
    [[nodiscard]] Subscription observeClockChanges(std::function<void()> callback) override;
    // Multiples that passed while the program was held up are left out, not made up for. An interval below a
    // millisecond counts as one.
    [[nodiscard]] Subscription repeat(Seconds interval, Seconds tolerance, std::function<void()> callback) override;
    // A negative delay counts as none.
    [[nodiscard]] Subscription after(Seconds delay, std::function<void()> callback) override;
    void post(std::function<void()> callback) override;
    // Ends every running event loop at the next turn, with status 0.
    void terminate() override;

private:
    class Scheduler;
    class Wait;
    std::shared_ptr<Scheduler> scheduler;
};

}  // namespace korvane::platform
