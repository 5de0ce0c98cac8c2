#include "Platform/Linux/MessageBus.h"

#include "Platform/Linux/GlibPointers.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace korvane::platform {
namespace {

constexpr int answerMilliseconds = 5000;
constexpr auto connectionFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                                                   | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
constexpr Seconds connectingTime{5}, firstDelay{1}, longestDelay{60};

std::string fromEnvironment(const char *variable)
{
    const char *value = std::getenv(variable);
    return value ? value : "";
}

// Empty when there is no bus. The library's own search would start a bus for a session that has none, and wait for it.
std::string addressOf(MessageBus::Kind kind)
{
    if (kind == MessageBus::Kind::system) {
        auto address = fromEnvironment("DBUS_SYSTEM_BUS_ADDRESS");
        return address.empty() ? "unix:path=/run/dbus/system_bus_socket" : address;
    }
    if (auto address = fromEnvironment("DBUS_SESSION_BUS_ADDRESS"); !address.empty())
        return address;
    const auto directory = fromEnvironment("XDG_RUNTIME_DIR");
    if (directory.empty())
        return {};
    const std::string socket = directory + "/bus";
    std::error_code error;
    if (!std::filesystem::is_socket(socket, error))
        return {};
    const GlibText escaped(g_dbus_address_escape_value(socket.c_str()));
    return std::string("unix:path=") + escaped.get();
}

// The library carries a weak pointer to our callbacks, because the object may be gone by then.
template <typename T> gpointer hold(const std::shared_ptr<T> &object)
{
    return new std::weak_ptr<T>(object);
}
template <typename T> std::shared_ptr<T> held(gpointer data)
{
    return static_cast<std::weak_ptr<T> *>(data)->lock();
}
template <typename T> void release(gpointer data)
{
    delete static_cast<std::weak_ptr<T> *>(data);
}
template <typename T> std::shared_ptr<T> take(gpointer data)
{
    const std::unique_ptr<std::weak_ptr<T>> weak(static_cast<std::weak_ptr<T> *>(data));
    return weak->lock();
}

const char *orAny(const std::string &text)
{
    return text.empty() ? nullptr : text.c_str();
}

}  // namespace

// Something that a caller wants from the bus. It lives as long as its subscription.
class MessageBus::Interest {
public:
    virtual ~Interest() = default;
    virtual void begin(GDBusConnection *bus) = 0;
    virtual void end(GDBusConnection *bus) = 0;
    // The connection on which it had begun was lost, or no connection could be made.
    virtual void lost() {}
    // From now on the caller must not be called any more.
    virtual void silence() = 0;
};

class MessageBus::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(MainLoop &mainLoop, Kind whichBus) : loop(mainLoop), kind(whichBus) {}

    ~Connection()
    {
        if (cancel)
            g_cancellable_cancel(cancel.get());
        if (!bus)
            return;
        g_signal_handler_disconnect(bus.get(), closedHandler);
        for (const auto &weak : interests)
            if (const auto interest = weak.lock())
                interest->end(bus.get());
        g_dbus_connection_close(bus.get(), nullptr, nullptr, nullptr);
    }

    void connect()
    {
        if (bus || cancel)
            return;
        retry.reset();
        const std::string address = addressOf(kind);
        if (address.empty())
            return failed();
        cancel.reset(g_cancellable_new());
        // This is a private connection, not the one that the process shares. A shared connection that is dead stays
        // alive as long as anybody in the process keeps it, and until then nobody could connect again.
        g_dbus_connection_new_for_address(address.c_str(), connectionFlags, nullptr, cancel.get(),
                                          &Connection::connected, hold(shared_from_this()));
        limit = loop.after(connectingTime, [this] { g_cancellable_cancel(cancel.get()); });
    }

    Subscription add(std::shared_ptr<Interest> interest)
    {
        interests.push_back(interest);
        if (bus)
            interest->begin(bus.get());
        return std::make_unique<Holder>(weak_from_this(), std::move(interest));
    }
    void remove(const Interest *interest)
    {
        std::erase_if(interests, [&](const auto &weak) {
            const auto one = weak.lock();
            return !one || one.get() == interest;
        });
    }

