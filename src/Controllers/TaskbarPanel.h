// The borderless window of one bar, on the bottom edge of one screen.
#pragma once

#include "Platform/Platform.h"
#include "Views/TaskbarView.h"

#include <QWidget>

namespace korvane {

class TaskbarPanel final : public QWidget {
    Q_OBJECT

public:
    // `screenRectangle` is the screen in the toolkit's coordinates.
    TaskbarPanel(AppModel &model, ViewServices &services, platform::Platform &platform, const platform::Screen &screen,
                 const QRect &screenRectangle);

    TaskbarView &view() { return *content; }
    const platform::Screen &screen() const { return panelScreen; }
    // In points.
    double panelHeight() const { return currentHeight; }
    // In desktop coordinates.
    platform::Rect frame() const;
    // Keeps the bottom edge.
    void setHeight(double height);
    void orderFront();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void applyMask();

    platform::Platform &platform;
    platform::Screen panelScreen;
    QRect screenRectangle;
    TaskbarView *content;
    double currentHeight;
};

}  // namespace korvane
