// The borderless window of one bar, on the bottom edge of one screen.
#pragma once

#include "Models/Bar/AutoHide.h"
#include "Ports/Platform.h"
#include "Views/Bar/TaskbarView.h"

#include <QWidget>

namespace korvane {

class FadeEffect;

class TaskbarPanel final : public QWidget, public AutoHidePanel {
    Q_OBJECT

public:
    // `screenRectangle` is the screen in the toolkit's coordinates. The panel calls `grow` when it is to grow or shrink
    // to a height.
    TaskbarPanel(AppModel &model, ViewServices &services, platform::Platform &platform, const platform::Screen &screen,
                 const QRect &screenRectangle, std::function<void(TaskbarPanel &, double height)> grow);

    TaskbarView &view() { return *content; }
    const platform::Screen &screen() const { return panelScreen; }
    // In points. The window itself is only as tall as the part that it shows, so the room for tucked rows needs no
    // pixels.
    double panelHeight() const { return currentHeight; }
    // Sets the height at once. The bottom edge stays where it is.
    void setPanelHeight(double height);
    void orderFront();
    // Whether the desktop can shine through. If it can't, the bar does not fade: it stays opaque until the fade has
    // ended.
    void setTranslucent(bool translucent);
    // If true, other windows can't use the bar's own strip.
    void reserveStrip(bool reserve);
    // A place of the desktop in the view's coordinates. Absent when the place is outside the panel, and while the panel
    // is hidden.
    std::optional<QPoint> inView(const platform::Point &place) const;

    platform::Rect frame() const override;
    std::optional<platform::Rect> screenFrame() const override { return panelScreen.frame; }
    std::optional<double> contentOpacity() const override { return opacity; }
    bool ignoresMouseEvents() const override { return ignoresMouse; }
    void setContentOpacity(double opacity) override;
    void setIgnoresMouseEvents(bool ignores) override;
    double headingHeight() const override { return heading; }
    void setHeight(double height, const platform::Rect &screen) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void applyGeometry();
    void applyShape();
    void showOpacity();

    platform::Platform &platform;
    platform::Screen panelScreen;
    QRect screenRectangle;
    std::function<void(TaskbarPanel &, double)> grow;
    TaskbarView *content;
    FadeEffect *fade;
    double currentHeight, heading;
    double opacity = 1;
    bool ignoresMouse = false, isTranslucent = false, reserves = false;
};

}  // namespace korvane
