// Turns text that strangers write into properties into text that can be shown: valid UTF-8, one line, of limited
// length.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace korvane::platform::x11 {

// More than anybody reads, but short enough to be measured and drawn quickly.
constexpr std::size_t longestText = 4096;  // characters

// Bytes that are not UTF-8 become U+FFFD. Control characters and line ends become blanks. A longer text is cut off
// between two characters.
std::string cleanText(std::string_view bytes);
// The same for the older encoding with one byte for each character.
std::string cleanLatin1(std::string_view bytes);
std::string latin1ToUtf8(std::string_view bytes);

// The two texts of WM_CLASS, instance and class. Each ends with a zero byte. A missing one is empty.
std::pair<std::string, std::string> splitClass(std::string_view bytes);

}  // namespace korvane::platform::x11
