// What every defaults database has to do.
#pragma once

#include "Ports/Defaults.h"

#include <gtest/gtest.h>
#include <memory>

namespace korvane::platform {

// A database under test that starts empty and can be opened again.
class DefaultsHarness {
public:
    virtual ~DefaultsHarness() = default;
    virtual Defaults &defaults() = 0;
    // Ends the present database in order and opens the same one anew.
    virtual void reopen() = 0;
};

using MakeDefaults = std::unique_ptr<DefaultsHarness> (*)();

class DefaultsContract : public testing::TestWithParam<MakeDefaults> {
protected:
    Defaults &defaults() { return harness->defaults(); }

    std::unique_ptr<DefaultsHarness> harness = GetParam()();
};

}  // namespace korvane::platform
