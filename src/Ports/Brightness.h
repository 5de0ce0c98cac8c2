// The brightness of the main screen.
#pragma once

#include <optional>

namespace korvane::platform {

class Brightness {
public:
    virtual ~Brightness() = default;
    // From 0 to 1. Absent where the system can't set the screen's brightness.
    virtual std::optional<float> current() = 0;
    // From 0 to 1. False when nothing could be set.
    virtual bool set(float brightness) = 0;
};

}  // namespace korvane::platform
