#include "Platform/Qt/QtMainLoop.h"

#include "tests/Ports/MainLoopContract.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace korvane::platform {
namespace {

class QtHarness final : public MainLoopHarness {
public:
    MainLoop &loop() override { return underTest; }

    bool runUntil(const std::function<bool()> &condition, Seconds limit) override
    {
        bool expired = false;
        QTimer end;
        end.setSingleShot(true);
        QObject::connect(&end, &QTimer::timeout, [&] { expired = true; });
        end.start(std::chrono::duration_cast<std::chrono::milliseconds>(limit));
        while (!condition() && !expired)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }

    void runFor(Seconds duration) override
    {
        runUntil([] { return false; }, duration);
    }

    void spend(Seconds duration) override { QThread::usleep(static_cast<unsigned long>(duration.count() * 1e6)); }

    bool hasThreads() const override { return true; }

    QtMainLoop underTest;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Qt, MainLoopContract, testing::Values([]() -> std::unique_ptr<MainLoopHarness> {
                             return std::make_unique<QtHarness>();
                         }));

TEST(QtMainLoop, AnEndlessChainOfPostsDoesNotHoldUpTheTimers)
{
    QtHarness harness;
    bool fired = false;
    std::function<void()> again = [&] {
        if (!fired)
            harness.loop().post(again);
    };
    harness.loop().post(again);
    const Subscription once = harness.loop().after(Seconds(0.02), [&] { fired = true; });
    EXPECT_TRUE(harness.runUntil([&] { return fired; }, Seconds(10)));
}

TEST(QtMainLoop, AnEndlessChainOfZeroDelaysDoesNotHoldUpThePosts)
{
    QtHarness harness;
    bool posted = false;
    Subscription wait;
    std::function<void()> again = [&] {
        if (!posted)
            wait = harness.loop().after(Seconds(0), again);
    };
    wait = harness.loop().after(Seconds(0), [&] {
        again();
        harness.loop().post([&] { posted = true; });
    });
    EXPECT_TRUE(harness.runUntil([&] { return posted; }, Seconds(10)));
}

TEST(QtMainLoop, TimersAndPostsGoOnWhileACallRunsAnEventLoopOfItsOwn)
{
    QtHarness harness;
    int outer = 0, inner = 0, neighbour = 0;
    bool nestedOk = false;
    const Subscription often = harness.loop().repeat(Seconds(0.01), Seconds(0), [&] { ++inner; });
    const Subscription dialog = harness.loop().after(Seconds(0.005), [&] {
        ++outer;
        harness.loop().post([&] { ++neighbour; });
        nestedOk = harness.runUntil([&] { return inner >= 3 && neighbour > 0; }, Seconds(10));
    });
    ASSERT_TRUE(harness.runUntil([&] { return outer > 0; }, Seconds(10)));
    EXPECT_TRUE(nestedOk);
}

TEST(QtMainLoop, PostsWaitingBehindOneThatRunsAnEventLoopAreServedInIt)
{
    QtHarness harness;
    std::string order;
    bool nestedOk = false;
    harness.loop().post([&] {
        order += 'a';
        nestedOk = harness.runUntil([&] { return order.size() == 3; }, Seconds(10));
    });
    harness.loop().post([&] { order += 'b'; });
    harness.loop().post([&] { order += 'c'; });
    ASSERT_TRUE(harness.runUntil([&] { return order.size() == 3; }, Seconds(10)));
    EXPECT_TRUE(nestedOk);
    EXPECT_EQ(order, "abc");
}

TEST(QtMainLoop, ARepetitionIsNotEnteredAgainWhileItRuns)
{
    QtHarness harness;
    int depth = 0, deepest = 0, calls = 0;
    const Subscription often = harness.loop().repeat(Seconds(0.005), Seconds(0), [&] {
        deepest = std::max(deepest, ++depth);
        if (++calls == 1)
            harness.runFor(Seconds(0.05));
        --depth;
    });
    ASSERT_TRUE(harness.runUntil([&] { return calls >= 3; }, Seconds(10)));
    EXPECT_EQ(deepest, 1);
}

TEST(QtMainLoop, MultiplesThatWereMissedAreNotMadeUpFor)
{
    QtHarness harness;
    int calls = 0;
    const Subscription often = harness.loop().repeat(Seconds(0.01), Seconds(0), [&] { ++calls; });
    QThread::msleep(105);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST(QtMainLoop, ToleranceBringsWakeUpsTogether)
{
    QtHarness harness;
    int turns = 0, first = 0, second = 0;
    const auto *dispatcher = QAbstractEventDispatcher::instance();
    const Subscription exact = harness.loop().repeat(Seconds(0.1), Seconds(0), [&] { ++first; });
    const Subscription patient = harness.loop().repeat(Seconds(0.08), Seconds(0.03), [&] { ++second; });
    const auto connection = QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, [&turns] { ++turns; });
    ASSERT_TRUE(harness.runUntil([&] { return first >= 1; }, Seconds(10)));
    QObject::disconnect(connection);
    // At 80 ms the second was due and waited for the first at 100.
    EXPECT_EQ(second, 1);
    EXPECT_LE(turns, 3);
}

TEST(QtMainLoop, ASubscriptionMayOutliveItsLoop)
{
    Subscription often;
    {
        QtMainLoop loop;
        often = loop.repeat(Seconds(0.001), Seconds(0), [] { FAIL() << "called without a loop"; });
    }
    QThread::msleep(5);
    QCoreApplication::processEvents();
    often.reset();
}

TEST(QtMainLoop, TerminateEndsTheEventLoopAlsoWhenAskedBeforeItRuns)
{
    QtMainLoop loop;
    loop.terminate();
    QTimer::singleShot(10000, [] { QCoreApplication::exit(7); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

}  // namespace korvane::platform
