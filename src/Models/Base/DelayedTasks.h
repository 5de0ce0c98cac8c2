// Calls that come once, after a delay, and may be cancelled before.
#pragma once

#include "Ports/MainLoop.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace korvane {

class DelayedTasks {
    struct Task {
        platform::Subscription subscription;
        bool finished = false;
    };

public:
    // Names a scheduled call. Has no effect once the call has run.
    using Handle = std::weak_ptr<Task>;

    explicit DelayedTasks(platform::MainLoop &mainLoop) : loop(mainLoop) {}

    // The call does not come if this object is destroyed before.
    Handle schedule(platform::Seconds delay, std::function<void()> callback)
    {
        std::erase_if(tasks, [](const auto &task) { return task->finished; });
        auto task = std::make_shared<Task>();
        Handle handle = task;
        task->subscription = loop.after(delay, [handle, callback = std::move(callback)] {
            if (const auto running = handle.lock()) {
                running->finished = true;
                callback();
            }
        });
        tasks.push_back(std::move(task));
        return handle;
    }

    // Does nothing when the call has run.
    void cancel(const Handle &handle)
    {
        const auto task = handle.lock();
        if (task && !task->finished)
            std::erase(tasks, task);
    }

private:
    platform::MainLoop &loop;
    std::vector<std::shared_ptr<Task>> tasks;
};

}  // namespace korvane
