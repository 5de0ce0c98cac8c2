// Against a real server with sinks that lead nowhere.
#include "Platform/Linux/PulseAudio.h"

#include "TemporaryDirectory.h"
#include "support/GlibLoop.h"
#include "support/Process.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

using testing::GlibLoop;
using testing::Process;

class Pulse : public ::testing::Test {
protected:
    Pulse() : socket(directory.path() / "pulse.sock") {}

    void startServer()
    {
        const std::string path = directory.path().string();
        server.emplace(
            std::vector<std::string>{"pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n", "--disable-shm=yes",
                                     "-L", "module-null-sink sink_name=first channels=2", "-L",
                                     "module-null-sink sink_name=second channels=2", "-L",
                                     "module-native-protocol-unix auth-anonymous=1 socket=" + socket.string()},
            Process::Options{{{"HOME", path}, {"XDG_RUNTIME_DIR", path}, {"XDG_CONFIG_HOME", path}}});
        ASSERT_TRUE(loop.turnUntil([&] { return pactl("info").find("Server Name") != std::string::npos; }));
    }
    std::string pactl(const std::string &command) const
    {
        const std::string line = "PULSE_SERVER=unix:" + socket.string() + " HOME=" + directory.path().string()
                                 + " pactl " + command + " 2>&1";
        std::string output;
        FILE *pipe = popen(line.c_str(), "r");
        std::array<char, 4096> part{};
        while (pipe && fgets(part.data(), part.size(), pipe))
            output += part.data();
        if (pipe)
            pclose(pipe);
        return output;
    }
    void open() { audio = std::make_unique<PulseAudio>(loop, "unix:" + socket.string()); }
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

    TemporaryDirectory directory;
    std::filesystem::path socket;
    GlibLoop loop;
    std::optional<Process> server;
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
    server->end();
    ASSERT_TRUE(becomes(std::nullopt));
    startServer();
    pactl("set-default-sink first");
    pactl("set-sink-volume first 35%");
    EXPECT_TRUE(becomes(0.35F));
}

}  // namespace
}  // namespace korvane::platform
