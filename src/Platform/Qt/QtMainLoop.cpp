#include "Platform/Qt/QtMainLoop.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QSocketNotifier>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <utility>
#ifdef __linux__
#include <sys/timerfd.h>
#include <unistd.h>
#endif

namespace korvane::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr Clock::duration shortestInterval = std::chrono::milliseconds(1);
// One day. Longer waits are split, so that the milliseconds fit into Qt's int.
constexpr Clock::duration longestSleep = std::chrono::hours(24);
constexpr Seconds longestWait{1e9};

Clock::duration toClock(Seconds seconds)
{
    // This also turns a value that is not a number into zero.
    const Seconds bounded = seconds > Seconds::zero() ? std::min(seconds, longestWait) : Seconds::zero();
    return std::chrono::duration_cast<Clock::duration>(bounded);
}

}  // namespace

class QtMainLoop::Scheduler final : public QObject {
public:
    using Key = std::pair<Clock::time_point, std::uint64_t>;  // the due time, then the order of registration

    struct Entry {
        Clock::duration interval{};  // zero for a single call
        Clock::duration tolerance{};
        std::shared_ptr<const std::function<void()>> callback;
        std::uint64_t number = 0;
        Clock::time_point due;
        bool running = false;
    };

    std::shared_ptr<Entry> add(Clock::duration delay, Clock::duration interval, Clock::duration tolerance,
                               std::function<void()> callback)
    {
        auto entry = std::make_shared<Entry>();
        entry->interval = interval;
        entry->tolerance = tolerance;
        entry->callback = std::make_shared<const std::function<void()>>(std::move(callback));
        entry->number = ++lastNumber;
        entry->due = Clock::now() + delay;
        entries.emplace(Key{entry->due, entry->number}, entry);
        arm();
        return entry;
    }

    void remove(const Entry &entry)
    {
        if (entries.erase(Key{entry.due, entry.number}) > 0)
            arm();
    }

    void post(std::function<void()> callback)
    {
        const std::lock_guard lock(mutex);
        posted.push_back(std::move(callback));
        wake();
    }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        if (event->timerId() != timer.timerId())
            return;
        timer.stop();
        armedFor = Clock::time_point::max();
        runDue();
    }

    void customEvent(QEvent *event) override
    {
        if (event->type() == QEvent::User)
            runPosted();
    }

private:
    // A timer that a callback registers here is due at a later turn, even with a delay of zero. Otherwise a chain of
    // zero delays could block the window system.
    void runDue()
    {
        const auto now = Clock::now();
        const std::uint64_t newest = lastNumber;
        for (;;) {
            auto next = std::find_if(entries.begin(), entries.end(),
                                     [&](const auto &item) { return item.second->number <= newest; });
            if (next == entries.end() || next->first.first > now)
                break;
            const std::shared_ptr<Entry> entry = next->second;
            entries.erase(next);
            if (entry->interval > Clock::duration::zero()) {
                entry->due += entry->interval * ((now - entry->due) / entry->interval + 1);
                entries.emplace(Key{entry->due, entry->number}, entry);
            }
            // Armed before the call: the callback may run an event loop of its own, and the other timers must go on
            // there.
            arm();
            if (entry->running)
                continue;                           // not again inside its own event loop
            const auto callback = entry->callback;  // keeps the function alive if the call destroys its subscription
            entry->running = true;
            (*callback)();
            entry->running = false;
        }
        arm();
    }

    void runPosted()
    {
        std::unique_lock lock(mutex);
        wakePending = false;
        for (std::size_t left = posted.size(); left > 0 && !posted.empty(); --left) {
            const auto callback = std::move(posted.front());
            posted.pop_front();
            if (!posted.empty())
                wake();  // before the call, for the same reason as above
            lock.unlock();
            callback();
            lock.lock();
        }
    }

    // The mutex must be held.
    void wake()
    {
        if (!std::exchange(wakePending, true))
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    // The latest time at which an entry becomes due before any other entry has exceeded its tolerance. This needs as
    // few wake-ups as sleeping until the tolerance ends. An entry is called late only if it can then be called together
    // with another one.
    Clock::time_point nextWake() const
    {
        auto limit = Clock::time_point::max();
        auto wakeAt = Clock::time_point::max();
        for (const auto &[key, entry] : entries) {
            if (key.first > limit)
                break;
            wakeAt = key.first;
            limit = std::min(limit, key.first + entry->tolerance);
        }
        return wakeAt;
    }

    void arm()
    {
        const auto wakeAt = nextWake();
        if (wakeAt == armedFor)
            return;
        armedFor = wakeAt;
        if (wakeAt == Clock::time_point::max()) {
            timer.stop();
            return;
        }
        const auto sleep = std::clamp(wakeAt - Clock::now(), Clock::duration::zero(), longestSleep);
        // Rounded up, so that the entry is already due when the timer fires.
        timer.start(static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(sleep).count()), Qt::PreciseTimer,
                    this);
    }

    std::map<Key, std::shared_ptr<Entry>> entries;
    std::uint64_t lastNumber = 0;
    QBasicTimer timer;
    Clock::time_point armedFor = Clock::time_point::max();

    std::mutex mutex;
    std::deque<std::function<void()>> posted;
    bool wakePending = false;
};

