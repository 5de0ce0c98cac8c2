// The volume over the PulseAudio protocol, which PipeWire's server understands too. The server reports every change,
// and its last report is kept here, so that nothing waits for the server.
#pragma once

#include "Ports/Audio.h"
#include "Ports/MainLoop.h"

#include <memory>
#include <string>

namespace korvane::platform {

class PulseAudio final : public AudioProperties {
public:
    // Connects at the first request. An empty address means the server of the user's session. Needs a run loop that
    // serves GLib's default context.
    explicit PulseAudio(MainLoop &loop, std::string server = {});
    ~PulseAudio() override;

    // The number of the default sink, plus one. Absent until the server has answered.
    std::optional<std::uint32_t> defaultOutput() override;
    // Elements 1 and 2 exist only if the output has several channels.
    bool hasVolume(std::uint32_t device, std::uint32_t element) override;
    // A muted output has the volume 0.
    std::optional<float> volume(std::uint32_t device, std::uint32_t element) override;
    // For element 0 the balance is kept. A volume above 0 ends the muting.
    bool setVolume(std::uint32_t device, std::uint32_t element, float volume) override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> callback) override;

private:
    class Server;

    std::unique_ptr<Server> server;
};

}  // namespace korvane::platform
