// Random operations on a simulated desktop, with promises checked after each. A failure prints the shortest sequence
// found and the seed that brings it back: RC_PARAMS="reproduce=...". RC_PARAMS="max_success=10000" plays longer.
#include "tests/Random/RandomDesktop.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <vector>

namespace rc {

template <> struct Arbitrary<korvane::testing::Operation> {
    static Gen<korvane::testing::Operation> arbitrary()
    {
        using korvane::testing::Act;
        using korvane::testing::Operation;
        return gen::build<Operation>(gen::set(&Operation::act, gen::map(gen::inRange(0, static_cast<int>(Act::count)),
                                                                        [](int act) { return static_cast<Act>(act); })),
                                     gen::set(&Operation::first), gen::set(&Operation::second));
    }
};

}  // namespace rc

namespace korvane::testing {
namespace {

TEST(RandomOperations, KeepEveryPromise)
{
    // A number given from outside stands.
    setenv("RC_PARAMS", "max_success=2000 max_size=60", 0);
    EXPECT_TRUE(rc::check("random operations keep every promise", [](const std::vector<Operation> &operations) {
        RandomDesktop desktop;
        for (const Operation &operation : operations) {
            desktop.play(operation);
            if (const auto broken = desktop.brokenPromise())
                RC_FAIL(*broken);
        }
    }));
}

}  // namespace
}  // namespace korvane::testing
