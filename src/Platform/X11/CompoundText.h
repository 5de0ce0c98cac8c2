// The oldest encoding of titles in several scripts: segments of text. Escape sequences announce their character sets.
#pragma once

#include <string>
#include <string_view>

namespace korvane::platform::x11 {

// Returns UTF-8. Segments in a character set that nobody uses any more are left out.
std::string compoundTextToUtf8(std::string_view bytes);

}  // namespace korvane::platform::x11
