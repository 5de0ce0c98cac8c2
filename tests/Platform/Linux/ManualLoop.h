// A run loop that only posts, and turns when a test says so.
#pragma once

#include "Ports/MainLoop.h"

#include <utility>
#include <vector>

namespace korvane::platform {

class ManualLoop final : public MainLoop {
public:
    Seconds monotonicNow() const override { return now; }
    Seconds wallNow() const override { return {}; }
    Subscription repeat(Seconds, Seconds, std::function<void()>) override { return nullptr; }
    Subscription after(Seconds, std::function<void()>) override { return nullptr; }
    void post(std::function<void()> callback) override { posted.push_back(std::move(callback)); }
    void terminate() override {}

    void turn()
    {
        for (const auto &callback : std::exchange(posted, {}))
            callback();
    }

    std::vector<std::function<void()>> posted;
    Seconds now{0};
};

}  // namespace korvane::platform
