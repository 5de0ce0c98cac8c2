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

// A program that a user service has started belongs to no session. For "auto" logind then takes the session on the
// display.
std::string sessionName()
{
    const char *own = std::getenv("XDG_SESSION_ID");
    return own && *own ? own : "auto";
}

}  // namespace

LoginSession::LoginSession(MessageBus &systemBus, std::function<void(bool)> callback)
    : bus(systemBus), changed(std::move(callback))
{
    manager = bus.watch(service, [this](bool present) { managerCameOrWent(present); });
}

LoginSession::~LoginSession() = default;

void LoginSession::managerCameOrWent(bool present)
{
    sleepSignal.reset();
    propertySignal.reset();
    question.reset();
    if (!present) {
        // Without logind nobody could report that the user is back.
        update([this] {
            active = true;
            locked = sleeping = false;
        });
        return;
    }
    sleepSignal = bus.listen({service, managerPath, managerInterface, "PrepareForSleep"},
                             [this](const std::string &, GVariant *arguments) { takeSleep(arguments); });
    question = bus.call({service, managerPath, managerInterface, "GetSession", "(o)"},
                        g_variant_new("(s)", sessionName().c_str()), [this](const MessageBus::Answer &answer) {
                            if (!answer.value)
                                return;
                            const gchar *path = nullptr;
                            g_variant_get(answer.value, "(&o)", &path);
                            follow(path);
                        });
}

// It listens before it reads, so that no change in between is missed.
void LoginSession::follow(const std::string &path)
{
    session = path;
    propertySignal = bus.listen({service, session, propertiesInterface, "PropertiesChanged"},
                                [this](const std::string &, GVariant *arguments) { takeChanges(arguments); });
    read();
}

void LoginSession::read()
{
    question = bus.call({service, session, propertiesInterface, "GetAll", "(a{sv})"},
                        g_variant_new("(s)", sessionInterface), [this](const MessageBus::Answer &answer) {
                            if (!answer.value)
                                return;
                            const GlibVariant values(g_variant_get_child_value(answer.value, 0));
                            takeProperties(values.get());
                        });
}

void LoginSession::takeChanges(GVariant *arguments)
{
    if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv}as)")))
        return;
    const gchar *interface = nullptr;
    g_variant_get_child(arguments, 0, "&s", &interface);
    if (std::string_view(interface) != sessionInterface)
        return;
    const GlibVariant values(g_variant_get_child_value(arguments, 1));
    takeProperties(values.get());
    // Some properties are only reported as changed, without their values.
    const GlibVariant unnamed(g_variant_get_child_value(arguments, 2));
    if (g_variant_n_children(unnamed.get()) > 0)
        read();
}

void LoginSession::takeSleep(GVariant *arguments)
{
    if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(b)")))
        return;
    gboolean begins = FALSE;
    g_variant_get(arguments, "(b)", &begins);
    update([&] { sleeping = begins != FALSE; });
}

// The hint is used and not the signals Lock and Unlock. These signals are only requests, and a screen locker that is
// unlocked with a password sends no second one.
void LoginSession::takeProperties(GVariant *values)
{
    update([&] {
        gboolean value = FALSE;
        if (g_variant_lookup(values, "Active", "b", &value))
            active = value != FALSE;
        if (g_variant_lookup(values, "LockedHint", "b", &value))
            locked = value != FALSE;
    });
}

void LoginSession::update(const std::function<void()> &change)
{
    const bool before = isAway();
    change();
    if (isAway() != before)
        changed(isAway());
}

}  // namespace korvane::platform
