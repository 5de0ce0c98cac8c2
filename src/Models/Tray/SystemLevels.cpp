#include "Models/Tray/SystemLevels.h"

#include <algorithm>

namespace korvane {
namespace {

constexpr std::uint32_t mainElement = 0, leftElement = 1, rightElement = 2;

}  // namespace

std::optional<float> SystemVolume::current(platform::AudioProperties &audio)
{
    const auto device = audio.defaultOutput();
    if (!device)
        return std::nullopt;
    for (const auto element : {mainElement, leftElement, rightElement})
        if (audio.hasVolume(*device, element))
            if (const auto volume = audio.volume(*device, element))
                return volume;
    return std::nullopt;
}

void SystemVolume::set(platform::AudioProperties &audio, float volume)
{
    const auto device = audio.defaultOutput();
    if (!device)
        return;
    const float held = std::clamp(volume, 0.0F, 1.0F);
    if (audio.hasVolume(*device, mainElement) && audio.setVolume(*device, mainElement, held))
        return;
    for (const auto element : {leftElement, rightElement})
        if (audio.hasVolume(*device, element))
            audio.setVolume(*device, element, held);
}

std::optional<float> SystemBrightness::current(platform::Brightness &brightness)
{
    return brightness.current();
}

bool SystemBrightness::set(platform::Brightness &brightness, float level)
{
    return brightness.set(std::clamp(level, 0.0F, 1.0F));
}

}  // namespace korvane
