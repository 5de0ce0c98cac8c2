// The layout engine and a whole layout pass, by the number of tasks.
#include "Models/Bar/TaskbarPass.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

namespace korvane {
namespace {

std::vector<double> widthsOf(std::int64_t count)
{
    std::vector<double> widths;
    for (std::int64_t i = 0; i < count; ++i)
        widths.push_back(64 + static_cast<double>(i * 37 % 157));
    return widths;
}

void MakeLayout(benchmark::State &state)
{
    const auto widths = widthsOf(state.range(0));
    for (auto _ : state) {
        auto layout = TaskLayoutEngine::makeLayout(1920, 127, 124, widths, nullptr);
        benchmark::DoNotOptimize(layout.overflowRows.data());
    }
}
BENCHMARK(MakeLayout)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);

void WholePass(benchmark::State &state)
{
    std::vector<RunningAppItem> items;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        RunningAppItem item;
        item.id = "ax:" + std::to_string(1000 + i / 10) + ":hash:" + std::to_string(i);
        item.processIdentifier = static_cast<Pid>(1000 + i / 10);
        item.name = "Document " + std::to_string(i);
        item.appName = "Application";
        items.push_back(std::move(item));
    }
    SettingsValues settings;
    settings.groupingMode = GroupingMode::never;
    const TaskbarPassInput input{items, std::nullopt, settings, 0, 1920, false, {}, false, {}};
    for (auto _ : state) {
        auto layout =
            TaskbarPass::run(input, [](std::string_view text) { return 7.0 * static_cast<double>(text.size()); });
        benchmark::DoNotOptimize(layout.entries.data());
    }
}
BENCHMARK(WholePass)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvane
