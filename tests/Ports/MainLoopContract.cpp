#include "tests/Ports/MainLoopContract.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <thread>

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MainLoopContract);

TEST_P(MainLoopContract, PostedCallsArriveInTheirOrderAndNotInsideThePost)
{
    std::string order;
    for (const char letter : {'a', 'b', 'c'})
        loop().post([&order, letter] { order += letter; });
    EXPECT_EQ(order, "");
    ASSERT_TRUE(runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TEST_P(MainLoopContract, ACallPostedByAPostedCallComesAfterThoseAlreadyWaiting)
{
    std::string order;
    loop().post([&] {
        order += 'a';
        loop().post([&] { order += 'c'; });
    });
    loop().post([&] { order += 'b'; });
    ASSERT_TRUE(runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TEST_P(MainLoopContract, ADelayOfZeroIsNotServedInsideTheCall)
{
    int calls = 0;
    const Subscription once = loop().after(Seconds(0), [&] { ++calls; });
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(runUntil([&] { return calls > 0; }));
    harness->runFor(Seconds(0.02));
    EXPECT_EQ(calls, 1);
}

TEST_P(MainLoopContract, ANegativeDelayCountsAsNone)
{
    bool fired = false;
    const Subscription once = loop().after(Seconds(-5), [&] { fired = true; });
    EXPECT_FALSE(fired);
    EXPECT_TRUE(runUntil([&] { return fired; }));
}

TEST_P(MainLoopContract, ADelayIsNeverCutShort)
{
    const Seconds start = loop().monotonicNow();
    Seconds fired{};
    const Subscription once = loop().after(Seconds(0.0505), [&] { fired = loop().monotonicNow(); });
    ASSERT_TRUE(runUntil([&] { return fired > Seconds::zero(); }));
    EXPECT_GE((fired - start).count(), 0.0505 - 1e-9);
}

TEST_P(MainLoopContract, DelaysAreServedInTheOrderOfTheirEndAndThenOfTheirStart)
{
    std::string order;
    std::vector<Subscription> waits;
    const auto append = [&order](char letter) { return [&order, letter] { order += letter; }; };
    waits.push_back(loop().after(Seconds(0.06), append('c')));
    waits.push_back(loop().after(Seconds(0.02), append('a')));
    waits.push_back(loop().after(Seconds(0.06), append('d')));
    waits.push_back(loop().after(Seconds(0.04), append('b')));
    ASSERT_TRUE(runUntil([&] { return order.size() == 4; }));
    EXPECT_EQ(order, "abcd");
}

TEST_P(MainLoopContract, ADestroyedSubscriptionNeverCalls)
{
    int cancelled = 0;
    bool later = false;
    Subscription once = loop().after(Seconds(0.01), [&] { ++cancelled; });
    Subscription often = loop().repeat(Seconds(0.01), Seconds(0), [&] { ++cancelled; });
    const Subscription end = loop().after(Seconds(0.05), [&] { later = true; });
    once.reset();
    often.reset();
    ASSERT_TRUE(runUntil([&] { return later; }));
    EXPECT_EQ(cancelled, 0);
}

TEST_P(MainLoopContract, ACallMayDestroyItsOwnSubscription)
{
    int calls = 0;
    std::string witness;
    Subscription often;
    often = loop().repeat(Seconds(0.01), Seconds(0), [&, text = std::string(200, 'x')] {
        often.reset();
        witness = text;  // what the call owns is still there
        ++calls;
    });
    ASSERT_TRUE(runUntil([&] { return calls > 0; }));
    harness->runFor(Seconds(0.05));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(witness.size(), 200u);
}

TEST_P(MainLoopContract, ACallMayDestroyTheSubscriptionThatIsDueWithIt)
{
    int second = 0;
    bool later = false;
    Subscription victim;
    const Subscription first = loop().after(Seconds(0.02), [&] { victim.reset(); });
    victim = loop().after(Seconds(0.02), [&] { ++second; });
    const Subscription end = loop().after(Seconds(0.05), [&] { later = true; });
    ASSERT_TRUE(runUntil([&] { return later; }));
    // Registered after the first with an equal delay, so never due before it.
    EXPECT_EQ(second, 0);
}

TEST_P(MainLoopContract, ARepetitionKeepsToTheMultiplesOfItsInterval)
{
    constexpr double interval = 0.04;
    const Seconds start = loop().monotonicNow();
    std::vector<double> times;
    const Subscription often = loop().repeat(Seconds(interval), Seconds(0), [&] {
        times.push_back((loop().monotonicNow() - start).count());
        harness->spend(Seconds(interval * 0.3));  // a loop that counts from the end of a call would drift by this
    });
    ASSERT_TRUE(runUntil([&] { return times.size() >= 16; }));
    std::vector<double> offsets;
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_GE(times[i], static_cast<double>(i + 1) * interval - 1e-9) << "call " << i << " came early";
        const double multiples = times[i] / interval;
        offsets.push_back(std::abs(multiples - std::round(multiples)));
    }
    // A busy machine makes some calls late, but a drift would spread all of them evenly between two multiples.
    std::nth_element(offsets.begin(), offsets.begin() + 8, offsets.end());
    EXPECT_LT(offsets[8], 0.15);
}

TEST_P(MainLoopContract, ARepetitionAndADelayThatEndTogetherBothCome)
{
    int often = 0;
    bool once = false;
    const Subscription repetition = loop().repeat(Seconds(0.05), Seconds(0.05), [&] { ++often; });
    const Subscription delay = loop().after(Seconds(0.05), [&] { once = true; });
    ASSERT_TRUE(runUntil([&] { return once && often > 0; }));
}

TEST_P(MainLoopContract, ElapsedTimeNeverGoesBackAndTheWallClockIsAfterTwoThousandTwenty)
{
    Seconds previous = loop().monotonicNow();
    for (int i = 0; i < 1000; ++i) {
        const Seconds now = loop().monotonicNow();
        ASSERT_GE(now.count(), previous.count());
        previous = now;
    }
    EXPECT_GT(loop().wallNow().count(), 1577836800.0);
}

TEST_P(MainLoopContract, OtherThreadsMayPost)
{
    if (!harness->hasThreads())
        GTEST_SKIP() << "this loop lives on one thread";
    constexpr int each = 200;
    std::vector<int> seen[2];
    const auto mainThread = std::this_thread::get_id();
    bool wrongThread = false;
    std::vector<std::thread> threads;
    for (int number = 0; number < 2; ++number)
        threads.emplace_back([&, number] {
            for (int i = 0; i < each; ++i)
                loop().post([&, number, i] {
                    wrongThread = wrongThread || std::this_thread::get_id() != mainThread;
                    seen[number].push_back(i);
                });
        });
    EXPECT_TRUE(runUntil([&] { return seen[0].size() == each && seen[1].size() == each; }));
    for (auto &thread : threads)
        thread.join();
    EXPECT_FALSE(wrongThread);
    for (const auto &numbers : seen)
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

}  // namespace korvane::platform
