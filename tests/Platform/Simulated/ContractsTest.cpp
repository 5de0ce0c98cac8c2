// The simulated desktop keeps the promises that every backend keeps.
#include "tests/Ports/DefaultsContract.h"
#include "tests/Ports/IconsContract.h"
#include "tests/Ports/LaunchingContract.h"
#include "tests/Ports/LevelContracts.h"
#include "tests/Ports/LoginItemContract.h"
#include "tests/Ports/MainLoopContract.h"

#include "Platform/Simulated/MemoryDefaults.h"
#include "Platform/Simulated/SimulatedDesktop.h"

namespace korvane::platform {
namespace {

class VirtualHarness final : public MainLoopHarness {
public:
    MainLoop &loop() override { return virtualLoop; }
    bool runUntil(const std::function<bool()> &condition, Seconds limit) override
    {
        return virtualLoop.runUntil(condition, limit);
    }
    void runFor(Seconds duration) override { virtualLoop.advance(duration); }
    void spend(Seconds) override {}
    bool hasThreads() const override { return false; }

private:
    platform::simulated::VirtualLoop virtualLoop;
};

class MemoryHarness final : public DefaultsHarness {
public:
    Defaults &defaults() override { return memory; }
    void reopen() override { memory.synchronize(); }

private:
    platform::simulated::MemoryDefaults memory;
};

class VirtualLaunchingHarness final : public LaunchingHarness {
public:
    explicit VirtualLaunchingHarness(platform::simulated::Behaviour behaviour) : desktop(behaviour)
    {
        desktop.launching.install(identifier(), path);
    }
    Launching &launching() override { return desktop.launching; }
    std::string identifier() override { return "com.example.editor"; }
    int starts() override { return desktop.launching.openCount(path); }
    int openedAddresses() override { return desktop.launching.openedUrlCount(); }
    bool waitFor(const std::function<bool()> &condition) override
    {
        return desktop.loop.runUntil(condition, Seconds(1));
    }

private:
    static constexpr const char *path = "/Applications/Editor.app";
    platform::simulated::SimulatedDesktop desktop;
};

class SimulatedLoginItemHarness final : public LoginItemHarness {
public:
    LoginItem &item() override { return loginItem; }
    void refuse() override { loginItem.setError("refused"); }

private:
    platform::simulated::SimulatedLoginItem loginItem;
};

class SimulatedAudioHarness final : public AudioHarness {
public:
    AudioProperties &audio() override { return backend; }
    void plug(float volume) override
    {
        backend.output = number;
        changeElsewhere(volume);
    }
    void changeElsewhere(float volume) override
    {
        for (const std::uint32_t element : {0U, 1U, 2U})
            backend.volumes[{number, element}] = volume;
        backend.announceChange();
    }
    void unplug() override
    {
        backend.output.reset();
        backend.volumes.clear();
        backend.announceChange();
    }
    bool waitFor(const std::function<bool()> &condition) override { return loop.runUntil(condition, Seconds(1)); }
    void settle() override { loop.advance(Seconds(1)); }

private:
    static constexpr std::uint32_t number = 7;
    platform::simulated::VirtualLoop loop;
    platform::simulated::SimulatedAudio backend{loop};
};

class SimulatedBrightnessHarness final : public BrightnessHarness {
public:
    Brightness &brightness() override { return backend; }
    void changeElsewhere(float level) override { backend.level = level; }

private:
    platform::simulated::SimulatedBrightness backend;
};

template <platform::simulated::Behaviour behaviour> std::unique_ptr<LaunchingHarness> makeLaunching()
{
    return std::make_unique<VirtualLaunchingHarness>(behaviour);
}

INSTANTIATE_TEST_SUITE_P(Simulated, LaunchingContract,
                         testing::Values(&makeLaunching<platform::simulated::Behaviour::passive>,
                                         &makeLaunching<platform::simulated::Behaviour::live>));
INSTANTIATE_TEST_SUITE_P(Simulated, LoginItemContract, testing::Values([]() -> std::unique_ptr<LoginItemHarness> {
                             return std::make_unique<SimulatedLoginItemHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Simulated, AudioContract, testing::Values([]() -> std::unique_ptr<AudioHarness> {
                             return std::make_unique<SimulatedAudioHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Simulated, BrightnessContract, testing::Values([]() -> std::unique_ptr<BrightnessHarness> {
                             return std::make_unique<SimulatedBrightnessHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Simulated, MainLoopContract, testing::Values([]() -> std::unique_ptr<MainLoopHarness> {
                             return std::make_unique<VirtualHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Simulated, DefaultsContract, testing::Values([]() -> std::unique_ptr<DefaultsHarness> {
                             return std::make_unique<MemoryHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Simulated, IconsContract, testing::Values([]() -> std::unique_ptr<Icons> {
                             return std::make_unique<platform::simulated::SimulatedIcons>();
                         }));

}  // namespace
}  // namespace korvane::platform
