#include "Platform/Linux/Backlight.h"

#include "Platform/Linux/GlibPointers.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gio/gio.h>
#include <memory>
#include <utility>

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;

// So long a value that was asked for stands for the one that the kernel still shows.
constexpr Seconds settlingTime{0.5};

std::optional<std::int64_t> readNumber(const fs::path &file)
{
    std::ifstream stream(file);
    std::int64_t number = 0;
    return stream >> number ? std::optional(number) : std::nullopt;
}

int rankOf(const fs::path &folder)
{
    std::ifstream stream(folder / "type");
    std::string type;
    stream >> type;
    if (type == "firmware")
        return 3;
    return type == "platform" ? 2 : 1;
}

// Holds the connection to the system's bus, which is made at the first request. The latest value waits for it.
struct Session {
    std::shared_ptr<GDBusConnection> bus;
    bool connecting = false, failed = false;
    std::string device;
    std::uint32_t brightness = 0;

    void send()
    {
        g_dbus_connection_call(bus.get(), "org.freedesktop.login1", "/org/freedesktop/login1/session/auto",
                               "org.freedesktop.login1.Session", "SetBrightness",
                               g_variant_new("(ssu)", "backlight", device.c_str(), brightness), nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    }
};

void connected(GObject *, GAsyncResult *result, gpointer data)
{
    const std::unique_ptr<std::weak_ptr<Session>> held(static_cast<std::weak_ptr<Session> *>(data));
    GDBusConnection *bus = g_bus_get_finish(result, nullptr);
    const auto session = held->lock();
    if (!session) {
        if (bus)
            g_object_unref(bus);
        return;
    }
    session->connecting = false;
    session->failed = bus == nullptr;
    if (bus) {
        session->bus = std::shared_ptr<GDBusConnection>(bus, [](GDBusConnection *one) { g_object_unref(one); });
        session->send();
    }
}

}  // namespace

BacklightWriter logindBacklightWriter()
{
    return [session = std::make_shared<Session>()](const std::string &device, std::uint32_t brightness) {
        if (session->failed)
            return false;
        session->device = device;
        session->brightness = brightness;
        if (session->bus) {
            session->send();
        } else if (!session->connecting) {
            session->connecting = true;
            g_bus_get(G_BUS_TYPE_SYSTEM, nullptr, connected, new std::weak_ptr<Session>(session));
        }
        return true;
    };
}

Backlight::Backlight(MainLoop &mainLoop, BacklightWriter sessionWriter, fs::path folder)
    : loop(mainLoop), writer(std::move(sessionWriter)), devices(std::move(folder))
{}

std::optional<Backlight::Device> Backlight::device() const
{
    std::optional<Device> best;
    std::error_code error;
    for (const auto &entry : fs::directory_iterator(devices, error)) {
        const auto maximum = readNumber(entry.path() / "max_brightness");
        const auto brightness = readNumber(entry.path() / "brightness");
        if (!maximum || *maximum <= 0 || !brightness)
            continue;
        const Device found{entry.path(), std::clamp<std::int64_t>(*brightness, 0, *maximum), *maximum,
                           rankOf(entry.path())};
        // Of several alike the same one each time.
        if (!best || found.rank > best->rank || (found.rank == best->rank && found.folder < best->folder))
            best = found;
    }
    return best;
}

std::optional<float> Backlight::current()
{
    const auto found = device();
    if (!found)
        return std::nullopt;
    const bool settling = asked && loop.monotonicNow() - askedAt < settlingTime;
    const std::int64_t shown = settling ? *asked : found->brightness;
    return static_cast<float>(static_cast<double>(shown) / static_cast<double>(found->maximum));
}

bool Backlight::set(float brightness)
{
    const auto found = device();
    if (!found)
        return false;
    const auto value =
        static_cast<std::int64_t>(std::llround(static_cast<double>(brightness) * static_cast<double>(found->maximum)));
    std::ofstream file(found->folder / "brightness");
    if (file << value && file.flush()) {
        asked.reset();
        return true;
    }
    if (!writer || !writer(found->folder.filename().string(), static_cast<std::uint32_t>(value)))
        return false;
    asked = value;
    askedAt = loop.monotonicNow();
    return true;
}

}  // namespace korvane::platform
