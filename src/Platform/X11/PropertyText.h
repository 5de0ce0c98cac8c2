// Text as strangers write it into properties, made into text that can be shown: valid UTF-8, one line, of bounded
// length.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace korvane::platform::x11 {

// More than anyone reads, and little enough to be measured and drawn.
constexpr std::size_t longestText = 4096;  // characters

// What is not UTF-8 becomes U+FFFD, control characters and line ends become blanks, the rest after the longest length
// is cut off at a character.
std::string cleanText(std::string_view bytes);
// The same for the older encoding of one byte a character.
std::string cleanLatin1(std::string_view bytes);
std::string latin1ToUtf8(std::string_view bytes);

// The two texts of WM_CLASS, each ended by a zero: instance and class. A missing one is empty.
std::pair<std::string, std::string> splitClass(std::string_view bytes);

}  // namespace korvane::platform::x11
