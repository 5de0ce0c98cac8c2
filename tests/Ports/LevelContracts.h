// What every backend for the volume of the sound and for the brightness of the screen has to do.
#pragma once

#include "Ports/Audio.h"
#include "Ports/Brightness.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace korvane::platform {

// Sound outputs under test: none at first.
class AudioHarness {
public:
    virtual ~AudioHarness() = default;
    virtual AudioProperties &audio() = 0;
    // An output with a left and a right channel comes and is the default one. The port may hear of it later.
    virtual void plug(float volume) = 0;
    // Another program sets the volume of that output.
    virtual void changeElsewhere(float volume) = 0;
    virtual void unplug() = 0;
    // Lets the run loop turn until the condition holds; false when it does not in good time.
    virtual bool waitFor(const std::function<bool()> &condition) = 0;
    // Lets the run loop turn for a while, for what must not happen.
    virtual void settle() = 0;
};

using MakeAudio = std::unique_ptr<AudioHarness> (*)();

class AudioContract : public testing::TestWithParam<MakeAudio> {
protected:
    AudioProperties &audio() { return harness->audio(); }
    // What the default output's own volume is; absent without one.
    std::optional<float> now();
    bool becomes(std::optional<float> volume);

    std::unique_ptr<AudioHarness> harness = GetParam()();
};

// A screen under test, whose brightness is not to be set at first.
class BrightnessHarness {
public:
    virtual ~BrightnessHarness() = default;
    virtual Brightness &brightness() = 0;
    // From now on it is, and this is what it is set to: by whomever.
    virtual void changeElsewhere(float level) = 0;
};

using MakeBrightness = std::unique_ptr<BrightnessHarness> (*)();

class BrightnessContract : public testing::TestWithParam<MakeBrightness> {
protected:
    std::unique_ptr<BrightnessHarness> harness = GetParam()();
};

}  // namespace korvane::platform