private:
    class Holder final : public SubscriptionBase {
    public:
        Holder(std::weak_ptr<Connection> owner, std::shared_ptr<Interest> mine)
            : connection(std::move(owner)), interest(std::move(mine))
        {}
        ~Holder() override
        {
            interest->silence();
            const auto living = connection.lock();
            if (!living)
                return;
            living->remove(interest.get());
            if (living->bus)
                interest->end(living->bus.get());
        }

    private:
        std::weak_ptr<Connection> connection;
        std::shared_ptr<Interest> interest;
    };

    static void connected(GObject *, GAsyncResult *result, gpointer data)
    {
        Gobject<GDBusConnection> made(g_dbus_connection_new_for_address_finish(result, nullptr));
        const auto self = take<Connection>(data);
        if (!self)
            return;
        self->cancel.reset();
        self->limit.reset();
        if (!made || g_dbus_connection_is_closed(made.get()))
            return self->failed();
        self->bus = std::move(made);
        self->delay = firstDelay;
        self->closedHandler = g_signal_connect_data(
            self->bus.get(), "closed", G_CALLBACK(&Connection::closed), hold(self),
            [](gpointer held, GClosure *) { release<Connection>(held); }, GConnectFlags{});
        for (const auto &weak : std::vector(self->interests))
            if (const auto interest = weak.lock(); interest && self->bus)
                interest->begin(self->bus.get());
    }

    static void closed(GDBusConnection *, gboolean, GError *, gpointer data)
    {
        const auto self = held<Connection>(data);
        if (!self || !self->bus)
            return;
        const auto old = std::move(self->bus);
        self->bus = nullptr;
        for (const auto &weak : std::vector(self->interests))
            if (const auto interest = weak.lock())
                interest->end(old.get());
        self->failed();
        g_signal_handler_disconnect(old.get(), self->closedHandler);
    }

    // There is no connection. The callers are told at a later turn, because some of them have only just asked.
    void failed()
    {
        retry = loop.after(delay, [this] { connect(); });
        delay = std::min(delay * 2, longestDelay);
        loop.post([weak = weak_from_this(), list = interests] {
            const auto self = weak.lock();
            for (const auto &one : list)
                if (const auto interest = one.lock(); interest && self && !self->bus)
                    interest->lost();
        });
    }

    MainLoop &loop;
    Kind kind;
    Gobject<GCancellable> cancel;  // for the current attempt
    Gobject<GDBusConnection> bus;
    gulong closedHandler = 0;
    Seconds delay = firstDelay;
    Subscription retry, limit;
    std::vector<std::weak_ptr<Interest>> interests;
};

class MessageBus::Listening final : public Interest, public std::enable_shared_from_this<Listening> {
public:
    Listening(Signal wanted, Heard callback) : signal(std::move(wanted)), heard(std::move(callback)) {}

    void begin(GDBusConnection *bus) override
    {
        number = g_dbus_connection_signal_subscribe(
            bus, orAny(signal.sender), orAny(signal.interface), orAny(signal.name), orAny(signal.path), nullptr,
            G_DBUS_SIGNAL_FLAGS_NONE, &Listening::came, hold(shared_from_this()), &release<Listening>);
    }
    void end(GDBusConnection *bus) override
    {
        if (const guint old = std::exchange(number, 0))
            g_dbus_connection_signal_unsubscribe(bus, old);
    }
    void silence() override { heard = nullptr; }

private:
    static void came(GDBusConnection *, const gchar *sender, const gchar *, const gchar *, const gchar *,
                     GVariant *arguments, gpointer data)
    {
        const auto self = held<Listening>(data);
        if (const auto call = self ? self->heard : nullptr)
            call(sender ? sender : "", arguments);
    }

    Signal signal;
    Heard heard;
    guint number = 0;
};

class MessageBus::Watching final : public Interest, public std::enable_shared_from_this<Watching> {
public:
    Watching(std::string watched, std::function<void(bool)> callback)
        : name(std::move(watched)), told(std::move(callback))
    {}

    void begin(GDBusConnection *bus) override
    {
        number = g_bus_watch_name_on_connection(
            bus, name.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE,
            [](GDBusConnection *, const gchar *, const gchar *, gpointer data) { tell(data, true); },
            [](GDBusConnection *, const gchar *, gpointer data) { tell(data, false); }, hold(shared_from_this()),
            &release<Watching>);
    }
    void end(GDBusConnection *) override
    {
        if (const guint old = std::exchange(number, 0))
            g_bus_unwatch_name(old);
    }
    void lost() override { take(false); }
    void silence() override { told = nullptr; }

private:
    static void tell(gpointer data, bool isPresent)
    {
        if (const auto self = held<Watching>(data))
            self->take(isPresent);
    }
    void take(bool isPresent)
    {
        if (std::exchange(present, isPresent) == isPresent)
            return;
        if (const auto call = told)
            call(isPresent);
    }

