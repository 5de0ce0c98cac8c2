// What every entry among the programs started at login has to do.
#pragma once

#include "Ports/LoginItem.h"

#include <gtest/gtest.h>
#include <memory>

namespace korvane::platform {

// A login item under test that is not enabled at first.
class LoginItemHarness {
public:
    virtual ~LoginItemHarness() = default;
    virtual LoginItem &item() = 0;
    // Makes the system refuse from now on.
    virtual void refuse() = 0;
};

using MakeLoginItem = std::unique_ptr<LoginItemHarness> (*)();

class LoginItemContract : public testing::TestWithParam<MakeLoginItem> {
protected:
    std::unique_ptr<LoginItemHarness> harness = GetParam()();
};

}  // namespace korvane::platform
