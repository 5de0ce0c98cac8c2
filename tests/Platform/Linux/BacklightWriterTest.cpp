// On a bus of the test's own, with a login manager that is the test itself.
#include "Platform/Linux/Backlight.h"

#include "Platform/Linux/GlibPointers.h"
#include "tests/support/GlibLoop.h"
#include "tests/support/Process.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace korvane::platform {
namespace {

using korvane::testing::GlibLoop;
using korvane::testing::Process;

using Wish = std::tuple<std::string, std::string, std::uint32_t>;  // subsystem, device, brightness

constexpr const char *name = "org.freedesktop.login1";

class LoginManager {
public:
    LoginManager()
        : connection(g_dbus_connection_new_for_address_sync(
            std::getenv("DBUS_SYSTEM_BUS_ADDRESS"),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                              | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr)),
          description(g_dbus_node_info_new_for_xml("<node><interface name='org.freedesktop.login1.Session'>"
                                                   "<method name='SetBrightness'><arg type='s' direction='in'/>"
                                                   "<arg type='s' direction='in'/><arg type='u' direction='in'/>"
                                                   "</method></interface></node>",
                                                   nullptr))
    {
        static const GDBusInterfaceVTable table{&LoginManager::called, nullptr, nullptr, {}};
        object = g_dbus_connection_register_object(connection.get(), "/org/freedesktop/login1/session/auto",
                                                   description->interfaces[0], &table, this, nullptr, nullptr);
        // Waits in line for the name while the bus still thinks that the one before lives.
        constexpr std::uint32_t noFlags = 0;
        GVariant *reply = g_dbus_connection_call_sync(
            connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name, noFlags), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        if (reply)
            g_variant_unref(reply);
    }
    ~LoginManager()
    {
        answerHeld();
        // A call that has arrived but waits for its turn comes to nobody then.
        g_dbus_connection_unregister_object(connection.get(), object);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
        g_dbus_node_info_unref(description);
    }

    void answerHeld()
    {
        for (GDBusMethodInvocation *one : std::exchange(held, {}))
            g_dbus_method_invocation_return_value(one, nullptr);
    }

    std::vector<Wish> wishes;
    bool refuses = false, holdsBack = false;

private:
    static void called(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                       GVariant *arguments, GDBusMethodInvocation *invocation, gpointer data)
    {
        auto &self = *static_cast<LoginManager *>(data);
        const gchar *subsystem = nullptr, *device = nullptr;
        guint32 brightness = 0;
        g_variant_get(arguments, "(&s&su)", &subsystem, &device, &brightness);
        self.wishes.emplace_back(subsystem, device, brightness);
        if (self.refuses)
            g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.AccessDenied", "no");
        else if (self.holdsBack)
            self.held.push_back(invocation);
        else
            g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    Gobject<GDBusConnection> connection;
    GDBusNodeInfo *description;
    guint object = 0;
    std::vector<GDBusMethodInvocation *> held;
};

class SessionBacklight : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", address().c_str(), 1);
        startBus();
    }
    static void TearDownTestSuite() { bus.reset(); }
    static void startBus()
    {
        bus = std::make_unique<Process>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                                                 "--print-address", "--address=" + address()},
                                        Process::Options{{}, true, -1});
        ASSERT_TRUE(bus->readLine());
    }
    static std::string address()
    {
        return "unix:path=" + ::testing::TempDir() + "korvane-bus-" + std::to_string(getpid());
    }
    // Asks with growing numbers until the writer says so.
    bool saysAtLast(bool answer)
    {
        return loop.turnUntil([&] { return writer("panel", ++lastAsked) == answer; });
    }

    static inline std::unique_ptr<Process> bus;
    GlibLoop loop;
    MessageBus system{loop, MessageBus::Kind::system};
    BacklightWriter writer = logindBacklightWriter(system);
    std::uint32_t lastAsked = 1000;
};

TEST_F(SessionBacklight, IsAskedForByNameAndNumber)
{
    LoginManager manager;
    EXPECT_TRUE(writer("panel", 600));
    EXPECT_TRUE(manager.wishes.empty());
    EXPECT_TRUE(loop.turnUntil([&] { return !manager.wishes.empty(); }));
    EXPECT_EQ(manager.wishes, (std::vector<Wish>{{"backlight", "panel", 600}}));
    EXPECT_TRUE(writer("panel", 601));
}

TEST_F(SessionBacklight, OfManyWishesTheLatestIsGrantedAndNoneIsSentBeforeTheAnswer)
{
    LoginManager manager;
    manager.holdsBack = true;
    writer("panel", 1);
    ASSERT_TRUE(loop.turnUntil([&] { return manager.wishes.size() == 1; }));
    for (std::uint32_t brightness = 2; brightness <= 50; ++brightness)
        EXPECT_TRUE(writer("panel", brightness));
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(manager.wishes.size(), 1U);
    manager.answerHeld();
    EXPECT_TRUE(loop.turnUntil([&] { return manager.wishes.size() == 2; }));
    EXPECT_EQ(manager.wishes.back(), Wish("backlight", "panel", 50));
    manager.answerHeld();
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(manager.wishes.size(), 2U);
}

TEST_F(SessionBacklight, ARefusalIsSaidAtTheNextWishAndALaterGrantForgetsIt)
{
    LoginManager manager;
    manager.refuses = true;
    EXPECT_TRUE(saysAtLast(false));
    manager.refuses = false;
    EXPECT_TRUE(saysAtLast(true));
}

TEST_F(SessionBacklight, WithoutALoginManagerNothingIsGranted)
{
    EXPECT_TRUE(saysAtLast(false));
    LoginManager manager;
    EXPECT_TRUE(saysAtLast(true));
    EXPECT_FALSE(manager.wishes.empty());
}

TEST_F(SessionBacklight, ABusThatEndsTakesNobodyWithItAndItsSuccessorIsUsed)
{
    {
        LoginManager manager;
        writer("panel", 1);
        ASSERT_TRUE(loop.turnUntil([&] { return manager.wishes.size() == 1; }));
    }
    bus->end();
    EXPECT_TRUE(saysAtLast(false));
    startBus();
    LoginManager manager;
    EXPECT_TRUE(loop.turnUntil([&] {
        writer("panel", 7);
        return !manager.wishes.empty();
    }));
}

TEST_F(SessionBacklight, AnAnswerToAWriterThatIsGoneIsNobodysAffair)
{
    LoginManager manager;
    manager.holdsBack = true;
    writer("panel", 1);
    ASSERT_TRUE(loop.turnUntil([&] { return manager.wishes.size() == 1; }));
    writer = nullptr;
    manager.answerHeld();
    loop.turnFor(Seconds(0.1));
    writer = logindBacklightWriter(system);
    writer("panel", 2);
    writer = nullptr;
    EXPECT_TRUE(loop.turnUntil([&] { return manager.wishes.size() == 2; }));
    manager.answerHeld();
    loop.turnFor(Seconds(0.1));
}

}  // namespace
}  // namespace korvane::platform