    std::string name;
    std::function<void(bool)> told;
    std::optional<bool> present;
    guint number = 0;
};

class MessageBus::Calling final : public Interest, public std::enable_shared_from_this<Calling> {
public:
    Calling(Method wanted, GVariant *with, std::function<void(const Answer &)> callback)
        : method(std::move(wanted)), arguments(with ? g_variant_ref_sink(with) : nullptr), answered(std::move(callback))
    {}

    void begin(GDBusConnection *bus) override
    {
        if (std::exchange(sent, true))
            return;
        const auto *type = method.answerType ? G_VARIANT_TYPE(method.answerType) : nullptr;
        g_dbus_connection_call(bus, method.destination.c_str(), method.path.c_str(), method.interface.c_str(),
                               method.name.c_str(), arguments.get(), type, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                               answerMilliseconds, nullptr, &Calling::came, hold(shared_from_this()));
    }
    // The library answers every call that was sent, even when the connection is lost.
    void end(GDBusConnection *) override {}
    void lost() override
    {
        if (!sent)
            give({});
    }
    void silence() override { answered = nullptr; }

private:
    static void came(GObject *bus, GAsyncResult *result, gpointer data)
    {
        GError *failure = nullptr;
        const GlibVariant value(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &failure));
        const std::unique_ptr<GError, GlibFree> error(failure);
        const auto self = platform::take<Calling>(data);
        if (!self)
            return;
        const GlibText name(error ? g_dbus_error_get_remote_error(failure) : nullptr);
        self->give({value.get(), name ? name.get() : ""});
    }
    void give(const Answer &answer)
    {
        if (const auto call = std::exchange(answered, nullptr))
            call(answer);
    }

    Method method;
    GlibVariant arguments;
    std::function<void(const Answer &)> answered;
    bool sent = false;
};

bool MessageBus::answersWithin(Seconds time, Kind kind)
{
    const std::string address = addressOf(kind);
    if (address.empty())
        return true;
    struct Attempt {
        Gobject<GCancellable> cancel{g_cancellable_new()};
        bool ended = false;
    };
    // It uses a loop of its own, because nothing else may run while this function waits. An abandoned attempt ends by
    // itself.
    GMainContext *context = g_main_context_new();
    g_main_context_push_thread_default(context);
    const auto attempt = std::make_shared<Attempt>();
    g_dbus_connection_new_for_address(
        address.c_str(), connectionFlags, nullptr, attempt->cancel.get(),
        [](GObject *, GAsyncResult *result, gpointer data) {
            const Gobject<GDBusConnection> made(g_dbus_connection_new_for_address_finish(result, nullptr));
            if (const auto living = take<Attempt>(data))
                living->ended = true;
        },
        hold(attempt));
    const gint64 end = g_get_monotonic_time() + static_cast<gint64>(time.count() * G_USEC_PER_SEC);
    GSource *limit = g_timeout_source_new(static_cast<guint>(time.count() * 1000));
    g_source_set_callback(
        limit, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
    g_source_attach(limit, context);
    while (!attempt->ended && g_get_monotonic_time() < end)
        g_main_context_iteration(context, TRUE);
    g_source_destroy(limit);
    g_source_unref(limit);
    if (!attempt->ended)
        g_cancellable_cancel(attempt->cancel.get());
    g_main_context_pop_thread_default(context);
    g_main_context_unref(context);
    return attempt->ended;
}

MessageBus::MessageBus(MainLoop &loop, Kind kind) : connection(std::make_shared<Connection>(loop, kind))
{
    connection->connect();
}

MessageBus::~MessageBus() = default;

Subscription MessageBus::listen(Signal signal, Heard heard)
{
    return connection->add(std::make_shared<Listening>(std::move(signal), std::move(heard)));
}

Subscription MessageBus::watch(std::string name, std::function<void(bool)> told)
{
    return connection->add(std::make_shared<Watching>(std::move(name), std::move(told)));
}

Subscription MessageBus::call(Method method, GVariant *arguments, std::function<void(const Answer &)> answered)
{
    auto subscription = connection->add(std::make_shared<Calling>(std::move(method), arguments, std::move(answered)));
    connection->connect();
    return subscription;
}

}  // namespace korvane::platform
