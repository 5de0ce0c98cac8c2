// The pictures that a window carries in _NET_WM_ICON: width, height and pixels, one picture after the other.
#pragma once

#include "Ports/Values/Image.h"

#include <cstdint>
#include <span>

namespace korvane::platform::x11 {

// The smallest picture of at least 64 pixels, otherwise the largest. A picture that is more than twice too large is
// made smaller. Null when there is none. Reading stops at a picture that is invalid.
ImagePtr windowIcon(std::span<const std::uint32_t> data);

}  // namespace korvane::platform::x11
