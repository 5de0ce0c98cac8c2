#include "Platform/Linux/LauncherBadges.h"

#include "Platform/Linux/GlibPointers.h"

#include <set>
#include <utility>

namespace korvane::platform {
namespace {

constexpr const char *interfaceName = "com.canonical.Unity.LauncherEntry";
// A program that sends without end must not fill the memory.
constexpr std::size_t mostSenders = 256;
constexpr std::size_t mostEntriesOfOneSender = 64;
constexpr int replyTimeout = 5000;  // milliseconds

void apply(LauncherEntryState &state, GVariant *properties)
{
    GVariantIter iterator;
    const gchar *name = nullptr;
    GVariant *held = nullptr;
    g_variant_iter_init(&iterator, properties);
    while (g_variant_iter_next(&iterator, "{&sv}", &name, &held)) {
        const Variant value(held);
        const std::string_view property(name);
        if (property == "count" && g_variant_is_of_type(held, G_VARIANT_TYPE_INT64))
            state.count = g_variant_get_int64(held);
        else if (property == "count" && g_variant_is_of_type(held, G_VARIANT_TYPE_INT32))
            state.count = g_variant_get_int32(held);
        else if (property == "count-visible" && g_variant_is_of_type(held, G_VARIANT_TYPE_BOOLEAN))
            state.countVisible = g_variant_get_boolean(held) != FALSE;
        else if (property == "urgent" && g_variant_is_of_type(held, G_VARIANT_TYPE_BOOLEAN))
            state.urgent = g_variant_get_boolean(held) != FALSE;
    }
}

}  // namespace

std::string LauncherEntryState::label() const
{
    if (countVisible)
        return std::to_string(count);
    return urgent ? "!" : "";
}

class LauncherBadges::Listener : public std::enable_shared_from_this<Listener> {
public:
    explicit Listener(std::function<void()> callback) : changed(std::move(callback)), cancel(g_cancellable_new()) {}

    ~Listener()
    {
        g_cancellable_cancel(cancel.get());
        if (bus) {
            g_dbus_connection_signal_unsubscribe(bus.get(), updates);
            g_dbus_connection_signal_unsubscribe(bus.get(), ownerChanges);
        }
    }

    void connect() { g_bus_get(G_BUS_TYPE_SESSION, cancel.get(), &Listener::connected, hold()); }

    Labels labels;
    Processes processes;

private:
    struct Sender {
        std::map<std::string, LauncherEntryState> entries;
        std::int32_t pid = 0;  // 0 until the bus has told
    };

    using Self = std::weak_ptr<Listener>;

    // What GLib carries to a callback of ours, which takes it back.
    Self *hold() { return new Self(weak_from_this()); }
    static void release(gpointer self) { delete static_cast<Self *>(self); }

    static void connected(GObject *, GAsyncResult *result, gpointer held)
    {
        const std::unique_ptr<Self> self(static_cast<Self *>(held));
        Gobject<GDBusConnection> connection(g_bus_get_finish(result, nullptr));
        const auto listener = self->lock();
        if (!listener || !connection)
            return;
        g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
        listener->bus = std::move(connection);
        listener->subscribe();
    }

