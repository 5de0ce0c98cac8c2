// One refresh of the model over a desktop in memory, by the number of windows. Ten windows to an application, as on a
// desk in use; "Alone" has one to an application. What a refresh costs beside reading its list off is the ratio to
// CopyList, measured in the same run.
#include "Models/AppModel/AppModel.h"
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
            platform::simulated::Process process;
            process.application.pid = pid;
            process.application.localizedName = "Application " + std::to_string(pid);
            process.application.bundleIdentifier = "org.example.application" + std::to_string(pid);
            std::vector<platform::simulated::Window> windows;
            for (int i = 0; i < windowsPerApplication && made < windowCount; ++i, ++made) {
                platform::simulated::Window window;
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

    platform::simulated::SimulatedDesktop desktop;
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

// What the rows show, ungrouped and grouped by application.
void Entries(benchmark::State &state)
{
    Desk desk(state.range(0));
    for (auto _ : state) {
        auto entries = desk.model.taskbarEntries(state.range(1) != 0);
        benchmark::DoNotOptimize(entries.data());
    }
}
BENCHMARK(Entries)
    ->ArgNames({"windows", "grouped"})
    ->ArgsProduct({{10, 100, 1000, 10000}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

// Under an order in which every window has a place, all of them far from where they were found.
void SortUnderAStoredOrder(benchmark::State &state)
{
    Desk desk(state.range(0));
    const auto &items = desk.model.runningApps();
    std::vector<std::string> order;
    for (std::size_t i = 0; i < items.size(); ++i)
        order.push_back(items[i * 7919 % items.size()].id);
    for (auto _ : state) {
        std::vector<const RunningAppItem *> sorted;
        for (const RunningAppItem &item : items)
            sorted.push_back(&item);
        TaskOrder::sort(sorted, OrderIndex(order), [](const RunningAppItem &) { return std::size_t{0}; });
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(SortUnderAStoredOrder)->Apply(sizes);

// Each thing that a user can do to the order, with all that follows from it, at a thousand windows.
constexpr std::int64_t userDesk = 1000;

void UserSendsATaskToTheEnd(benchmark::State &state)
{
    Desk desk(userDesk);
    for (auto _ : state)
        desk.model.setTaskPosition(desk.model.runningApps()[500].id, false);
}
BENCHMARK(UserSendsATaskToTheEnd)->Unit(benchmark::kMicrosecond);

void UserDropsATaskOnARow(benchmark::State &state)
{
    Desk desk(userDesk);
    for (auto _ : state)
        desk.model.dropTaskOnRow(desk.model.runningApps()[900].id, desk.model.runningApps()[100].id, true);
}
BENCHMARK(UserDropsATaskOnARow)->Unit(benchmark::kMicrosecond);

void UserDropsAGroupOnARow(benchmark::State &state)
{
    Desk desk(userDesk);
    std::size_t target = 0;
    for (auto _ : state) {
        target = target == 0 ? 900 : 0;
        desk.model.dropTaskOnRow("group::auto:1050", desk.model.runningApps()[target].id, true);
    }
}
BENCHMARK(UserDropsAGroupOnARow)->Unit(benchmark::kMicrosecond);

void UserDropsATaskAtARowsEnd(benchmark::State &state)
{
    Desk desk(userDesk);
    for (auto _ : state)
        desk.model.dropTaskAtOverflowRowEnd(desk.model.runningApps()[900].id, desk.model.runningApps()[100].id);
}
BENCHMARK(UserDropsATaskAtARowsEnd)->Unit(benchmark::kMicrosecond);

void UserMakesAGroupOfTwoTasks(benchmark::State &state)
{
    Desk desk(userDesk);
    for (auto _ : state)
        desk.model.groupTask(desk.model.runningApps()[900].id, desk.model.runningApps()[100].id);
}
BENCHMARK(UserMakesAGroupOfTwoTasks)->Unit(benchmark::kMicrosecond);

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
