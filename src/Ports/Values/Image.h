// A picture in the records: immutable, shared and independent of any toolkit.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace korvane::platform {

struct Image {
    int width = 0, height = 0;         // in pixels
    std::vector<std::uint8_t> pixels;  // RGBA, premultiplied, rows from the top, no padding
};

using ImagePtr = std::shared_ptr<const Image>;

}  // namespace korvane::platform