    void subscribe()
    {
        updates = g_dbus_connection_signal_subscribe(bus.get(), nullptr, interfaceName, "Update", nullptr, nullptr,
                                                     G_DBUS_SIGNAL_FLAGS_NONE, &Listener::updated, hold(), &release);
        ownerChanges = g_dbus_connection_signal_subscribe(
            bus.get(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", "/org/freedesktop/DBus",
            nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &Listener::ownerChanged, hold(), &release);
    }

    static void updated(GDBusConnection *, const gchar *sender, const gchar *, const gchar *, const gchar *,
                        GVariant *parameters, gpointer held)
    {
        const auto listener = static_cast<Self *>(held)->lock();
        if (!listener || !sender || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sa{sv})")))
            return;
        const gchar *uri = nullptr;
        GVariant *properties = nullptr;
        g_variant_get(parameters, "(&s@a{sv})", &uri, &properties);
        const Variant owned(properties);
        listener->update(sender, entryID(uri), properties);
    }

    void update(const std::string &sender, const std::string &id, GVariant *properties)
    {
        if (id.empty())
            return;
        const bool isNew = !senders.contains(sender);
        if (isNew && senders.size() >= mostSenders)
            return;
        auto &entries = senders[sender].entries;
        if (!entries.contains(id) && entries.size() >= mostEntriesOfOneSender)
            return;
        apply(entries[id], properties);
        rebuild();
        if (isNew)
            askForProcess(sender);
    }

    // A program that has already ended when its announcement is read leaves without being seen to leave: the bus then
    // knows no process of it.
    void askForProcess(const std::string &sender)
    {
        auto *question = new std::pair<Self, std::string>(weak_from_this(), sender);
        g_dbus_connection_call(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "GetConnectionUnixProcessID", g_variant_new("(s)", sender.c_str()),
                               G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, replyTimeout, cancel.get(),
                               &Listener::processKnown, question);
    }

    static void processKnown(GObject *connection, GAsyncResult *result, gpointer held)
    {
        const std::unique_ptr<std::pair<Self, std::string>> question(static_cast<std::pair<Self, std::string> *>(held));
        GError *failure = nullptr;
        const Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &failure));
        const std::unique_ptr<GError, GlibFree> error(failure);
        const auto listener = question->first.lock();
        if (!listener)
            return;
        if (error && g_error_matches(failure, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER))
            listener->forget(question->second);
        const auto sender = listener->senders.find(question->second);
        if (!reply || sender == listener->senders.end())
            return;
        guint32 pid = 0;
        g_variant_get(reply.get(), "(u)", &pid);
        sender->second.pid = static_cast<std::int32_t>(pid);
        listener->rebuild();
    }

    static void ownerChanged(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                             GVariant *parameters, gpointer held)
    {
        const auto listener = static_cast<Self *>(held)->lock();
        if (!listener || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)")))
            return;
        const gchar *name = nullptr, *oldOwner = nullptr, *newOwner = nullptr;
        g_variant_get(parameters, "(&s&s&s)", &name, &oldOwner, &newOwner);
        if (*newOwner == '\0')
            listener->forget(name);
    }

    void forget(const std::string &sender)
    {
        if (senders.erase(sender) > 0)
            rebuild();
    }

    void rebuild()
    {
        Labels shown;
        Processes owners;
        for (const auto &[name, sender] : senders)
            for (const auto &[id, state] : sender.entries)
                if (const std::string label = state.label(); !label.empty()) {
                    shown[id] = label;
                    if (sender.pid != 0)
                        owners[id] = sender.pid;
                }
        if (shown == labels && owners == processes)
            return;
        labels = std::move(shown);
        processes = std::move(owners);
        changed();
    }

    std::function<void()> changed;
    Gobject<GCancellable> cancel;
    Gobject<GDBusConnection> bus;
    guint updates = 0, ownerChanges = 0;
    std::map<std::string, Sender> senders;
};

LauncherBadges::LauncherBadges(std::function<void()> changed) : listener(std::make_shared<Listener>(std::move(changed)))
{
    listener->connect();
}

LauncherBadges::~LauncherBadges() = default;

const LauncherBadges::Labels &LauncherBadges::labels() const
{
    return listener->labels;
}

const LauncherBadges::Processes &LauncherBadges::processes() const
{
    return listener->processes;
}

std::string LauncherBadges::entryID(std::string_view applicationUri)
{
    constexpr std::string_view scheme = "application://";
    constexpr std::string_view suffix = ".desktop";
    if (!applicationUri.starts_with(scheme) || !applicationUri.ends_with(suffix))
        return {};
    return std::string(applicationUri.substr(scheme.size()));
}

}  // namespace korvane::platform
