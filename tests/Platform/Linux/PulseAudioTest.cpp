// Against a real server with sinks that lead nowhere.
#include "Platform/Linux/PulseAudio.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Ports/LevelContracts.h"
#include "tests/support/GlibLoop.h"
#include "tests/support/Process.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

using testing::GlibLoop;
using testing::Process;

// A server of the test's own, asked and commanded through its own tool.
class SoundServer {
public:
    explicit SoundServer(GlibLoop &mainLoop) : loop(mainLoop), socket(directory.path() / "pulse.sock") {}

    bool start(const std::vector<std::string> &sinks)
    {
        const std::string path = directory.path().string();
        std::vector<std::string> command{"pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n",
                                         "--disable-shm=yes"};
        for (const std::string &sink : sinks) {
            command.emplace_back("-L");
            command.push_back("module-null-sink channels=2 sink_name=" + sink);
        }
        command.emplace_back("-L");
        command.push_back("module-native-protocol-unix auth-anonymous=1 socket=" + socket.string());
        process.emplace(command,
                        Process::Options{{{"HOME", path}, {"XDG_RUNTIME_DIR", path}, {"XDG_CONFIG_HOME", path}}});
        return loop.turnUntil([&] { return pactl("info").find("Server Name") != std::string::npos; });
    }
    void end() { process->end(); }
    std::string pactl(const std::string &command) const
    {
        const std::string line =
            "PULSE_SERVER=" + address() + " HOME=" + directory.path().string() + " pactl " + command + " 2>&1";
        std::string output;
        FILE *pipe = popen(line.c_str(), "r");
        std::array<char, 4096> part{};
        while (pipe && fgets(part.data(), part.size(), pipe))
            output += part.data();
        if (pipe)
            pclose(pipe);
        return output;
    }
    std::string address() const { return "unix:" + socket.string(); }

private:
    GlibLoop &loop;
    TemporaryDirectory directory;
    std::filesystem::path socket;
    std::optional<Process> process;
};

std::string percent(float volume)
{
    return std::to_string(std::lround(volume * 100)) + "%";
}

class PulseAudioHarness final : public AudioHarness {
public:
    PulseAudioHarness() : server(loop), backend(loop, server.address())
    {
        EXPECT_TRUE(server.start({}));
        backend.defaultOutput();
        settle();
    }
    AudioProperties &audio() override { return backend; }
    void plug(float volume) override
    {
        server.pactl("load-module module-null-sink channels=2 sink_name=plugged");
        changeElsewhere(volume);
    }
    void changeElsewhere(float volume) override { server.pactl("set-sink-volume plugged " + percent(volume)); }
    void unplug() override { server.pactl("unload-module module-null-sink"); }
    bool waitFor(const std::function<bool()> &condition) override { return loop.turnUntil(condition); }
    void settle() override { loop.turnFor(Seconds(0.1)); }

private:
    GlibLoop loop;
    SoundServer server;
    PulseAudio backend;
};

INSTANTIATE_TEST_SUITE_P(PulseAudio, AudioContract, ::testing::Values([]() -> std::unique_ptr<AudioHarness> {
                             return std::make_unique<PulseAudioHarness>();
                         }));

class Pulse : public ::testing::Test {
protected:
    void startServer() { ASSERT_TRUE(server.start({"first", "second"})); }
    std::string pactl(const std::string &command) const { return server.pactl(command); }
    void open() { audio = std::make_unique<PulseAudio>(loop, server.address()); }
    bool becomes(std::optional<float> volume)
    {
        return loop.turnUntil([&] {
            const auto output = audio->defaultOutput();
            const auto now = output ? audio->volume(*output, 0) : std::nullopt;
            return now.has_value() == volume.has_value() && (!now || std::abs(*now - *volume) < 0.005F);
        });
    }
    bool serverSays(const std::string &command, const std::string &part)
    {
        return loop.turnUntil([&] { return pactl(command).find(part) != std::string::npos; });
    }

    GlibLoop loop;
    SoundServer server{loop};
    std::unique_ptr<PulseAudio> audio;
};

