#include "Platform/Linux/PulseAudio.h"

#include "Ports/ObserverList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>
#include <utility>

namespace korvane::platform {
namespace {

constexpr std::array<double, 5> retryDelays{1, 2, 4, 8, 16};  // seconds; later attempts need a request
constexpr std::uint32_t wholeDevice = 0;

}  // namespace

class PulseAudio::Server {
public:
    Server(MainLoop &mainLoop, std::string serverAddress)
        : loop(mainLoop), address(std::move(serverAddress)), glib(pa_glib_mainloop_new(nullptr))
    {}
    ~Server()
    {
        disconnect();
        pa_glib_mainloop_free(glib);
    }
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    struct Output {
        std::uint32_t index = 0;
        pa_cvolume volume{};
        bool muted = false;
    };

    // Returns what is known. A request connects if there is no connection.
    const std::optional<Output> &output()
    {
        if (!context && !retry)
            connect();
        return known;
    }

    bool set(std::uint32_t element, float volume)
    {
        if (!known || !isReady())
            return false;
        pa_cvolume wanted = known->volume;
        const auto value = static_cast<pa_volume_t>(std::lround(static_cast<double>(volume) * PA_VOLUME_NORM));
        if (element == wholeDevice)
            pa_cvolume_scale(&wanted, value);
        else
            wanted.values[element - 1] = value;
        sent(pa_context_set_sink_volume_by_index(context, known->index, &wanted, written, this));
        if (known->muted && volume > 0)
            sent(pa_context_set_sink_mute_by_index(context, known->index, 0, written, this));
        // The next request may come before the server's answer.
        known->volume = wanted;
        known->muted = known->muted && !(volume > 0);
        return true;
    }

    std::shared_ptr<ObserverList<>> observers = std::make_shared<ObserverList<>>();

private:
    static Server &of(void *data) { return *static_cast<Server *>(data); }
    static void drop(pa_operation *operation)
    {
        if (operation)
            pa_operation_unref(operation);
    }
    void sent(pa_operation *write)
    {
        if (write)
            ++unanswered;
        drop(write);
    }
    static void written(pa_context *, int, void *data)
    {
        Server &self = of(data);
        if (--self.unanswered == 0)
            self.read();
    }
    bool isReady() const { return context && pa_context_get_state(context) == PA_CONTEXT_READY; }

