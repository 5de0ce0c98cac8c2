// The oldest encoding of titles in several scripts: segments in the character sets that escape sequences announce.
#pragma once

#include <string>
#include <string_view>

namespace korvane::platform::x11 {

// UTF-8; segments in a character set that nobody uses any more are left out.
std::string compoundTextToUtf8(std::string_view bytes);

}  // namespace korvane::platform::x11
