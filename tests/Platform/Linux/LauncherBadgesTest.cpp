// On a session bus of the test's own, with senders that are connections of their own.
#include "Platform/Linux/LauncherBadges.h"

#include "Platform/Linux/GlibPointers.h"
#include "tests/support/GlibLoop.h"
#include "tests/support/Process.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace korvane::platform {
namespace {

using korvane::testing::GlibLoop;
using korvane::testing::Process;
using Labels = LauncherBadges::Labels;

// A program that announces its count.
class Sender {
public:
    Sender()
        : connection(g_dbus_connection_new_for_address_sync(
            std::getenv("DBUS_SESSION_BUS_ADDRESS"),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                              | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr))
    {}
    ~Sender() { g_dbus_connection_close_sync(connection.get(), nullptr, nullptr); }

    void announce(const char *uri, const char *properties)
    {
        GVariant *parsed = g_variant_parse(G_VARIANT_TYPE("a{sv}"), properties, nullptr, nullptr, nullptr);
        emit(g_variant_new("(s@a{sv})", uri, parsed));
    }
    void emit(GVariant *parameters)
    {
        g_dbus_connection_emit_signal(connection.get(), nullptr, "/com/example/launcher",
                                      "com.canonical.Unity.LauncherEntry", "Update", parameters, nullptr);
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
    }

private:
    Gobject<GDBusConnection> connection;
};

class Badges : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        bus = new Process({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"}, {{}, true, -1});
        const auto address = bus->readLine();
        ASSERT_TRUE(address);
        setenv("DBUS_SESSION_BUS_ADDRESS", address->c_str(), 1);
    }
    static void TearDownTestSuite() { delete bus; }

    Badges() : badges(std::make_unique<LauncherBadges>([this] { ++changes; }))
    {
        // Until it listens, what is announced is announced to nobody.
        Sender probe;
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

    static Process *bus;
    GlibLoop loop;
    int changes = 0;
    std::unique_ptr<LauncherBadges> badges;
};
Process *Badges::bus = nullptr;

TEST_F(Badges, ACountThatIsVisibleIsABadge)
{
    Sender mail;
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
    Sender chat;
    chat.announce("application://chat.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"chat.desktop", "!"}}));
}

TEST_F(Badges, ASenderThatLeavesTakesItsBadgesAlong)
{
    Sender stays;
    stays.announce("application://stays.desktop", "{'urgent': <true>}");
    {
        Sender leaves;
        leaves.announce("application://leaves.desktop", "{'urgent': <true>}");
        EXPECT_TRUE(becomes({{"leaves.desktop", "!"}, {"stays.desktop", "!"}}));
    }
    EXPECT_TRUE(becomes({{"stays.desktop", "!"}}));
}

TEST_F(Badges, ASenderThatIsGoneBeforeItIsReadLeavesNothing)
{
    {
        Sender brief;
        brief.announce("application://brief.desktop", "{'urgent': <true>}");
    }
    Sender later;
    later.announce("application://later.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"later.desktop", "!"}}));
}

TEST_F(Badges, WhatIsNoAnnouncementIsPassedOver)
{
    Sender odd;
    odd.emit(g_variant_new("(s)", "application://odd.desktop"));
    odd.announce("file:///odd.desktop", "{'urgent': <true>}");
    odd.announce("application://odd", "{'urgent': <true>}");
    odd.announce("application://odd.desktop", "{'count': <'seven'>, 'count-visible': <'yes'>, 'urgent': <3>}");
    odd.announce("application://end.desktop", "{'urgent': <true>}");
    EXPECT_TRUE(becomes({{"end.desktop", "!"}}));
    EXPECT_LE(changes, 2);
}

TEST_F(Badges, AreForgottenWithWhoeverListens)
{
    Sender mail;
    badges.reset();
    mail.announce("application://mail.desktop", "{'urgent': <true>}");
    loop.turnFor(Seconds(0.05));
    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace korvane::platform
