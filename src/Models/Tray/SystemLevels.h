// The two levels that the bar sets: the brightness of the screen and the volume of the sound. These functions hold no
// state.
#pragma once

#include "Ports/Audio.h"
#include "Ports/Brightness.h"

#include <optional>

namespace korvane {

namespace SystemVolume {
// The volume of the default output, or of its first channel that has a volume. Absent when there is none.
std::optional<float> current(platform::AudioProperties &audio);
// Clamps the volume to 0 to 1. If the device has no volume of its own, both channels are set. Does nothing without an
// output.
void set(platform::AudioProperties &audio, float volume);
}  // namespace SystemVolume

namespace SystemBrightness {
std::optional<float> current(platform::Brightness &brightness);
// Clamps the level to 0 to 1. False when it could not be set.
bool set(platform::Brightness &brightness, float level);
}  // namespace SystemBrightness

}  // namespace korvane
