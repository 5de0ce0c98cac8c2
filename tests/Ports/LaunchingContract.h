// What every way of starting applications has to do.
#pragma once

#include "Ports/Launching.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace korvane::platform {

// A desktop with one application that also opens addresses of the scheme "https".
class LaunchingHarness {
public:
    virtual ~LaunchingHarness() = default;
    virtual Launching &launching() = 0;
    virtual std::string identifier() = 0;
    // How often the application was started, and how often an address was opened with it.
    virtual int starts() = 0;
    virtual int openedAddresses() = 0;
    // Lets time pass until the condition holds; false when it does not in good time.
    virtual bool waitFor(const std::function<bool()> &condition) = 0;
};

using MakeLaunching = std::unique_ptr<LaunchingHarness> (*)();

class LaunchingContract : public testing::TestWithParam<MakeLaunching> {
protected:
    Launching &launching() { return harness->launching(); }

    std::unique_ptr<LaunchingHarness> harness = GetParam()();
};

}  // namespace korvane::platform
