// Tells where the pointer is while it moves, and rests while it rests: between two motions nothing wakes the program.
#pragma once

#include "Ports/Platform.h"

#include <functional>

namespace korvane {

class PointerFollower {
public:
    // At most so often a place is told.
    static constexpr platform::Seconds interval{0.033};
    // Between two looks at a resting pointer, where the system does not tell of its motion.
    static constexpr platform::Seconds restingInterval{0.15};

    PointerFollower(platform::Platform &platform, std::function<void(platform::Point)> moved);

    // Starts to follow; nothing when it does already.
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
