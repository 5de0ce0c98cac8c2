// Keys that reach this program, whichever program has the focus.
#pragma once

#include "Ports/Subscription.h"

#include <cstdint>
#include <functional>

namespace korvane::platform {

// Keys and modifiers by the numbers of the system.
struct HotKey {
    static constexpr std::uint32_t escape = 53;
    static constexpr std::uint32_t control = 4096, shift = 512;

    std::uint32_t keyCode = 0, modifiers = 0, id = 0;
};

class HotKeys {
public:
    virtual ~HotKeys() = default;
    // Installs the one handler of all hot keys. The handler gets the id of the key.
    [[nodiscard]] virtual Subscription install(std::function<void(std::uint32_t id)> handler) = 0;
    // Reports no error when another program holds the key. Destroying the subscription gives the key back.
    [[nodiscard]] virtual Subscription add(const HotKey &key) = 0;
};

}  // namespace korvane::platform
