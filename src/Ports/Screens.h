// The screens and where they stand.
#pragma once

#include "Ports/Subscription.h"
#include "Ports/Values/Geometry.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace korvane::platform {

struct Screen {
    std::optional<std::uint32_t> number;
    Rect frame;
    double scale = 1;  // device pixels per point
    friend bool operator==(const Screen &, const Screen &) = default;
};

class Screens {
public:
    virtual ~Screens() = default;
    // The first screen contains the desktop's origin. Empty when there is no screen.
    virtual std::vector<Screen> all() = 0;
    // Index into all() of the screen with the keyboard focus; absent without screens.
    virtual std::optional<std::size_t> main() = 0;
    // In display coordinates, whose origin is top left. An empty rectangle for an unknown number.
    virtual Rect displayBounds(std::uint32_t number) = 0;
    // Calls when screens were added, removed or changed.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
