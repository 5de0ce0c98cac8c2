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

// For this long the requested value is reported instead of the kernel's, which may still be the old one.
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

// The requests to logind for the session: one is on its way, and of the later ones only the latest is kept.
class Session {
public:
    explicit Session(MessageBus &systemBus) : bus(systemBus) {}

    // False while the last answer was a refusal. logind is asked even then, because it may have been started since.
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

    void send()
    {
        const Wish wish = *std::exchange(wanted, std::nullopt);
        underWay = bus.call({"org.freedesktop.login1", "/org/freedesktop/login1/session/auto",
                             "org.freedesktop.login1.Session", "SetBrightness"},
                            g_variant_new("(ssu)", "backlight", wish.device.c_str(), wish.brightness),
                            [this](const MessageBus::Answer &answer) { take(answer.value != nullptr); });
    }
    void take(bool obeyed)
    {
        underWay.reset();
        refused = !obeyed;
        if (refused)
            wanted.reset();
        else if (wanted)
            send();
    }

    MessageBus &bus;
    std::optional<Wish> wanted;
    Subscription underWay;
    bool refused = false;
};

}  // namespace

BacklightWriter logindBacklightWriter(MessageBus &systemBus)
{
    return [session = std::make_shared<Session>(systemBus)](const std::string &device, std::uint32_t brightness) {
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
        // If several devices have the same rank, the same one is chosen each time.
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
