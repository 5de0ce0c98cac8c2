// On a session bus of the test's own, with senders that are connections of their own.
#include "Platform/Linux/LauncherBadges.h"

#include "tests/Platform/Linux/PrivateBus.h"
#include "tests/support/GlibLoop.h"

#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace korvane::platform {
namespace {

using korvane::testing::GlibLoop;
using Labels = LauncherBadges::Labels;

// A program that announces its count.
class Sender {
public:
    explicit Sender(const PrivateBus &bus) : connection(bus.connect()) {}
    ~Sender()
    {
        if (connection)
            g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    }

    void announce(const std::string &uri, const char *properties)
    {
        send(uri, properties);
        flush();
    }
    void emit(GVariant *parameters)
    {
        g_dbus_connection_emit_signal(connection.get(), nullptr, "/com/example/launcher",
                                      "com.canonical.Unity.LauncherEntry", "Update", parameters, nullptr);
        flush();
    }
    void send(const std::string &uri, const char *properties)
    {
        GVariant *parsed = g_variant_parse(G_VARIANT_TYPE("a{sv}"), properties, nullptr, nullptr, nullptr);
        g_dbus_connection_emit_signal(connection.get(), nullptr, "/com/example/launcher",
                                      "com.canonical.Unity.LauncherEntry", "Update",
                                      g_variant_new("(s@a{sv})", uri.c_str(), parsed), nullptr);
    }
    void flush() { g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr); }

private:
    Gobject<GDBusConnection> connection;
};

class Badges : public ::testing::Test {
protected:
    Badges() : badges(std::make_unique<LauncherBadges>(loop, session, [this] { ++changes; }))
    {
        // Until it listens, what is announced is announced to nobody.
        Sender probe(bus);
        EXPECT_TRUE(loop.turnUntil([&] {
            probe.announce("application://probe.desktop", "{'count': <int64 1>, 'count-visible': <true>}");
            return !badges->labels().empty();
        }));
        probe.announce("application://probe.desktop", "{'count-visible': <false>}");
        EXPECT_TRUE(becomes({}));
        changes = 0;
    }
    bool becomes(const Labels &labels)
    {
        return loop.turnUntil([&] { return badges->labels() == labels; });
    }

    PrivateBus bus{"DBUS_SESSION_BUS_ADDRESS"};
    GlibLoop loop;
    MessageBus session{loop, MessageBus::Kind::session};
    int changes = 0;
    std::unique_ptr<LauncherBadges> badges;
};

TEST_F(Badges, ACountThatIsVisibleIsABadge)
{
    Sender mail(bus);
    mail.announce("application://org.example.Mail.desktop", "{'count': <int64 7>, 'count-visible': <true>}");
    EXPECT_TRUE(becomes({{"org.example.Mail.desktop", "7"}}));
    EXPECT_TRUE(loop.turnUntil([&] {
        return badges->processes() == LauncherBadges::Processes{{"org.example.Mail.desktop", getpid()}};
    }));
    EXPECT_LE(changes, 2);  // the label, and then perhaps apart from it the process
    mail.announce("application://org.example.Mail.desktop", "{'count': <int64 8>}");
    EXPECT_TRUE(becomes({{"org.example.Mail.desktop", "8"}}));
    mail.announce("application://org.example.Mail.desktop", "{'count-visible': <false>}");
    EXPECT_TRUE(becomes({}));
}

