#include "Platform/Simulated/VirtualLoop.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace korvane::platform::simulated {
namespace {

constexpr double ticksPerSecond = 1e6;
// The first minute of 2026. Any moment would do if every run uses the same one.
constexpr double firstWallTime = 1767225600;

// Rounded up, because a delay is never shortened. The small subtraction allows for the error of decimal fractions in
// binary.
std::int64_t ticks(platform::Seconds duration)
{
    return static_cast<std::int64_t>(std::ceil(std::max(0.0, duration.count()) * ticksPerSecond - 1e-3));
}

}  // namespace

struct VirtualLoop::State {
    std::int64_t now = 0;
    std::uint64_t created = 0;
    Timers timers;
    std::unordered_map<std::uint64_t, std::int64_t> dueTimes;  // by the order of creation
};

class VirtualLoop::Registration final : public platform::SubscriptionBase {
public:
    Registration(const std::shared_ptr<State> &owner, std::uint64_t number) : state(owner), created(number) {}
    ~Registration() override
    {
        const auto owner = state.lock();
        if (!owner)
            return;
        const auto due = owner->dueTimes.find(created);
        if (due == owner->dueTimes.end())
            return;
        owner->timers.erase({due->second, created});
        owner->dueTimes.erase(due);
    }

private:
    std::weak_ptr<State> state;
    std::uint64_t created;
};

VirtualLoop::VirtualLoop() : state(std::make_shared<State>()), wallOffset(firstWallTime) {}
VirtualLoop::~VirtualLoop() = default;

platform::Seconds VirtualLoop::monotonicNow() const
{
    return Seconds(static_cast<double>(state->now) / ticksPerSecond);
}

platform::Seconds VirtualLoop::wallNow() const
{
    return Seconds(wallOffset) + monotonicNow();
}

void VirtualLoop::setWallNow(Seconds sinceEpoch)
{
    wallOffset = (sinceEpoch - monotonicNow()).count();
    post([told = clockObservers] { told->notify(); });
}

std::size_t VirtualLoop::pendingTimers() const
{
    return state->timers.size();
}

platform::Subscription VirtualLoop::schedule(std::int64_t delay, std::int64_t interval, std::function<void()> callback)
{
    const std::uint64_t created = state->created++;
    const std::int64_t due = state->now + delay;
    state->timers.emplace(Key{due, created}, std::make_shared<Timer>(Timer{interval, std::move(callback)}));
    state->dueTimes.emplace(created, due);
    return std::make_unique<Registration>(state, created);
}

platform::Subscription VirtualLoop::repeat(Seconds interval, Seconds, std::function<void()> callback)
{
    // With an interval of zero the time would never pass.
    const std::int64_t length = std::max<std::int64_t>(1, ticks(interval));
    return schedule(length, length, std::move(callback));
}

platform::Subscription VirtualLoop::after(Seconds delay, std::function<void()> callback)
{
    return schedule(ticks(delay), 0, std::move(callback));
}

void VirtualLoop::post(std::function<void()> callback)
{
    posted.push_back(std::move(callback));
}

void VirtualLoop::runPosted()
{
    while (!posted.empty()) {
        const auto callback = std::move(posted.front());
        posted.pop_front();
        callback();
    }
}

bool VirtualLoop::fireNext(std::int64_t limit)
{
    runPosted();
    if (state->timers.empty() || state->timers.begin()->first.first > limit)
        return false;
    auto node = state->timers.extract(state->timers.begin());
    const auto [due, created] = node.key();
    const std::shared_ptr<Timer> timer = node.mapped();  // the call may destroy its subscription
    state->now = std::max(state->now, due);
    if (timer->interval > 0) {
        node.key() = Key{due + timer->interval, created};
        state->dueTimes[created] = due + timer->interval;
        state->timers.insert(std::move(node));
    } else {
        state->dueTimes.erase(created);
    }
    timer->callback();
    return true;
}

void VirtualLoop::advance(Seconds duration)
{
    const std::int64_t end = state->now + ticks(duration);
    while (fireNext(end)) {
    }
    // A callback that advanced the time itself may have gone past the end.
    state->now = std::max(state->now, end);
}

bool VirtualLoop::runUntil(const std::function<bool()> &condition, Seconds limit)
{
    const std::int64_t end = state->now + ticks(limit);
    for (;;) {
        runPosted();
        if (condition())
            return true;
        if (!fireNext(end)) {
            state->now = std::max(state->now, end);
            return condition();
        }
    }
}

}  // namespace korvane::platform::simulated
