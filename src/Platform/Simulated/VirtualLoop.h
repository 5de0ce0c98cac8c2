// A run loop whose time stands still until a test advances it. It counts whole microseconds, so that many small steps
// end exactly where one large step does.
#pragma once

#include "Ports/MainLoop.h"
#include "Ports/ObserverList.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace korvane::platform::simulated {

class VirtualLoop final : public platform::MainLoop {
public:
    using Seconds = platform::Seconds;

    VirtualLoop();
    ~VirtualLoop() override;

    Seconds monotonicNow() const override;
    Seconds wallNow() const override;
    // The tolerance is ignored: every call comes at its exact time.
    [[nodiscard]] platform::Subscription repeat(Seconds interval, Seconds tolerance,
                                                std::function<void()> callback) override;
    [[nodiscard]] platform::Subscription after(Seconds delay, std::function<void()> callback) override;
    [[nodiscard]] platform::Subscription observeClockChanges(std::function<void()> callback) override
    {
        return tellsOfTheClock ? clockObservers->add(std::move(callback)) : nullptr;
    }
    void post(std::function<void()> callback) override;
    void terminate() override { hasTerminated = true; }

    // Lets that much time pass. Calls everything that is due up to and including the end, in order of time. Callbacks
    // that are due at the same time are called in the order of creation. At each moment, posted calls come before
    // timers.
    void advance(Seconds duration);
    // Runs the posted calls, and also those that they post. No time passes.
    void runPosted();
    // Advances from one due time to the next until the condition is true. Returns false when it is not true within the
    // limit.
    bool runUntil(const std::function<bool()> &condition, Seconds limit);

    bool terminated() const { return hasTerminated; }
    // The number of waiting timers and delays.
    std::size_t pendingTimers() const;
    bool hasPosted() const { return !posted.empty(); }
    // Sets the wall clock, as a person or a time server does. Elapsed time does not change. Observers are told at the
    // next turn.
    void setWallNow(Seconds sinceEpoch);
    // From now on nobody can observe the clock, as on a system that does not report clock changes.
    void keepClockChangesSecret() { tellsOfTheClock = false; }

private:
    struct Timer {
        std::int64_t interval = 0;  // 0 for a single call
        std::function<void()> callback;
    };
    using Key = std::pair<std::int64_t, std::uint64_t>;  // due time, order of creation
    using Timers = std::map<Key, std::shared_ptr<Timer>>;
    class Registration;
    struct State;

    platform::Subscription schedule(std::int64_t delay, std::int64_t interval, std::function<void()> callback);
    // Runs the earliest timer that is due by then. Returns false when there is none.
    bool fireNext(std::int64_t limit);

    std::shared_ptr<State> state;
    std::shared_ptr<platform::ObserverList<>> clockObservers = std::make_shared<platform::ObserverList<>>();
    std::deque<std::function<void()>> posted;
    double wallOffset;
    bool hasTerminated = false, tellsOfTheClock = true;
};

}  // namespace korvane::platform::simulated
