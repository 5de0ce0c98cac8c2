// One refresh of the model over a desktop in memory, by the number of windows. Ten windows to an application, as on a
// desk in use; "Alone" has one to an application. What a refresh costs beside reading its list off is the ratio to
// CopyList, measured in the same run.
#include "Models/AppModel.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>

namespace korvane {
namespace {

struct Desk {
    explicit Desk(std::int64_t windowCount, int windowsPerApplication = 10)
        : platform(desktop.platform()), model(platform)
    {
        desktop.actions.setRecording(false);
        platform::Pid pid = 1000;
        for (std::int64_t made = 0; made < windowCount; ++pid) {
            simulated::Process process;
            process.application.pid = pid;
            process.application.localizedName = "Application " + std::to_string(pid);
            process.application.bundleIdentifier = "org.example.application" + std::to_string(pid);
            std::vector<simulated::Window> windows;
            for (int i = 0; i < windowsPerApplication && made < windowCount; ++i, ++made) {
                simulated::Window window;
                window.hash = static_cast<std::uint64_t>(0x1000000 + made);
                window.title = "Document " + std::to_string(made) + " - Application " + std::to_string(pid);
                windows.push_back(std::move(window));
            }
            process.windows = std::move(windows);
            desktop.applications.put(std::move(process));
        }
        desktop.applications.setActive(1000);
        model.start();
        desktop.loop.advance(platform::Seconds(0.5));
    }

    // Gives every window a new title, without telling the model.
    void retitleAll(const std::string &prefix)
    {
        for (const RunningAppItem &item : model.runningApps()) {
            const std::uint64_t hash = std::stoull(item.id.substr(item.id.rfind(':') + 1));
            desktop.applications.setTitle(item.processIdentifier, hash, prefix + item.id);
        }
    }

    simulated::SimulatedDesktop desktop;
    platform::Platform platform;
    AppModel model;
};

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
}

void RefreshUnchanged(benchmark::State &state)
{
    Desk desk(state.range(0));
    for (auto _ : state)
        desk.model.refresh(false, true);
}
BENCHMARK(RefreshUnchanged)->Apply(sizes);

void RefreshUnchangedAlone(benchmark::State &state)
{
    Desk desk(state.range(0), 1);
    for (auto _ : state)
        desk.model.refresh(false, true);
}
BENCHMARK(RefreshUnchangedAlone)->Apply(sizes);

// On a desktop that does not tell what changed, every window is read again.
void RefreshUnchangedWithoutNotices(benchmark::State &state)
{
    Desk desk(state.range(0));
    desk.desktop.accessibility.setRevisionsSupported(false);
    for (auto _ : state)
        desk.model.refresh(false, true);
}
BENCHMARK(RefreshUnchangedWithoutNotices)->Apply(sizes);

void RefreshAfterOneRetitle(benchmark::State &state)
{
    Desk desk(state.range(0));
    const auto hash = std::uint64_t{0x1000000};
    std::int64_t count = 0;
    for (auto _ : state) {
        desk.desktop.applications.setTitle(1000, hash, "Title " + std::to_string(++count));
        desk.model.refresh();
    }
}
BENCHMARK(RefreshAfterOneRetitle)->Apply(sizes);

void RefreshFullyChanged(benchmark::State &state)
{
    Desk desk(state.range(0));
    bool odd = false;
    for (auto _ : state) {
        state.PauseTiming();
        desk.retitleAll((odd = !odd) ? "odd " : "even ");
        state.ResumeTiming();
        desk.model.refresh();
    }
}
BENCHMARK(RefreshFullyChanged)->Apply(sizes);

// The floor that the others are compared with: copying the published list once.
void CopyList(benchmark::State &state)
{
    Desk desk(state.range(0));
    for (auto _ : state) {
        auto copy = desk.model.runningApps();
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(CopyList)->Apply(sizes);

}  // namespace
}  // namespace korvane