TEST_F(Badges, UrgencyAloneIsABadgeWithoutANumber)
{
    Sender chat(bus);
    chat.announce("application://chat.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"chat.desktop", "!"}}));
}

TEST_F(Badges, ASenderThatLeavesTakesItsBadgesAlong)
{
    Sender stays(bus);
    stays.announce("application://stays.desktop", "{'urgent': <true>}");
    {
        Sender leaves(bus);
        leaves.announce("application://leaves.desktop", "{'urgent': <true>}");
        EXPECT_TRUE(becomes({{"leaves.desktop", "!"}, {"stays.desktop", "!"}}));
    }
    EXPECT_TRUE(becomes({{"stays.desktop", "!"}}));
}

TEST_F(Badges, ASenderThatIsGoneBeforeItIsReadLeavesNothing)
{
    {
        Sender brief(bus);
        brief.announce("application://brief.desktop", "{'urgent': <true>}");
    }
    Sender later(bus);
    later.announce("application://later.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"later.desktop", "!"}}));
}

TEST_F(Badges, WhatIsNoAnnouncementIsPassedOver)
{
    Sender odd(bus);
    odd.emit(g_variant_new("(s)", "application://odd.desktop"));
    odd.announce("file:///odd.desktop", "{'urgent': <true>}");
    odd.announce("application://odd", "{'urgent': <true>}");
    odd.announce("application://odd.desktop", "{'count': <'seven'>, 'count-visible': <'yes'>, 'urgent': <3>}");
    odd.announce("application://end.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"end.desktop", "!"}}));
    EXPECT_LE(changes, 2);
}

constexpr const char *urgent = "{'urgent': <true>}";
constexpr const char *calm = "{'urgent': <false>}";

TEST_F(Badges, OfABusThatEndedGoAtOnceAndThoseOfItsSuccessorCome)
{
    {
        Sender mail(bus);
        mail.announce("application://mail.desktop", urgent);
        ASSERT_TRUE(becomes({{"mail.desktop", "!"}}));
        bus.stop();
        EXPECT_TRUE(loop.turnUntil([&] { return badges->labels().empty(); }, Seconds(0.5)));
        EXPECT_TRUE(badges->processes().empty());
    }
    bus.start();
    Sender chat(bus);
    EXPECT_TRUE(loop.turnUntil([&] {
        chat.announce("application://chat.desktop", urgent);
        return badges->labels() == Labels{{"chat.desktop", "!"}};
    }));
}

TEST_F(Badges, WhatArrivesTogetherIsOneChange)
{
    Sender mail(bus);
    const auto before = loop.monotonicNow();
    for (int i = 0; i < 1000; ++i)
        for (const int entry : {1, 2, 3})
            mail.send("application://" + std::to_string(entry) + ".desktop", i % 2 == 0 ? urgent : calm);
    mail.send("application://end.desktop", urgent);
    mail.flush();
    EXPECT_TRUE(becomes({{"end.desktop", "!"}}));
    const double frames = (loop.monotonicNow() - before).count() / 0.016;
    EXPECT_LE(changes, frames + 1);
}

TEST_F(Badges, OfOneSenderAreNotWithoutNumber)
{
    Sender mail(bus), other(bus);
    for (int entry = 0; entry < 100; ++entry)
        mail.send("application://" + std::to_string(1000 + entry) + ".desktop", urgent);
    mail.flush();
    ASSERT_TRUE(loop.turnUntil([&] { return badges->labels().contains("1000.desktop"); }));
    other.announce("application://other.desktop", urgent);
    ASSERT_TRUE(loop.turnUntil([&] { return badges->labels().contains("other.desktop"); }));
    EXPECT_EQ(badges->labels().size(), 17U);
    // One that is taken back makes room.
    mail.announce("application://1000.desktop", calm);
    mail.announce("application://2000.desktop", urgent);
    EXPECT_TRUE(loop.turnUntil([&] { return badges->labels().contains("2000.desktop"); }));
    EXPECT_EQ(badges->labels().size(), 17U);
}

TEST_F(Badges, ComeFromABoundedNumberOfSendersUntilOneOfThemLeaves)
{
    std::deque<Sender> senders;
    const auto announceOne = [&] {
        senders.emplace_back(bus);
        senders.back().announce("application://" + std::to_string(senders.size()) + ".desktop", urgent);
    };
    while (senders.size() < 150)
        announceOne();
    ASSERT_TRUE(loop.turnUntil([&] { return badges->processes().size() == 128; }));
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(badges->labels().size(), 128U);
    senders.pop_front();
    ASSERT_TRUE(loop.turnUntil([&] { return badges->labels().size() == 127; }));
    senders.back().announce("application://late.desktop", urgent);
    EXPECT_TRUE(loop.turnUntil([&] { return badges->labels().contains("late.desktop"); }));
}

TEST_F(Badges, OfANameThatNoFileCanHaveAreNotKept)
{
    const std::string suffix = ".desktop";
    const auto uri = [&](std::size_t length) {
        return "application://" + std::string(length - suffix.size(), 'a') + suffix;
    };
    Sender mail(bus);
    mail.announce(uri(256), urgent);
    mail.announce(uri(1 << 20), urgent);
    mail.announce(uri(255), urgent);
    EXPECT_TRUE(becomes({{std::string(255 - suffix.size(), 'a') + suffix, "!"}}));
}

TEST_F(Badges, AreForgottenWithWhoeverListens)
{
    Sender mail(bus);
    badges.reset();
    mail.announce("application://mail.desktop", "{'urgent': <true>}");
    loop.turnFor(Seconds(0.05));
    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace korvane::platform
