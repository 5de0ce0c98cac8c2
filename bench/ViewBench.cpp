// One bar as a person looks at it, by the number of windows: a layout pass after nothing and after one new title, a
// pass after the rows opened, and the drawing of all that shows. What a pass costs beside reading the list off is its
// ratio to RefreshUnchanged of the model's bench; what drawing costs, the ratio to FillBar, which only fills as many
// pixels.
#include "Platform/Simulated/SimulatedDesktop.h"
#include "Views/Bar/TaskbarView.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>

namespace korvane {
namespace {

constexpr int width = 1920, height = 400;

struct Bar {
    explicit Bar(std::int64_t windowCount) : platform(desktop.platform()), model(platform)
    {
        desktop.actions.setRecording(false);
        platform::simulated::Process process;
        process.application.pid = 1000;
        process.application.localizedName = "Editor";
        std::vector<platform::simulated::Window> windows;
        for (std::int64_t i = 0; i < windowCount; ++i) {
            platform::simulated::Window window;
            window.hash = static_cast<std::uint64_t>(0x1000000 + i);
            window.title = "Document " + std::to_string(i);
            windows.push_back(std::move(window));
        }
        process.windows = std::move(windows);
        desktop.applications.put(std::move(process));
        desktop.applications.setActive(1000);
        model.set(&SettingsValues::groupingMode, GroupingMode::never);
        model.start();
        desktop.loop.advance(platform::Seconds(0.5));
        view = std::make_unique<TaskbarView>(model, services, platform);
        view->resize(width, height);
        view->updateFromModel();
        view->show();
        QApplication::processEvents();
    }

    void retitleFirst(int number)
    {
        desktop.applications.setTitle(1000, 0x1000000, "Document " + std::to_string(number % 10));
        model.refresh();
    }

    platform::simulated::SimulatedDesktop desktop;
    platform::Platform platform;
    AppModel model;
    ViewServices services;
    std::unique_ptr<TaskbarView> view;
};

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(10)->Arg(100)->Arg(500)->Unit(benchmark::kMicrosecond);
}

void PassUnchanged(benchmark::State &state)
{
    Bar bar(state.range(0));
    for (auto _ : state)
        bar.view->updateFromModel();
}
BENCHMARK(PassUnchanged)->Apply(sizes);

void PassAfterOneNewTitle(benchmark::State &state)
{
    Bar bar(state.range(0));
    int number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        bar.retitleFirst(++number);
        state.ResumeTiming();
        bar.view->updateFromModel();
    }
}
BENCHMARK(PassAfterOneNewTitle)->Apply(sizes);

// With what the toolkit then draws, which must be one tab.
void NewTitleToPixels(benchmark::State &state)
{
    Bar bar(state.range(0));
    int number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        bar.retitleFirst(++number);
        state.ResumeTiming();
        bar.view->updateFromModel();
        QApplication::processEvents();
    }
}
BENCHMARK(NewTitleToPixels)->Apply(sizes);

// Nearly every tab makes room.
void WindowMoreAndLessToPixels(benchmark::State &state)
{
    Bar bar(state.range(0));
    platform::simulated::Window window;
    window.hash = 0x2000000;
    window.title = "A window more";
    bool open = false;
    for (auto _ : state) {
        state.PauseTiming();
        if (open)
            bar.desktop.applications.closeWindow(1000, window.hash);
        else
            bar.desktop.applications.openWindow(1000, window);
        open = !open;
        bar.model.refresh();
        state.ResumeTiming();
        bar.view->updateFromModel();
        QApplication::processEvents();
    }
}
BENCHMARK(WindowMoreAndLessToPixels)->Apply(sizes);

void DrawWholeBar(benchmark::State &state)
{
    Bar bar(state.range(0));
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        bar.view->render(&picture);
}
BENCHMARK(DrawWholeBar)->Apply(sizes);

void FillBar(benchmark::State &state)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&picture);
        painter.fillRect(0, height - 34, width, 34, QColor(20, 30, 40, 128));
    }
}
BENCHMARK(FillBar)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace korvane

int main(int argumentCount, char **arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
