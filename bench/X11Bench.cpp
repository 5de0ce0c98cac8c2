// What the mirror of the windows costs, on a real X server: from a program's change to whoever observes it, the
// processor's part of it, and filling the mirror.
#include "Platform/X11/Connection.h"
#include "Platform/X11/PropertyMirror.h"
#include "Platform/X11/X11Platform.h"
#include "tests/support/GlibLoop.h"
#include "tests/support/SampleClient.h"

#include <benchmark/benchmark.h>
#include <ctime>
#include <xcb/xcb.h>

namespace korvane::platform {
namespace {

class NoCatalogue final : public ApplicationCatalogue {
public:
    std::optional<ApplicationIdentity> match(const WindowOrigin &) override { return std::nullopt; }
    unsigned revision() const override { return 0; }
    Subscription observe(std::function<void()>) override { return nullptr; }
};

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// A window manager, a program with that many windows, and a second connection that retitles the first of them.
class Desktop {
public:
    explicit Desktop(int windows) : changer(xcb_connect(server.display().c_str(), nullptr))
    {
        const std::string name = "_NET_WM_NAME";
        auto *reply = xcb_intern_atom_reply(
            changer, xcb_intern_atom(changer, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr);
        title = reply ? reply->atom : 0U;
        std::free(reply);
        platform = X11Platform::open({server.display(), 1, nullptr}, loop, catalogue, {});
        server.startManager({"openbox", "--sm-disable"});
        loop.turnUntil([&] { return platform->accessibility().trusted(); });
        loop.turnFor(Seconds(1));
        client = std::make_unique<testing::SampleClient>(server, "Sample");
        window = client->open(0, "first");
        client->openMany(1, windows - 1);
        loop.turnUntil([&] { return count() == static_cast<std::size_t>(windows); }, Seconds(60));
        loop.turnFor(Seconds(0.5));
        subscription = platform->applications().observe(ApplicationEvent::activated, [this] { ++notices; });
    }
    ~Desktop() { xcb_disconnect(changer); }

    std::size_t count()
    {
        Value value;
        auto &accessibility = platform->accessibility();
        if (accessibility.copy(accessibility.application(client->pid()), "AXWindows", value) != AxStatus::success)
            return 0;
        return std::get<std::vector<Element>>(value).size();
    }
    void retitle(const std::string &text)
    {
        xcb_change_property(changer, XCB_PROP_MODE_REPLACE, window, title, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
        xcb_flush(changer);
    }

    testing::XServer server;
    testing::GlibLoop loop;
    NoCatalogue catalogue;
    std::unique_ptr<X11Platform> platform;
    std::unique_ptr<testing::SampleClient> client;
    xcb_connection_t *changer;
    xcb_atom_t title = 0;
    std::uint32_t window = 0;
    Subscription subscription;
    int notices = 0;
};

// Each change comes after a quiet moment, which takes longer than what is measured: the number of rounds is fixed.
void retitleToNotice(benchmark::State &state)
{
    Desktop desktop(static_cast<int>(state.range(0)));
    int number = 0;
    double processor = 0;
    for (auto _ : state) {
        state.PauseTiming();
        desktop.loop.turnFor(Seconds(0.03));
        desktop.notices = 0;
        const double before = processorSeconds();
        state.ResumeTiming();
        desktop.retitle("title " + std::to_string(++number));
        desktop.loop.turnUntil([&] { return desktop.notices > 0; });
        state.PauseTiming();
        processor += processorSeconds() - before;
        state.ResumeTiming();
    }
    state.counters["cpu_us"] = benchmark::Counter(processor * 1e6, benchmark::Counter::kAvgIterations);
}
BENCHMARK(retitleToNotice)->Arg(10)->Arg(100)->Iterations(100)->Unit(benchmark::kMicrosecond)->UseRealTime();

void fillWithoutManager(benchmark::State &state)
{
    testing::XServer server;
    testing::SampleClient client(server, "Sample");
    client.openMany(0, static_cast<int>(state.range(0)));
    testing::GlibLoop loop;
    for (auto _ : state) {
        const auto connection = x11::Connection::open(server.display(), loop);
        x11::PropertyMirror mirror(*connection, loop);
        mirror.fill();
        if (mirror.order().size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("not all windows were listed");
    }
}
BENCHMARK(fillWithoutManager)->Arg(100)->Arg(500)->Arg(2000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace korvane::platform
