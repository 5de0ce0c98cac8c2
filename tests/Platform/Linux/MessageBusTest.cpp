#include "Platform/Linux/MessageBus.h"

#include "tests/Platform/Linux/PrivateBus.h"
#include "tests/support/GlibLoop.h"

namespace korvane::platform {
namespace {

using korvane::testing::GlibLoop;

constexpr const char *busName = "org.freedesktop.DBus";
constexpr const char *busPath = "/org/freedesktop/DBus";

class Bus : public ::testing::Test {
protected:
    void emit(GDBusConnection *from, const char *text)
    {
        g_dbus_connection_emit_signal(from, nullptr, "/here", "org.example.News", "Came", g_variant_new("(s)", text),
                                      nullptr);
        g_dbus_connection_flush_sync(from, nullptr, nullptr);
    }
    Subscription hear(std::vector<std::string> &texts)
    {
        return bus->listen({{}, {}, "org.example.News", "Came"}, [&texts](const std::string &, GVariant *arguments) {
            const gchar *text = nullptr;
            g_variant_get(arguments, "(&s)", &text);
            texts.emplace_back(text);
        });
    }
    // Until the other side hears, what is said is said to nobody.
    bool heardAtLast(const std::vector<std::string> &texts)
    {
        const auto speaker = daemon.connect();
        return speaker && loop.turnUntil([&] {
            emit(speaker.get(), "news");
            return !texts.empty();
        });
    }
    // Of what the bus itself answers to a question for its own name's owner.
    Subscription ask(std::vector<MessageBus::Answer> &answers, const char *name = busName)
    {
        return bus->call({busName, busPath, busName, "GetNameOwner", "(s)"}, g_variant_new("(s)", name),
                         [&answers](const MessageBus::Answer &answer) { answers.push_back(answer); });
    }

