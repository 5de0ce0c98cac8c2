// Tells where the pointer is while it moves. While the pointer rests, the follower rests too: between two motions
// nothing wakes the program.
#pragma once

#include "Ports/Platform.h"

#include <functional>

namespace korvane {

class PointerFollower {
public:
    // The shortest time between two reported places.
    static constexpr platform::Seconds interval{0.033};
    // The time between two looks at a resting pointer, where the system does not report its motion.
    static constexpr platform::Seconds restingInterval{0.15};

    PointerFollower(platform::Platform &platform, std::function<void(platform::Point)> moved);

    // Starts to follow. Does nothing when it already follows.
    void start();
    void stop();
    bool isFollowing() const { return motion || timer; }

private:
    void look();

    platform::Platform &platform;
    std::function<void(platform::Point)> moved;
    platform::Point last{-1, -1};
    platform::Subscription motion, timer;
};

}  // namespace korvane
