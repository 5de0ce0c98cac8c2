#include "tests/support/GlibLoop.h"

#include <cmath>
#include <glib.h>

namespace korvane::testing {
namespace {

using platform::Seconds;

struct Call {
    std::function<void()> callback;
    bool repeats = false;
};

gboolean run(gpointer data)
{
    // The callback may destroy its own subscription, and with it the source's data.
    const auto call = *static_cast<std::shared_ptr<Call> *>(data);
    call->callback();
    return call->repeats ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
}

class Timer final : public platform::SubscriptionBase {
public:
    Timer(Seconds delay, bool repeats, std::function<void()> callback)
    {
        const auto milliseconds = static_cast<guint>(std::ceil(std::max(0.0, delay.count()) * 1000));
        source = g_timeout_source_new(milliseconds);
        g_source_set_callback(source, run,
                              new std::shared_ptr<Call>(std::make_shared<Call>(Call{std::move(callback), repeats})),
                              [](gpointer data) { delete static_cast<std::shared_ptr<Call> *>(data); });
        g_source_attach(source, nullptr);
    }
    ~Timer() override
    {
        g_source_destroy(source);
        g_source_unref(source);
    }

private:
    GSource *source;
};

}  // namespace

Seconds GlibLoop::monotonicNow() const
{
    return Seconds(static_cast<double>(g_get_monotonic_time()) / 1e6);
}

Seconds GlibLoop::wallNow() const
{
    return Seconds(static_cast<double>(g_get_real_time()) / 1e6);
}

platform::Subscription GlibLoop::repeat(Seconds interval, Seconds, std::function<void()> callback)
{
    return std::make_unique<Timer>(interval, true, std::move(callback));
}

platform::Subscription GlibLoop::after(Seconds delay, std::function<void()> callback)
{
    return std::make_unique<Timer>(delay, false, std::move(callback));
}

void GlibLoop::post(std::function<void()> callback)
{
    g_idle_add_full(G_PRIORITY_DEFAULT, run,
                    new std::shared_ptr<Call>(std::make_shared<Call>(Call{std::move(callback)})),
                    [](gpointer data) { delete static_cast<std::shared_ptr<Call> *>(data); });
}

bool GlibLoop::turnUntil(const std::function<bool()> &condition, Seconds limit)
{
    const auto end = monotonicNow() + limit;
    // Wakes the loop for conditions that no event of the loop makes true.
    const auto tick = repeat(Seconds(0.01), Seconds(0), [] {});
    while (!condition()) {
        if (monotonicNow() > end)
            return false;
        g_main_context_iteration(nullptr, TRUE);
    }
    return true;
}

void GlibLoop::turnFor(Seconds time)
{
    const auto end = monotonicNow() + time;
    turnUntil([&] { return monotonicNow() >= end; }, time + Seconds(1));
}

int GlibLoop::turnsWithin(Seconds time)
{
    bool over = false;
    const auto end = after(time, [&] { over = true; });
    int turns = 0;
    for (;; ++turns) {
        g_main_context_iteration(nullptr, TRUE);
        if (over)
            return turns;
    }
}

}  // namespace korvane::testing
