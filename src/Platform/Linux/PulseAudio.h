// The volume by the PulseAudio protocol, which PipeWire's server speaks as well. What the server said last is kept
// here, so that nothing ever waits for it; it tells of every change by itself.
#pragma once

#include "Ports/Audio.h"
#include "Ports/MainLoop.h"

#include <memory>
#include <string>

namespace korvane::platform {

class PulseAudio final : public AudioProperties {
public:
    // Connects when it is first asked. An empty address is that of the user's session. Needs a run loop that serves
    // GLib's default context.
    explicit PulseAudio(MainLoop &loop, std::string server = {});
    ~PulseAudio() override;

    // The number of the default sink, plus one. Absent until the server has answered.
    std::optional<std::uint32_t> defaultOutput() override;
    // Elements 1 and 2 only of an output with several channels.
    bool hasVolume(std::uint32_t device, std::uint32_t element) override;
    // An output that is muted reads as 0.
    std::optional<float> volume(std::uint32_t device, std::uint32_t element) override;
    // Keeps the balance for element 0. A volume above 0 ends the muting.
    bool setVolume(std::uint32_t device, std::uint32_t element, float volume) override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> callback) override;

private:
    class Server;

    std::unique_ptr<Server> server;
};

}  // namespace korvane::platform
