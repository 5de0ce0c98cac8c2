// A colour as ports and records carry it.
#pragma once

namespace korvane::platform {

// Red, green and blue from 0 to 1, in sRGB.
struct Rgb {
    double red = 0, green = 0, blue = 0;
    friend bool operator==(const Rgb &, const Rgb &) = default;
};

}  // namespace korvane::platform
