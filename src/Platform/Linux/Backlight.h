// The brightness of a laptop's panel, by the kernel's files and, where only the session may write them, by logind.
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

// Asks for a device's brightness to be set, without waiting. False when there is nobody to ask.
using BacklightWriter = std::function<bool(const std::string &device, std::uint32_t brightness)>;
// That of the user's session at logind, over the system's bus. The first time it answers true before logind has; after
// a refusal false, until a later wish is granted.
BacklightWriter logindBacklightWriter(MessageBus &systemBus);

class Backlight final : public Brightness {
public:
    Backlight(MainLoop &loop, BacklightWriter writer, std::filesystem::path devices = "/sys/class/backlight");

    // Of the device that the firmware drives, else the platform, else the graphics card itself.
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
    // What was asked of the session and may not have happened yet.
    std::optional<std::int64_t> asked;
    Seconds askedAt{0};
};

}  // namespace korvane::platform
