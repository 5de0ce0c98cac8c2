#include "Platform/Linux/Backlight.h"

#include "Platform/Linux/GlibPointers.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <utility>

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;

// So long a value that was asked for stands for the one that the kernel still shows.
constexpr Seconds settlingTime{0.5};
constexpr int answerMilliseconds = 5000;

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

// The session's wishes at logind: one under way, and of those that come meanwhile only the latest. The connection to
// the system's bus is made at the first, and made anew after it was lost.
class Session : public std::enable_shared_from_this<Session> {
public:
    // False while the last answer was a refusal; logind is asked all the same, it may have come since.
    bool ask(const std::string &device, std::uint32_t brightness)
    {
        wanted = Wish{device, brightness};
        if (!underWay)
            send();
        return !refused;
    }

private:
    struct Wish {
        std::string device;
        std::uint32_t brightness = 0;
    };

    gpointer hold() { return new std::weak_ptr<Session>(weak_from_this()); }
    // Null when nobody wants to know any more.
    static std::shared_ptr<Session> held(gpointer data)
    {
        const std::unique_ptr<std::weak_ptr<Session>> session(static_cast<std::weak_ptr<Session> *>(data));
        return session->lock();
    }

    void send()
    {
        underWay = true;
        if (!bus) {
            g_bus_get(G_BUS_TYPE_SYSTEM, nullptr, connected, hold());
            return;
        }
        const Wish wish = *std::exchange(wanted, std::nullopt);
        g_dbus_connection_call(bus.get(), "org.freedesktop.login1", "/org/freedesktop/login1/session/auto",
                               "org.freedesktop.login1.Session", "SetBrightness",
                               g_variant_new("(ssu)", "backlight", wish.device.c_str(), wish.brightness), nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, answerMilliseconds, nullptr, answered, hold());
    }

    static void connected(GObject *, GAsyncResult *result, gpointer data)
    {
        Gobject<GDBusConnection> connection(g_bus_get_finish(result, nullptr));
        // The bar outlives its bus.
        if (connection)
            g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
        const auto session = held(data);
        if (!session)
            return;
        session->bus = std::move(connection);
        if (session->bus)
            session->send();
        else
            session->refuse();
    }

    static void answered(GObject *source, GAsyncResult *result, gpointer data)
    {
        GVariant *reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
        const bool obeyed = reply != nullptr;
        if (reply)
            g_variant_unref(reply);
        const auto session = held(data);
        if (!session)
            return;
        if (!obeyed) {
            session->refuse();
            return;
        }
        session->refused = session->underWay = false;
        if (session->wanted)
            session->send();
    }

    void refuse()
    {
        refused = true;
        underWay = false;
        wanted.reset();
        if (bus && g_dbus_connection_is_closed(bus.get()))
            bus.reset();
    }

    Gobject<GDBusConnection> bus;
    std::optional<Wish> wanted;
    bool underWay = false, refused = false;
};

}  // namespace

BacklightWriter logindBacklightWriter()
{
    return [session = std::make_shared<Session>()](const std::string &device, std::uint32_t brightness) {
        return session->ask(device, brightness);
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
