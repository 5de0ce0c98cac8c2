// The text form of colours: a palette name, or "Custom:#" and six hexadecimal digits.
#pragma once

#include "Models/Records.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace korvane {

// Red, green and blue from 0 to 1, in sRGB.
struct Rgb {
    double red = 0, green = 0, blue = 0;
    friend bool operator==(const Rgb &, const Rgb &) = default;
};

using ColorNames = std::map<std::string, std::string>;  // task or group id, or bundle identifier, to colour text

namespace TabColors {

// The palette in the order of every colour menu; the text of a colour is also its stored form.
struct PaletteColor {
    std::string_view text;
    std::optional<Rgb> color;  // absent for "Default"
};
inline constexpr std::array<PaletteColor, 8> palette{{
    {"Default", std::nullopt},
    {"Red", Rgb{1.000, 0.231, 0.188}},
    {"Orange", Rgb{1.000, 0.584, 0.000}},
    {"Yellow", Rgb{1.000, 0.800, 0.000}},
    {"Green", Rgb{0.157, 0.804, 0.255}},
    {"Blue", Rgb{0.000, 0.478, 1.000}},
    {"Purple", Rgb{0.686, 0.322, 0.871}},
    {"Gray", Rgb{0.557, 0.557, 0.576}},
}};

// What the bar falls back on where the setting of a strip gives no colour.
inline constexpr Rgb activeStripFallback{0.035, 0.24, 0.57};
inline constexpr Rgb lastStripFallback{0.025, 0.17, 0.4};

// Absent for no text, for "Default" and for anything that is not a colour.
std::optional<Rgb> storedTabColor(const std::optional<std::string> &text);
// "Custom:#RRGGBB", halves rounded away from zero.
std::string storedCustomColor(const Rgb &color);
// What a colour well of the settings shows for the text; a palette name shows as the default blue.
Rgb settingsStripColor(std::string_view text);
// What a group's button wears: its own colour, or for an automatic group that of its first window.
std::optional<std::string> groupColorName(const ColorNames &liveTabColors, const RunningAppGroup &group);

}  // namespace TabColors
}  // namespace korvane
