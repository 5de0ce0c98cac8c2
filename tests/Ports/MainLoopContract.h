// What every run loop has to do, whether its time is real or virtual.
#pragma once

#include "Ports/MainLoop.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace korvane::platform {

// A loop under test and the way to let its time pass.
class MainLoopHarness {
public:
    virtual ~MainLoopHarness() = default;
    virtual MainLoop &loop() = 0;
    // Turns the loop until the condition holds; false when it did not within the limit.
    virtual bool runUntil(const std::function<bool()> &condition, Seconds limit) = 0;
    // Turns the loop for that long.
    virtual void runFor(Seconds duration) = 0;
    // Lets time pass inside a callback, as slow work does. Does nothing where time is virtual.
    virtual void spend(Seconds duration) = 0;
    // Whether post() may be called from a second thread here.
    virtual bool hasThreads() const = 0;
};

using MakeMainLoop = std::unique_ptr<MainLoopHarness> (*)();

class MainLoopContract : public testing::TestWithParam<MakeMainLoop> {
protected:
    static constexpr Seconds patience{10};

    MainLoop &loop() { return harness->loop(); }
    bool runUntil(const std::function<bool()> &condition) { return harness->runUntil(condition, patience); }

    std::unique_ptr<MainLoopHarness> harness = GetParam()();
};

}  // namespace korvane::platform
