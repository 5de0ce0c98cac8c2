#include "Platform/Linux/LoginSession.h"

#include "Platform/Linux/GlibPointers.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace korvane::platform {
namespace {

constexpr const char *service = "org.freedesktop.login1";
constexpr const char *managerPath = "/org/freedesktop/login1";
constexpr const char *managerInterface = "org.freedesktop.login1.Manager";
constexpr const char *sessionInterface = "org.freedesktop.login1.Session";
constexpr const char *propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr int sessionReplyTimeout = 5000;  // milliseconds

// A program that a service of the user has started belongs to no session; logind then takes the one on the display.
std::string sessionName()
{
    const char *own = std::getenv("XDG_SESSION_ID");
    return own && *own ? own : "auto";
}

}  // namespace

class LoginSession::Watcher : public std::enable_shared_from_this<Watcher> {
public:
    explicit Watcher(std::function<void(bool)> callback) : changed(std::move(callback)), cancel(g_cancellable_new()) {}

    ~Watcher()
    {
        g_cancellable_cancel(cancel.get());
        if (nameWatch)
            g_bus_unwatch_name(nameWatch);
        unsubscribe();
    }

    void connect() { g_bus_get(G_BUS_TYPE_SYSTEM, cancel.get(), &Watcher::connected, hold()); }
    bool isAway() const { return !active || locked || sleeping; }

private:
    using Self = std::weak_ptr<Watcher>;

    // What GLib carries to a callback of ours, which takes it back.
    Self *hold() { return new Self(weak_from_this()); }
    static void release(gpointer self) { delete static_cast<Self *>(self); }

    static void connected(GObject *, GAsyncResult *result, gpointer held)
    {
        const std::unique_ptr<Self> self(static_cast<Self *>(held));
        Gobject<GDBusConnection> connection(g_bus_get_finish(result, nullptr));
        const auto watcher = self->lock();
        if (!watcher || !connection)
            return;
        g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
        watcher->bus = std::move(connection);
        watcher->nameWatch =
            g_bus_watch_name_on_connection(watcher->bus.get(), service, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                           &Watcher::appeared, &Watcher::vanished, watcher->hold(), &release);
    }

    static void appeared(GDBusConnection *, const gchar *, const gchar *, gpointer held)
    {
        const auto watcher = static_cast<Self *>(held)->lock();
        if (!watcher)
            return;
        watcher->unsubscribe();
        watcher->sleepSignal = watcher->subscribe(managerInterface, "PrepareForSleep", managerPath, &Watcher::sleeps);
        watcher->call(managerPath, managerInterface, "GetSession", g_variant_new("(s)", sessionName().c_str()), "(o)",
                      &Watcher::sessionKnown);
    }

    // Nobody is left to tell when the session is there again.
    static void vanished(GDBusConnection *, const gchar *, gpointer held)
    {
        const auto watcher = static_cast<Self *>(held)->lock();
        if (!watcher)
            return;
        watcher->unsubscribe();
        watcher->update([&] {
            watcher->active = true;
            watcher->locked = watcher->sleeping = false;
        });
    }

    static void sessionKnown(GObject *connection, GAsyncResult *result, gpointer held)
    {
        const auto [watcher, reply] = finish(connection, result, held);
        if (!watcher || !reply)
            return;
        const gchar *path = nullptr;
        g_variant_get(reply.get(), "(&o)", &path);
        watcher->session = path;
        // Listening first: what changes in between is then told by one of the two.
        if (watcher->propertySignal)
            g_dbus_connection_signal_unsubscribe(watcher->bus.get(), watcher->propertySignal);
        watcher->propertySignal =
            watcher->subscribe(propertiesInterface, "PropertiesChanged", path, &Watcher::propertiesChanged);
        watcher->read();
    }

    void read()
    {
        call(session.c_str(), propertiesInterface, "GetAll", g_variant_new("(s)", sessionInterface), "(a{sv})",
             &Watcher::propertiesRead);
    }

    static void propertiesRead(GObject *connection, GAsyncResult *result, gpointer held)
    {
        const auto [watcher, reply] = finish(connection, result, held);
        if (!watcher || !reply)
            return;
        const Variant values(g_variant_get_child_value(reply.get(), 0));
        watcher->apply(values.get());
    }

    static void propertiesChanged(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                                  GVariant *parameters, gpointer held)
    {
        const auto watcher = static_cast<Self *>(held)->lock();
        if (!watcher || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sa{sv}as)")))
            return;
        const gchar *interface = nullptr;
        g_variant_get_child(parameters, 0, "&s", &interface);
        if (std::string_view(interface) != sessionInterface)
            return;
        const Variant values(g_variant_get_child_value(parameters, 1));
        watcher->apply(values.get());
        // Of some only the fact that they have changed is told.
        const Variant unnamed(g_variant_get_child_value(parameters, 2));
        if (g_variant_n_children(unnamed.get()) > 0)
            watcher->read();
    }

    static void sleeps(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                       GVariant *parameters, gpointer held)
    {
        const auto watcher = static_cast<Self *>(held)->lock();
        if (!watcher || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)")))
            return;
        gboolean begins = FALSE;
        g_variant_get(parameters, "(b)", &begins);
        watcher->update([&] { watcher->sleeping = begins != FALSE; });
    }

    // The hint and not the signals named Lock and Unlock: those are wishes, and a locker that is opened with a password
    // sends no second one.
    void apply(GVariant *values)
    {
        update([&] {
            gboolean value = FALSE;
            if (g_variant_lookup(values, "Active", "b", &value))
                active = value != FALSE;
            if (g_variant_lookup(values, "LockedHint", "b", &value))
                locked = value != FALSE;
        });
    }

    template <typename Change> void update(Change change)
    {
        const bool before = isAway();
        change();
        if (isAway() != before)
            changed(isAway());
    }

    guint subscribe(const char *interface, const char *signal, const char *path, GDBusSignalCallback callback)
    {
        return g_dbus_connection_signal_subscribe(bus.get(), service, interface, signal, path, nullptr,
                                                  G_DBUS_SIGNAL_FLAGS_NONE, callback, hold(), &release);
    }
    void unsubscribe()
    {
        for (guint *signal : {&sleepSignal, &propertySignal})
            if (const guint old = std::exchange(*signal, 0))
                g_dbus_connection_signal_unsubscribe(bus.get(), old);
    }

    void call(const char *path, const char *interface, const char *method, GVariant *arguments, const char *answer,
              GAsyncReadyCallback callback)
    {
        g_dbus_connection_call(bus.get(), service, path, interface, method, arguments, G_VARIANT_TYPE(answer),
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, sessionReplyTimeout, cancel.get(), callback, hold());
    }
    // Null where nobody waits any more, or for an error.
    static std::pair<std::shared_ptr<Watcher>, Variant> finish(GObject *connection, GAsyncResult *result, gpointer held)
    {
        const std::unique_ptr<Self> self(static_cast<Self *>(held));
        Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
        return {self->lock(), std::move(reply)};
    }

    std::function<void(bool)> changed;
    Gobject<GCancellable> cancel;
    Gobject<GDBusConnection> bus;
    guint nameWatch = 0, sleepSignal = 0, propertySignal = 0;
    std::string session;
    bool active = true, locked = false, sleeping = false;
};

LoginSession::LoginSession(std::function<void(bool)> changed) : watcher(std::make_shared<Watcher>(std::move(changed)))
{
    watcher->connect();
}

LoginSession::~LoginSession() = default;

bool LoginSession::isAway() const
{
    return watcher->isAway();
}

}  // namespace korvane::platform
