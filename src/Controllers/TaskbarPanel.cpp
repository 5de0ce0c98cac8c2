#include "Controllers/TaskbarPanel.h"

#include "Controllers/FadeEffect.h"
#include "Models/Bar/LayoutMetrics.h"
#include "Views/Kit/Metrics.h"

#include <QResizeEvent>
#include <algorithm>
#include <cmath>

namespace korvane {

TaskbarPanel::TaskbarPanel(AppModel &model, ViewServices &services, platform::Platform &system,
                           const platform::Screen &screen, const QRect &rectangle,
                           std::function<void(TaskbarPanel &, double)> growTo)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      platform(system), panelScreen(screen), screenRectangle(rectangle), grow(std::move(growTo)),
      content(new TaskbarView(model, services, system, this)), fade(new FadeEffect(content)),
      currentHeight(LayoutMetrics::barHeight), heading(currentHeight)
{
    setWindowTitle(QStringLiteral("Korvane Taskbar"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    content->setGraphicsEffect(fade);
    connect(content, &TaskbarView::drawnRegionChanged, this, [this] {
        applyGeometry();
        applyShape();
    });
    setPanelHeight(LayoutMetrics::barHeight);
    setTranslucent(platform.panels.translucencyAvailable());
}

platform::Rect TaskbarPanel::frame() const
{
    return {panelScreen.frame.x, panelScreen.frame.y, panelScreen.frame.width, currentHeight};
}

void TaskbarPanel::setPanelHeight(double newHeight)
{
    currentHeight = newHeight;
    applyGeometry();
}

void TaskbarPanel::applyGeometry()
{
    const int whole = static_cast<int>(std::lround(currentHeight));
    const int pixels = std::clamp(content->shownHeight(), std::min(whole, Metrics::barHeight), whole);
    setGeometry(screenRectangle.x(), screenRectangle.y() + screenRectangle.height() - pixels, screenRectangle.width(),
                pixels);
}

void TaskbarPanel::setHeight(double height, const platform::Rect &)
{
    heading = height;
    grow(*this, height);
}

void TaskbarPanel::orderFront()
{
    const platform::NativeView native = winId();
    platform::PanelTraits traits;
    traits.stationary = true;
    traits.nonActivating = true;
    platform.panels.apply(native, traits);
    applyShape();
    show();
    platform.panels.orderFrontRegardless(native);
}

void TaskbarPanel::setTranslucent(bool translucent)
{
    isTranslucent = translucent;
    content->setTranslucent(translucent);
    showOpacity();
}

void TaskbarPanel::setContentOpacity(double newOpacity)
{
    opacity = newOpacity;
    showOpacity();
}

void TaskbarPanel::showOpacity()
{
    fade->setOpacity(isTranslucent ? opacity : 1);
}

void TaskbarPanel::setIgnoresMouseEvents(bool ignores)
{
    ignoresMouse = ignores;
    platform.panels.setIgnoresMouse(winId(), ignores);
}

void TaskbarPanel::reserveStrip(bool reserve)
{
    if (reserves == reserve)
        return;
    reserves = reserve;
    const platform::Rect &screen = panelScreen.frame;
    platform.panels.reserveStrip(
        winId(), reserve ? std::optional(platform::Rect{screen.x, screen.y, screen.width, LayoutMetrics::barHeight})
                         : std::nullopt);
}

std::optional<QPoint> TaskbarPanel::inView(const platform::Point &place) const
{
    const platform::Rect whole = frame();
    const bool over =
        place.x >= whole.x && place.x < whole.x + whole.width && place.y >= whole.y && place.y < whole.y + whole.height;
    if (!over || opacity <= AutoHide::hiddenOpacity)
        return std::nullopt;
    // The view counts downwards from its upper edge.
    return QPoint(static_cast<int>(place.x - whole.x), height() - 1 - static_cast<int>(std::floor(place.y - whole.y)));
}

void TaskbarPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    content->setGeometry(rect());
    applyShape();
}

// Clicks go through the parts that are not drawn. Without a compositor these parts also show what is behind the panel.
void TaskbarPanel::applyShape()
{
    if (!internalWinId())
        return;
    platform::PanelShape shape;
    for (const QRect &part : content->drawnRegion())
        shape.push_back({static_cast<double>(part.x()), static_cast<double>(part.y()),
                         static_cast<double>(part.width()), static_cast<double>(part.height())});
    platform.panels.setShape(winId(), shape);
}

}  // namespace korvane
