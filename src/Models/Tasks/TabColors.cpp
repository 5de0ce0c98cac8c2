#include "Models/Tasks/TabColors.h"

#include "Ports/Platform.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace korvane::TabColors {
namespace {

constexpr std::string_view customPrefix = "Custom:#";

std::optional<Rgb> parseHexadecimal(std::string_view digits)
{
    unsigned value = 0;
    const bool allDigits = std::all_of(digits.begin(), digits.end(), [](char digit) {
        return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f') || (digit >= 'A' && digit <= 'F');
    });
    if (digits.size() != 6 || !allDigits)
        return std::nullopt;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return Rgb{((value >> 16) & 0xFF) / 255.0, ((value >> 8) & 0xFF) / 255.0, (value & 0xFF) / 255.0};
}

int byteOf(double component)
{
    return static_cast<int>(std::clamp(std::round(component * 255.0), 0.0, 255.0));
}

}  // namespace

std::optional<Rgb> storedTabColor(const std::optional<std::string> &text)
{
    if (!text)
        return std::nullopt;
    const auto *const named =
        std::find_if(palette.begin(), palette.end(), [&](const PaletteColor &color) { return color.text == *text; });
    if (named != palette.end())
        return named->color;
    if (!text->starts_with(customPrefix))
        return std::nullopt;
    return parseHexadecimal(std::string_view(*text).substr(customPrefix.size()));
}

std::string storedCustomColor(const Rgb &color)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "Custom:#%02X%02X%02X", byteOf(color.red), byteOf(color.green),
                  byteOf(color.blue));
    return text.data();
}

Rgb settingsStripColor(std::string_view text)
{
    const auto digits = text.starts_with(customPrefix) ? text.substr(customPrefix.size()) : std::string_view("093D91");
    return parseHexadecimal(digits).value_or(activeStripFallback);
}

std::optional<std::string> groupColorName(const ColorNames &liveTabColors, const RunningAppGroup &group)
{
    if (const auto own = liveTabColors.find(group.id); own != liveTabColors.end())
        return own->second;
    if (group.isCustom || group.windows.empty())
        return std::nullopt;
    const auto first = liveTabColors.find(group.windows.front().id);
    return first == liveTabColors.end() ? std::nullopt : std::optional(first->second);
}

void pickColor(platform::Platform &platform, const std::optional<std::string> &initialStored,
               std::function<void(const std::string &)> apply)
{
    platform.loop.post(
        [&dialogs = platform.dialogs, initial = storedTabColor(initialStored), apply = std::move(apply)] {
            dialogs.openColorPanel(initial, [apply](const Rgb &color) { apply(storedCustomColor(color)); });
        });
}

}  // namespace korvane::TabColors
