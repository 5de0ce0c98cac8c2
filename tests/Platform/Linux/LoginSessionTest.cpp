// On a bus of the test's own, with a session manager that says what the test tells it to.
#include "Platform/Linux/LoginSession.h"

#include "tests/Platform/Linux/PrivateBus.h"
#include "tests/support/GlibLoop.h"

#include <memory>
#include <string>
#include <vector>

namespace korvane::platform {
namespace {

using korvane::testing::GlibLoop;

constexpr const char *managerPath = "/org/freedesktop/login1";
constexpr const char *sessionPath = "/org/freedesktop/login1/session/_37";
constexpr const char *sessionInterface = "org.freedesktop.login1.Session";
constexpr const char *introspection =
    "<node>"
    "<interface name='org.freedesktop.login1.Manager'>"
    "<method name='GetSession'><arg type='s' direction='in'/><arg type='o' direction='out'/></method>"
    "<signal name='PrepareForSleep'><arg type='b'/></signal>"
    "</interface>"
    "<interface name='org.freedesktop.login1.Session'>"
    "<property name='Active' type='b' access='read'/>"
    "<property name='LockedHint' type='b' access='read'/>"
    "<signal name='Lock'/>"
    "</interface>"
    "</node>";

class SessionManager {
public:
    explicit SessionManager(const PrivateBus &bus, bool isActive = true, bool isLocked = false)
        : active(isActive), locked(isLocked)
    {
        node = g_dbus_node_info_new_for_xml(introspection, nullptr);
        connection = bus.connect();
        static const GDBusInterfaceVTable managerTable{&SessionManager::called, nullptr, nullptr, {}};
        static const GDBusInterfaceVTable sessionTable{nullptr, &SessionManager::read, nullptr, {}};
        objects = {g_dbus_connection_register_object(connection.get(), managerPath, node->interfaces[0], &managerTable,
                                                     this, nullptr, nullptr),
                   g_dbus_connection_register_object(connection.get(), sessionPath, node->interfaces[1], &sessionTable,
                                                     this, nullptr, nullptr)};
        constexpr guint32 doNotQueue = 4;
        g_variant_unref(g_dbus_connection_call_sync(connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                    "org.freedesktop.DBus", "RequestName",
                                                    g_variant_new("(su)", "org.freedesktop.login1", doNotQueue),
                                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    }
    ~SessionManager()
    {
        // A call that has arrived but waits for its turn comes to nobody then.
        for (const guint object : objects)
            g_dbus_connection_unregister_object(connection.get(), object);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
        g_dbus_node_info_unref(node);
    }

    void sleep(bool begins) { emit(managerPath, "org.freedesktop.login1.Manager", "PrepareForSleep", "(b)", begins); }
    void wishLock() { emit(sessionPath, sessionInterface, "Lock", nullptr, false); }
    void change(const char *property, bool value)
    {
        (std::string(property) == "Active" ? active : locked) = value;
        tellProperties(g_variant_new_parsed("{%s: <%b>}", property, value), g_variant_new_parsed("@as []"));
    }
    // Telling only that it changed.
    void changeUnnamed(const char *property, bool value)
    {
        (std::string(property) == "Active" ? active : locked) = value;
        tellProperties(g_variant_new_parsed("@a{sv} {}"), g_variant_new_parsed("[%s]", property));
    }

    std::vector<std::string> asked;
    int reads = 0;

private:
    void emit(const char *path, const char *interface, const char *signal, const char *type, bool value)
    {
        g_dbus_connection_emit_signal(connection.get(), nullptr, path, interface, signal,
                                      type ? g_variant_new(type, static_cast<gboolean>(value)) : nullptr, nullptr);
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
    }
    void tellProperties(GVariant *values, GVariant *unnamed)
    {
        g_dbus_connection_emit_signal(connection.get(), nullptr, sessionPath, "org.freedesktop.DBus.Properties",
                                      "PropertiesChanged",
                                      g_variant_new("(s@a{sv}@as)", sessionInterface, values, unnamed), nullptr);
        g_dbus_connection_flush_sync(connection.get(), nullptr, nullptr);
    }
    static void called(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                       GVariant *parameters, GDBusMethodInvocation *invocation, gpointer data)
    {
        const gchar *name = nullptr;
        g_variant_get(parameters, "(&s)", &name);
        static_cast<SessionManager *>(data)->asked.emplace_back(name);
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", sessionPath));
    }
    static GVariant *read(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *property,
                          GError **, gpointer data)
    {
        auto *self = static_cast<SessionManager *>(data);
        ++self->reads;
        return g_variant_new_boolean(std::string(property) == "Active" ? self->active : self->locked);
    }

    bool active, locked;
    GDBusNodeInfo *node;
    Gobject<GDBusConnection> connection;
    std::array<guint, 2> objects{};
};

class Session : public ::testing::Test {
protected:
    Session() { unsetenv("XDG_SESSION_ID"); }

    void open(bool active = true, bool locked = false)
    {
        manager = std::make_unique<SessionManager>(bus, active, locked);
        session = std::make_unique<LoginSession>(system, [this](bool away) { told.push_back(away); });
        ASSERT_TRUE(loop.turnUntil([&] { return manager->reads >= 2; }));
        loop.turnFor(Seconds(0.05));
    }
    bool tells(std::vector<bool> expected)
    {
        return loop.turnUntil([&] { return told.size() >= expected.size(); }) && told == expected;
    }

    PrivateBus bus{"DBUS_SYSTEM_BUS_ADDRESS"};
    GlibLoop loop;
    MessageBus system{loop, MessageBus::Kind::system};
    std::vector<bool> told;
    std::unique_ptr<SessionManager> manager;
    std::unique_ptr<LoginSession> session;
};

TEST_F(Session, OneThatIsActiveAndOpenIsNotAway)
{
    open();
    EXPECT_EQ(manager->asked, std::vector<std::string>{"auto"});
    EXPECT_TRUE(told.empty());
    EXPECT_FALSE(session->isAway());
}

TEST_F(Session, OneThatIsLeftForAnotherIsAwayUntilItIsBack)
{
    open();
    manager->change("Active", false);
    EXPECT_TRUE(tells({true}));
    EXPECT_TRUE(session->isAway());
    manager->change("Active", true);
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(Session, ALockCountsWhileItHoldsAndNotBecauseItIsWishedFor)
{
    open();
    manager->wishLock();
    manager->change("LockedHint", true);
    EXPECT_TRUE(tells({true}));
    manager->change("LockedHint", false);
    EXPECT_TRUE(tells({true, false}));
    manager->wishLock();
    loop.turnFor(Seconds(0.05));
    EXPECT_FALSE(session->isAway());
}

TEST_F(Session, AMachineThatGoesToSleepIsAwayUntilItWakes)
{
    open();
    manager->sleep(true);
    EXPECT_TRUE(tells({true}));
    manager->sleep(false);
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(Session, TwoReasonsAreToldOnceAndEndWithTheSecond)
{
    open();
    manager->change("LockedHint", true);
    ASSERT_TRUE(tells({true}));
    manager->sleep(true);
    manager->change("LockedHint", false);
    loop.turnFor(Seconds(0.05));
    EXPECT_TRUE(session->isAway());
    manager->sleep(false);
    EXPECT_TRUE(tells({true, false}));
}

TEST_F(Session, WhatIsTrueAtTheStartIsTold)
{
    open(false, false);
    EXPECT_TRUE(tells({true}));
}

TEST_F(Session, AChangeWithoutItsValueIsAskedFor)
{
    open();
    manager->changeUnnamed("Active", false);
    EXPECT_TRUE(tells({true}));
}

TEST_F(Session, AManagerThatGoesAwayLeavesNobodyAwayAndItsSuccessorIsAsked)
{
    open();
    manager->change("Active", false);
    ASSERT_TRUE(tells({true}));
    manager.reset();
    EXPECT_TRUE(tells({true, false}));
    manager = std::make_unique<SessionManager>(bus, false);
    EXPECT_TRUE(tells({true, false, true}));
}

TEST_F(Session, ABusThatEndsLeavesNobodyAwayAndItsSuccessorIsAsked)
{
    open();
    manager->change("Active", false);
    ASSERT_TRUE(tells({true}));
    bus.stop();
    EXPECT_TRUE(tells({true, false}));
    manager.reset();
    bus.start();
    manager = std::make_unique<SessionManager>(bus, false);
    EXPECT_TRUE(tells({true, false, true}));
}

TEST_F(Session, WithoutAManagerNobodyIsAway)
{
    session = std::make_unique<LoginSession>(system, [this](bool away) { told.push_back(away); });
    loop.turnFor(Seconds(0.1));
    EXPECT_FALSE(session->isAway());
    EXPECT_TRUE(told.empty());
}

TEST_F(Session, NobodyIsToldAfterTheListenerHasGone)
{
    open();
    session.reset();
    manager->change("Active", false);
    loop.turnFor(Seconds(0.05));
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace korvane::platform
