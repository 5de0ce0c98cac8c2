// The brightness of a laptop's panel. It uses the kernel's files, and logind where only the session may write these
// files.
#pragma once

#include "Platform/Linux/MessageBus.h"
#include "Ports/Brightness.h"
#include "Ports/MainLoop.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace korvane::platform {

// Requests a brightness for a device, without waiting. Returns false when nobody can be asked.
using BacklightWriter = std::function<bool(const std::string &device, std::uint32_t brightness)>;
// Asks logind on the system bus, for the user's session. The first call returns true before logind has answered. After
// a refusal it returns false until a later request is granted.
BacklightWriter logindBacklightWriter(MessageBus &systemBus);

class Backlight final : public Brightness {
public:
    Backlight(MainLoop &loop, BacklightWriter writer, std::filesystem::path devices = "/sys/class/backlight");

    // The brightness of the firmware's device; if there is none, of the platform's device, then of the graphics card's
    // own.
    std::optional<float> current() override;
    bool set(float brightness) override;

private:
    struct Device {
        std::filesystem::path folder;
        std::int64_t brightness = 0, maximum = 0;
        int rank = 0;
    };

    std::optional<Device> device() const;

    MainLoop &loop;
    BacklightWriter writer;
    std::filesystem::path devices;
    // The value that was requested from the session. It may not be set yet.
    std::optional<std::int64_t> asked;
    Seconds askedAt{0};
};

}  // namespace korvane::platform
