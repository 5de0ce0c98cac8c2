// The text form of colours: a palette name, or "Custom:#" and six hexadecimal digits.
#pragma once

#include "Models/Base/Records.h"
#include "Ports/Values/Color.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {
struct Platform;
}

namespace korvane {

using platform::Rgb;

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

// The bar uses these where the setting of a strip gives no colour.
inline constexpr Rgb activeStripFallback{0.035, 0.24, 0.57};
inline constexpr Rgb lastStripFallback{0.025, 0.17, 0.4};

// Absent for no text, for "Default" and for anything that is not a colour.
std::optional<Rgb> storedTabColor(const std::optional<std::string> &text);
// "Custom:#RRGGBB", halves rounded away from zero.
std::string storedCustomColor(const Rgb &color);
// The colour that a colour well of the settings shows for the text. A palette name gives the default blue.
Rgb settingsStripColor(std::string_view text);
// The colour of a group's button: its own colour, or for an automatic group the colour of its first window.
std::optional<std::string> groupColorName(const ColorNames &liveTabColors, const RunningAppGroup &group);
// Opens the colour panel with that stored colour at the next turn, when the menu that asked for it has closed. `apply`
// gets every colour that the user tries in the panel, as a stored colour, until the panel is opened for another caller.
void pickColor(platform::Platform &platform, const std::optional<std::string> &initialStored,
               std::function<void(const std::string &)> apply);

}  // namespace TabColors
}  // namespace korvane
