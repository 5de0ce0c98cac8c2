// The volume of the system's sound outputs, device by device and channel by channel.
#pragma once

#include "Ports/Subscription.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace korvane::platform {

class AudioProperties {
public:
    virtual ~AudioProperties() = default;
    // Absent without an output, or when the sound system does not answer.
    virtual std::optional<std::uint32_t> defaultOutput() = 0;
    // Element 0 is the whole device, 1 and 2 are its left and right channel.
    virtual bool hasVolume(std::uint32_t device, std::uint32_t element) = 0;
    // From 0 to 1; more where the system amplifies.
    virtual std::optional<float> volume(std::uint32_t device, std::uint32_t element) = 0;
    // False when the device or the element does not exist.
    virtual bool setVolume(std::uint32_t device, std::uint32_t element, float volume) = 0;
    // Calls when the default output or a volume has changed, whoever changed it.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