TEST_F(Pulse, TheVolumeOfTheDefaultSinkIsReadAndSet)
{
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 40%");
    open();
    ASSERT_TRUE(becomes(0.4F));
    const auto output = audio->defaultOutput().value();
    EXPECT_TRUE(audio->hasVolume(output, 0));
    EXPECT_TRUE(audio->hasVolume(output, 2));
    EXPECT_FALSE(audio->hasVolume(output, 3));
    EXPECT_FALSE(audio->hasVolume(output + 100, 0));
    EXPECT_TRUE(audio->setVolume(output, 0, 0.75F));
    EXPECT_FLOAT_EQ(audio->volume(output, 0).value(), 0.75F);
    EXPECT_TRUE(serverSays("get-sink-volume first", "75%"));
}

TEST_F(Pulse, AChangeFromOutsideIsTold)
{
    startServer();
    open();
    int told = 0;
    const auto observer = audio->observeChanges([&] { ++told; });
    pactl("set-default-sink first");
    pactl("set-sink-volume first 50%");
    ASSERT_TRUE(becomes(0.5F));
    const int before = told;
    pactl("set-sink-volume first 20%");
    EXPECT_TRUE(becomes(0.2F));
    EXPECT_TRUE(loop.turnUntil([&] { return told > before; }));
    pactl("set-default-sink second");
    pactl("set-sink-volume second 90%");
    EXPECT_TRUE(becomes(0.9F));
}

TEST_F(Pulse, AMutedSinkReadsAsSilentAndIsHeardAgainWhenItIsSet)
{
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 60%");
    pactl("set-sink-mute first 1");
    open();
    ASSERT_TRUE(becomes(0.0F));
    EXPECT_TRUE(audio->setVolume(audio->defaultOutput().value(), 0, 0.3F));
    EXPECT_TRUE(serverSays("get-sink-mute first", "Mute: no"));
    EXPECT_TRUE(serverSays("get-sink-volume first", "30%"));
}

TEST_F(Pulse, AChannelIsSetByItselfAndTheWholeKeepsTheBalance)
{
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 50%");
    open();
    ASSERT_TRUE(becomes(0.5F));
    const auto output = audio->defaultOutput().value();
    EXPECT_TRUE(audio->setVolume(output, 2, 1.0F));
    EXPECT_FLOAT_EQ(audio->volume(output, 1).value(), 0.5F);
    EXPECT_FLOAT_EQ(audio->volume(output, 0).value(), 1.0F);
    EXPECT_TRUE(audio->setVolume(output, 0, 0.5F));
    EXPECT_NEAR(audio->volume(output, 1).value(), 0.25F, 0.01F);
}

TEST_F(Pulse, WithoutAServerThereIsNoOutputAndNothingKnocksForEver)
{
    open();
    EXPECT_FALSE(audio->defaultOutput());
    EXPECT_FALSE(audio->setVolume(1, 0, 0.5F));
    loop.turnFor(Seconds(0.2));
    EXPECT_EQ(loop.turnsWithin(Seconds(1)), 0);
}

TEST_F(Pulse, AServerThatEndsIsMissedAndItsSuccessorFound)
{
    startServer();
    open();
    const auto observer = audio->observeChanges([] {});
    ASSERT_TRUE(loop.turnUntil([&] { return audio->defaultOutput().has_value(); }));
    server.end();
    ASSERT_TRUE(becomes(std::nullopt));
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 35%");
    EXPECT_TRUE(becomes(0.35F));
}

// The server's news of one step may arrive after the next one was taken.
TEST_F(Pulse, StepsTakenFasterThanTheServerAnswersAreAllCounted)
{
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 0%");
    open();
    ASSERT_TRUE(becomes(0.0F));
    const auto observer = audio->observeChanges([] {});
    const auto output = audio->defaultOutput().value();
    float expected = 0;
    for (int step = 1; step <= 200; ++step) {
        expected += 0.005F;
        ASSERT_TRUE(audio->setVolume(output, 0, audio->volume(output, 0).value() + 0.005F));
        // Anything from no turn of the loop to more than the server needs.
        loop.turnFor(Seconds(0.0001 * (step % 17)));
        ASSERT_NEAR(audio->volume(output, 0).value(), expected, 0.003F) << "after step " << step;
    }
    EXPECT_TRUE(serverSays("get-sink-volume first", "100%"));
}

TEST_F(Pulse, ARefusedVolumeIsCorrected)
{
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 40%");
    open();
    ASSERT_TRUE(becomes(0.4F));
    pactl("unload-module module-null-sink");
    // The news of that are still on their way.
    audio->setVolume(audio->defaultOutput().value(), 0, 0.9F);
    EXPECT_TRUE(becomes(std::nullopt));
}

}  // namespace
}  // namespace korvane::platform