class QtMainLoop::Wait final : public SubscriptionBase {
public:
    Wait(const std::shared_ptr<Scheduler> &owner, std::shared_ptr<Scheduler::Entry> waiting)
        : scheduler(owner), entry(std::move(waiting))
    {}
    ~Wait() override
    {
        if (const auto owner = scheduler.lock())
            owner->remove(*entry);
    }

private:
    std::weak_ptr<Scheduler> scheduler;
    std::shared_ptr<Scheduler::Entry> entry;
};

QtMainLoop::QtMainLoop() : scheduler(std::make_shared<Scheduler>()) {}
QtMainLoop::~QtMainLoop() = default;

Seconds QtMainLoop::monotonicNow() const
{
    return Clock::now().time_since_epoch();
}

Seconds QtMainLoop::wallNow() const
{
    return std::chrono::system_clock::now().time_since_epoch();
}

#ifdef __linux__
namespace {

// A kernel timer for a time that never comes. The kernel ends it early when the clock is set.
class ClockWatch final : public SubscriptionBase {
public:
    explicit ClockWatch(std::function<void()> callback)
        : descriptor(timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)), changed(std::move(callback))
    {
        if (descriptor < 0)
            return;
        arm();
        notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
            std::uint64_t expirations = 0;
            [[maybe_unused]] const auto got = ::read(descriptor, &expirations, sizeof expirations);
            arm();
            const auto call = changed;  // keeps the function alive if the call ends this watch
            call();
        });
    }
    ~ClockWatch() override
    {
        notifier.reset();
        if (descriptor >= 0)
            ::close(descriptor);
    }

private:
    void arm()
    {
        itimerspec never{};
        never.it_value.tv_sec = std::numeric_limits<std::time_t>::max();
        timerfd_settime(descriptor, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr);
    }

    int descriptor;
    std::function<void()> changed;
    std::unique_ptr<QSocketNotifier> notifier;
};

}  // namespace

Subscription QtMainLoop::observeClockChanges(std::function<void()> callback)
{
    return std::make_unique<ClockWatch>(std::move(callback));
}
#else
Subscription QtMainLoop::observeClockChanges(std::function<void()>)
{
    return nullptr;
}
#endif

Subscription QtMainLoop::repeat(Seconds interval, Seconds tolerance, std::function<void()> callback)
{
    const auto step = std::max(toClock(interval), shortestInterval);
    return std::make_unique<Wait>(scheduler, scheduler->add(step, step, toClock(tolerance), std::move(callback)));
}

Subscription QtMainLoop::after(Seconds delay, std::function<void()> callback)
{
    return std::make_unique<Wait>(scheduler, scheduler->add(toClock(delay), {}, {}, std::move(callback)));
}

void QtMainLoop::post(std::function<void()> callback)
{
    scheduler->post(std::move(callback));
}

void QtMainLoop::terminate()
{
    // Posted, so that it also works before the event loop runs, and so that a dialog is not ended in the middle of its
    // caller's work.
    scheduler->post([] { QCoreApplication::exit(0); });
}

}  // namespace korvane::platform
