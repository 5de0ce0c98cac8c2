#include "Controllers/TaskbarPanel.h"

#include "Models/PanelGeometry.h"

#include <QResizeEvent>
#include <cmath>

namespace korvane {

TaskbarPanel::TaskbarPanel(AppModel &model, ViewServices &services, platform::Platform &system,
                           const platform::Screen &screen, const QRect &rectangle)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      platform(system), panelScreen(screen), screenRectangle(rectangle),
      content(new TaskbarView(model, services, system, this)), currentHeight(PanelGeometry::barHeight)
{
    setWindowTitle(QStringLiteral("Korvane Taskbar"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    content->setTranslucent(platform.panels.translucencyAvailable());
    connect(content, &TaskbarView::drawnRegionChanged, this, &TaskbarPanel::applyMask);
    setHeight(PanelGeometry::barHeight);
}

platform::Rect TaskbarPanel::frame() const
{
    return {panelScreen.frame.x, panelScreen.frame.y, panelScreen.frame.width, currentHeight};
}

void TaskbarPanel::setHeight(double newHeight)
{
    currentHeight = newHeight;
    const int pixels = static_cast<int>(std::lround(newHeight));
    setGeometry(screenRectangle.x(), screenRectangle.y() + screenRectangle.height() - pixels, screenRectangle.width(),
                pixels);
}

void TaskbarPanel::orderFront()
{
    const platform::NativeView native = winId();
    platform::PanelTraits traits;
    traits.stationary = true;
    traits.nonActivating = true;
    platform.panels.apply(native, traits);
    show();
    platform.panels.orderFrontRegardless(native);
}

void TaskbarPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    content->setGeometry(rect());
    applyMask();
}

// What is not drawn lets clicks through, and without a compositor also the sight of what is behind.
void TaskbarPanel::applyMask()
{
    const QRegion drawn = content->drawnRegion();
    if (drawn == QRegion(rect()))
        clearMask();
    else if (mask() != drawn)
        setMask(drawn);
}

}  // namespace korvane