    PrivateBus daemon{"DBUS_SESSION_BUS_ADDRESS"};
    GlibLoop loop;
    std::unique_ptr<MessageBus> bus = std::make_unique<MessageBus>(loop, MessageBus::Kind::session);
};

TEST_F(Bus, ACallIsAnsweredFromTheRunLoopThoughTheConnectionIsNotYetMade)
{
    std::vector<MessageBus::Answer> answers;
    const auto question = ask(answers);
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(loop.turnUntil([&] { return !answers.empty(); }));
    EXPECT_NE(answers.front().value, nullptr);
    EXPECT_EQ(answers.front().error, "");
}

TEST_F(Bus, ARefusalBearsItsName)
{
    std::vector<MessageBus::Answer> answers;
    const auto question = ask(answers, "org.example.Nobody");
    ASSERT_TRUE(loop.turnUntil([&] { return !answers.empty(); }));
    EXPECT_EQ(answers.front().value, nullptr);
    EXPECT_EQ(answers.front().error, "org.freedesktop.DBus.Error.NameHasNoOwner");
}

TEST_F(Bus, ACallWithoutABusIsAnsweredByNothing)
{
    daemon.stop();
    std::vector<MessageBus::Answer> answers;
    const auto question = ask(answers);
    ASSERT_TRUE(loop.turnUntil([&] { return !answers.empty(); }));
    EXPECT_EQ(answers.front().value, nullptr);
    EXPECT_EQ(answers.front().error, "");
}

TEST_F(Bus, NothingIsToldToThoseWhoHaveGone)
{
    std::vector<std::string> kept, dropped;
    std::vector<MessageBus::Answer> answers;
    const auto keeping = hear(kept);
    auto dropping = hear(dropped);
    ASSERT_TRUE(heardAtLast(kept));
    auto question = ask(answers);
    question.reset();
    dropping.reset();
    dropped.clear();
    kept.clear();
    ASSERT_TRUE(heardAtLast(kept));
    EXPECT_TRUE(dropped.empty());
    EXPECT_TRUE(answers.empty());
}

TEST_F(Bus, AListenerMayGoInsideItsOwnCallAndTheBusBeforeItsListeners)
{
    int calls = 0;
    Subscription once = bus->listen({{}, {}, "org.example.News", "Came"}, [&](const std::string &, GVariant *) {
        ++calls;
        once.reset();
    });
    std::vector<std::string> texts;
    auto other = hear(texts);
    ASSERT_TRUE(heardAtLast(texts));
    EXPECT_EQ(calls, 1);
    bus.reset();
    loop.turnFor(Seconds(0.05));
    other.reset();
}

TEST_F(Bus, AListenerHearsTheBusThatCameBack)
{
    std::vector<std::string> texts;
    const auto hearing = hear(texts);
    ASSERT_TRUE(heardAtLast(texts));
    daemon.stop();
    loop.turnFor(Seconds(0.1));
    texts.clear();
    daemon.start();
    EXPECT_TRUE(heardAtLast(texts));
}

TEST_F(Bus, ABusThatComesLateIsFound)
{
    daemon.stop();
    bus = std::make_unique<MessageBus>(loop, MessageBus::Kind::session);
    std::vector<std::string> texts;
    const auto hearing = hear(texts);
    loop.turnFor(Seconds(0.2));
    daemon.start();
    EXPECT_TRUE(heardAtLast(texts));
}

TEST_F(Bus, WhoHasANameIsToldUntilTheBusIsLostAndAgainOnTheNextOne)
{
    auto owner = daemon.connect();
    const std::string name = g_dbus_connection_get_unique_name(owner.get());
    std::vector<bool> told, nobody;
    const auto watch = bus->watch(name, [&](bool present) { told.push_back(present); });
    const auto other = bus->watch("org.example.Nobody", [&](bool present) { nobody.push_back(present); });
    ASSERT_TRUE(loop.turnUntil([&] { return !told.empty() && !nobody.empty(); }));
    daemon.stop();
    ASSERT_TRUE(loop.turnUntil([&] { return told.size() == 2; }));
    daemon.start();
    loop.turnFor(Seconds(0.1));
    // Names are given in the order of coming, so on the new bus it is somebody's at last.
    std::vector<Gobject<GDBusConnection>> crowd;
    EXPECT_TRUE(loop.turnUntil([&] {
        crowd.push_back(daemon.connect());
        return told.size() == 3;
    }));
    EXPECT_EQ(told, (std::vector<bool>{true, false, true}));
    EXPECT_EQ(nobody, std::vector<bool>{false});
}

TEST_F(Bus, OneThatHangsKeepsNobodyWaiting)
{
    daemon.suspend(true);
    const auto before = loop.monotonicNow();
    auto waiting = std::make_unique<MessageBus>(loop, MessageBus::Kind::session);
    std::vector<MessageBus::Answer> answers;
    const auto question = waiting->call({busName, busPath, busName, "GetId", "(s)"}, nullptr,
                                        [&](const MessageBus::Answer &answer) { answers.push_back(answer); });
    loop.turnFor(Seconds(0.05));
    EXPECT_LT((loop.monotonicNow() - before).count(), 0.5);
    EXPECT_TRUE(answers.empty());
    daemon.suspend(false);
    EXPECT_TRUE(loop.turnUntil([&] { return !answers.empty() && answers.front().value; }));
}

TEST_F(Bus, WhetherItAnswersIsKnownInABoundedTime)
{
    constexpr Seconds limit{0.3};
    EXPECT_TRUE(MessageBus::answersWithin(limit, MessageBus::Kind::session));
    daemon.suspend(true);
    const auto before = loop.monotonicNow();
    EXPECT_FALSE(MessageBus::answersWithin(limit, MessageBus::Kind::session));
    EXPECT_LT((loop.monotonicNow() - before).count(), 1);
    daemon.suspend(false);
    EXPECT_TRUE(MessageBus::answersWithin(limit, MessageBus::Kind::session));
    daemon.stop();
    EXPECT_TRUE(MessageBus::answersWithin(limit, MessageBus::Kind::session));
}

TEST_F(Bus, OneThatHangsForLongIsGivenUpAndTriedAgain)
{
    daemon.suspend(true);
    auto waiting = std::make_unique<MessageBus>(loop, MessageBus::Kind::session);
    std::vector<MessageBus::Answer> answers;
    const auto question = waiting->call({busName, busPath, busName, "GetId", "(s)"}, nullptr,
                                        [&](const MessageBus::Answer &answer) { answers.push_back(answer); });
    EXPECT_TRUE(loop.turnUntil([&] { return !answers.empty(); }, Seconds(8)));
    EXPECT_EQ(answers.front().value, nullptr);
    std::vector<bool> told;
    const auto watch = waiting->watch(busName, [&](bool present) { told.push_back(present); });
    daemon.suspend(false);
    EXPECT_TRUE(loop.turnUntil([&] { return !told.empty() && told.back(); }));
}

}  // namespace
}  // namespace korvane::platform