    void connect()
    {
        context = pa_context_new(pa_glib_mainloop_get_api(glib), "Korvane");
        if (!context)
            return;
        pa_context_set_state_callback(
            context, [](pa_context *, void *data) { of(data).stateChanged(); }, this);
        connecting = true;
        const int result =
            pa_context_connect(context, address.empty() ? nullptr : address.c_str(), PA_CONTEXT_NOAUTOSPAWN, nullptr);
        connecting = false;
        // Without a server the connection fails inside the call.
        if (result < 0 || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context)))
            lost();
    }

    void disconnect()
    {
        if (!context)
            return;
        pa_context_set_state_callback(context, nullptr, nullptr);
        pa_context_set_subscribe_callback(context, nullptr, nullptr);
        pa_context_disconnect(context);
        pa_context_unref(context);
        context = nullptr;
        // Requests that were sent will not be answered any more.
        unanswered = 0;
        reading = readAgain = false;
    }

    void stateChanged()
    {
        if (connecting)
            return;
        const auto state = pa_context_get_state(context);
        if (state == PA_CONTEXT_READY) {
            attempts = 0;
            pa_context_set_subscribe_callback(
                context, [](pa_context *, pa_subscription_event_type_t, std::uint32_t, void *data) { of(data).read(); },
                this);
            drop(pa_context_subscribe(
                context, static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER),
                nullptr, nullptr));
            read();
        } else if (!PA_CONTEXT_IS_GOOD(state)) {
            // Posted, because this runs inside a call of the context.
            loop.post([this, stillHere = std::weak_ptr<bool>(alive)] {
                if (!stillHere.expired() && context && !PA_CONTEXT_IS_GOOD(pa_context_get_state(context)))
                    lost();
            });
        }
    }

    void lost()
    {
        disconnect();
        learn(std::nullopt);
        const std::size_t attempt = attempts++;
        // Observers of the volume need it back. Without observers nobody tries, and with them the number of attempts is
        // limited.
        if (attempt < retryDelays.size() && observers->count() > 0)
            retry = loop.after(Seconds(retryDelays[attempt]), [this] {
                retry.reset();
                connect();
            });
    }

    // Only one read is on its way, even if the server reports many changes. During a write, the server's values may be
    // older than the written one; the last answer to a write starts a new read.
    void read()
    {
        if (unanswered > 0)
            return;
        readAgain = reading;
        if (reading)
            return;
        reading = true;
        answer.reset();
        expect(pa_context_get_server_info(
            context,
            [](pa_context *, const pa_server_info *info, void *data) {
                if (info && info->default_sink_name)
                    of(data).readSink(info->default_sink_name);
                else
                    of(data).readEnded();
            },
            this));
    }

    void readSink(const char *name)
    {
        expect(pa_context_get_sink_info_by_name(
            context, name,
            [](pa_context *, const pa_sink_info *info, int end, void *data) {
                if (info)
                    of(data).answer = Output{info->index, info->volume, info->mute != 0};
                if (end != 0)
                    of(data).readEnded();
            },
            this));
    }

    void expect(pa_operation *operation)
    {
        if (operation)
            pa_operation_unref(operation);
        else
            readEnded();
    }

    void readEnded()
    {
        reading = false;
        if (unanswered > 0)
            return;
        learn(answer);
        if (std::exchange(readAgain, false))
            read();
    }

    void learn(const std::optional<Output> &output)
    {
        const bool same = output.has_value() == known.has_value()
                          && (!output
                              || (output->index == known->index && output->muted == known->muted
                                  && pa_cvolume_equal(&output->volume, &known->volume)));
        known = output;
        if (same && told)
            return;
        told = true;
        loop.post([list = std::weak_ptr(observers)] {
            if (const auto present = list.lock())
                present->notify();
        });
    }

    MainLoop &loop;
    std::string address;
    pa_glib_mainloop *glib;
    pa_context *context = nullptr;
    bool connecting = false, told = false;
    bool reading = false, readAgain = false;
    int unanswered = 0;  // writes
    std::size_t attempts = 0;
    std::optional<Output> known, answer;
    Subscription retry;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

PulseAudio::PulseAudio(MainLoop &loop, std::string address) : server(std::make_unique<Server>(loop, std::move(address)))
{}

PulseAudio::~PulseAudio() = default;

std::optional<std::uint32_t> PulseAudio::defaultOutput()
{
    const auto &output = server->output();
    return output ? std::optional(output->index + 1) : std::nullopt;
}

bool PulseAudio::hasVolume(std::uint32_t device, std::uint32_t element)
{
    const auto &output = server->output();
    if (!output || device != output->index + 1)
        return false;
    return element == wholeDevice || (output->volume.channels > 1 && element <= 2);
}

std::optional<float> PulseAudio::volume(std::uint32_t device, std::uint32_t element)
{
    if (!hasVolume(device, element))
        return std::nullopt;
    const auto &output = server->output();
    if (output->muted)
        return 0.0F;
    const pa_volume_t value =
        element == wholeDevice ? pa_cvolume_max(&output->volume) : output->volume.values[element - 1];
    return static_cast<float>(static_cast<double>(value) / PA_VOLUME_NORM);
}

bool PulseAudio::setVolume(std::uint32_t device, std::uint32_t element, float volume)
{
    return hasVolume(device, element) && server->set(element, std::max(0.0F, volume));
}

Subscription PulseAudio::observeChanges(std::function<void()> callback)
{
    return server->observers->add(std::move(callback));
}

}  // namespace korvane::platform
