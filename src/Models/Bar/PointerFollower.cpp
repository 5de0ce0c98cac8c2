#include "Models/Bar/PointerFollower.h"

#include <utility>

namespace korvane {

PointerFollower::PointerFollower(platform::Platform &system, std::function<void(platform::Point)> callback)
    : platform(system), moved(std::move(callback))
{}

void PointerFollower::start()
{
    if (!isFollowing())
        look();
}

void PointerFollower::stop()
{
    motion.reset();
    timer.reset();
}

void PointerFollower::look()
{
    timer.reset();
    // The wait starts before the place is read. So a motion between the two is not missed.
    motion = platform.events.nextMotion([this] {
        motion.reset();
        timer = platform.loop.after(interval, [this] { look(); });
        if (const auto place = platform.pointer.location(); place != std::exchange(last, place))
            moved(place);
    });
    const auto place = platform.pointer.location();
    const bool onItsWay = place != std::exchange(last, place);
    // Look again instead of waiting: there may be no further motion, or the system may not report motions.
    if (onItsWay || !motion) {
        timer = platform.loop.after(onItsWay ? interval : restingInterval, [this] { look(); });
        motion.reset();
    }
    if (onItsWay)
        moved(place);
}

}  // namespace korvane
