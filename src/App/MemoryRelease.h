// Gives memory back once a crowd of windows has gone. Allocators keep what they once had; a bar runs for weeks, and one
// afternoon of many windows should not be felt for the rest of them.
#pragma once

#include "Models/Base/DelayedTasks.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace korvane {

class MemoryRelease {
public:
    // Fewer windows than these leave nothing worth the work.
    static constexpr std::size_t smallestCrowd = 50;
    // Closing goes on for a while, and what was closed is deleted later still.
    static constexpr platform::Seconds patience{3};

    MemoryRelease(platform::MainLoop &loop, std::function<void()> releaseMemory)
        : release(std::move(releaseMemory)), delayed(loop)
    {}

    // How many windows there are now. Once half of the most there were have gone, the memory is released.
    void windowCount(std::size_t now)
    {
        count = now;
        most = std::max(most, now);
        if (!hasThinned() || waiting)
            return;
        waiting = true;
        delayed.schedule(patience, [this] {
            waiting = false;
            if (!hasThinned())
                return;
            most = count;
            release();
        });
    }

private:
    bool hasThinned() const { return most >= smallestCrowd && count <= most / 2; }

    std::function<void()> release;
    DelayedTasks delayed;
    std::size_t count = 0, most = 0;
    bool waiting = false;
};

}  // namespace korvane
