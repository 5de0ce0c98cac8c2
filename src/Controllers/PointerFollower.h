// Tells where the pointer is while it moves, and rests while it rests: between two motions nothing wakes the program.
#pragma once

#include "Platform/Platform.h"

#include <functional>

namespace korvane {

class PointerFollower {
public:
    // At most so often a place is told.
    static constexpr platform::Seconds interval{0.033};

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
