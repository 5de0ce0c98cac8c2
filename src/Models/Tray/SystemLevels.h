// The two levels that the bar sets: how bright the screen is, how loud the sound. No state of its own.
#pragma once

#include "Ports/Audio.h"
#include "Ports/Brightness.h"

#include <optional>

namespace korvane {

namespace SystemVolume {
// Of the default output: its own volume, or that of its first channel that has one. Absent without any.
std::optional<float> current(platform::AudioProperties &audio);
// Held to 0 to 1. A device without a volume of its own gets it on both channels; without an output nothing happens.
void set(platform::AudioProperties &audio, float volume);
}  // namespace SystemVolume

namespace SystemBrightness {
std::optional<float> current(platform::Brightness &brightness);
// Held to 0 to 1. False when it could not be set.
bool set(platform::Brightness &brightness, float level);
}  // namespace SystemBrightness

}  // namespace korvane
