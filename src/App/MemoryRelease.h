// Returns memory to the system when many windows have gone. Allocators keep the memory they once had. A bar runs for
// weeks, and one afternoon with many windows must not cost memory for the rest of that time.
#pragma once

#include "Models/Base/DelayedTasks.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace korvane {

class MemoryRelease {
public:
    // With fewer windows than this, releasing memory is not worth the work.
    static constexpr std::size_t smallestCrowd = 50;
    // A person goes on closing windows for a while, and the closed ones are deleted later still.
    static constexpr platform::Seconds patience{3};

    MemoryRelease(platform::MainLoop &loop, std::function<void()> releaseMemory)
        : release(std::move(releaseMemory)), delayed(loop)
    {}

    // Reports how many windows there are now. When half of the highest number have gone, the memory is released.
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
