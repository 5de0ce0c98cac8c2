// Time and the run loop on Qt's event loop. One Qt timer serves all waits, so that they share wake-ups.
#pragma once

#include "Ports/MainLoop.h"

#include <memory>

namespace korvane::platform {

// Make it on the main thread when a QCoreApplication exists. Subscriptions may outlive the loop; then they are no
// longer called.
class QtMainLoop final : public MainLoop {
public:
    QtMainLoop();
    ~QtMainLoop() override;

    Seconds monotonicNow() const override;
    Seconds wallNow() const override;
    [[nodiscard]] Subscription observeClockChanges(std::function<void()> callback) override;
    // Calls that were missed while the program was busy are skipped; they are not made later. An interval below one
    // millisecond counts as one millisecond.
    [[nodiscard]] Subscription repeat(Seconds interval, Seconds tolerance, std::function<void()> callback) override;
    // A negative delay counts as zero.
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
