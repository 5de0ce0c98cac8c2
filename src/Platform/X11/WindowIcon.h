// The pictures that a window carries in _NET_WM_ICON: width, height and pixels, one picture after the other.
#pragma once

#include "Ports/Values/Image.h"

#include <cstdint>
#include <span>

namespace korvane::platform::x11 {

// The smallest picture of at least 64 pixels, else the largest, made smaller when it is more than twice too large. Null
// when there is none; what follows a picture that can't be right is not looked at.
ImagePtr windowIcon(std::span<const std::uint32_t> data);

}  // namespace korvane::platform::x11
