#include "Platform/X11/PropertyText.h"

#include <cstdint>

namespace korvane::platform::x11 {
namespace {

constexpr char32_t replacement = 0xFFFD;

void append(std::string &text, char32_t character)
{
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | character >> 12);
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | character >> 18);
        text += static_cast<char>(0x80 | (character >> 12 & 0x3F));
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

// Removes one character from the front. A wrong byte is removed together with the continuation bytes that fitted so
// far.
char32_t take(std::string_view &bytes)
{
    const auto first = static_cast<std::uint8_t>(bytes.front());
    bytes.remove_prefix(1);
    if (first < 0x80)
        return first;
    const int more = first >= 0xF0 && first < 0xF5   ? 3
                     : first >= 0xE0 && first < 0xF0 ? 2
                                                     : first >= 0xC2 && first < 0xE0;
    if (more == 0)
        return replacement;
    char32_t character = first & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        if (bytes.empty() || (static_cast<std::uint8_t>(bytes.front()) & 0xC0) != 0x80)
            return replacement;
        character = character << 6 | (static_cast<std::uint8_t>(bytes.front()) & 0x3F);
        bytes.remove_prefix(1);
    }
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return character < smallest[more] || surrogate || character > 0x10FFFF ? replacement : character;
}

bool isControl(char32_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 || character == 0x2029;
}

}  // namespace

std::string cleanText(std::string_view bytes)
{
    std::string text;
    text.reserve(std::min<std::size_t>(bytes.size(), longestText));
    for (std::size_t count = 0; count < longestText && !bytes.empty(); ++count) {
        const char32_t character = take(bytes);
        append(text, isControl(character) ? U' ' : character);
    }
    return text;
}

std::string latin1ToUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        append(text, static_cast<std::uint8_t>(byte));
    return text;
}

std::string cleanLatin1(std::string_view bytes)
{
    return cleanText(latin1ToUtf8(bytes.substr(0, longestText)));
}

std::pair<std::string, std::string> splitClass(std::string_view bytes)
{
    const auto end = bytes.find('\0');
    const auto instance = bytes.substr(0, end);
    auto name = end == std::string_view::npos ? std::string_view() : bytes.substr(end + 1);
    name = name.substr(0, name.find('\0'));
    return {cleanLatin1(instance), cleanLatin1(name)};
}

}  // namespace korvane::platform::x11
