// The grip at the right edge of a tab whose width is being set. The tab keeps its width while the grip is dragged.
#pragma once

#include "Models/Bar/TaskResize.h"

#include <QAbstractButton>

namespace korvane {

class TaskResizeHandle final : public QAbstractButton {
    Q_OBJECT

public:
    // A handle that goes away in the middle of a drag ends the resizing without a new width.
    TaskResizeHandle(TaskResizeActions actions, QWidget *parent);
    ~TaskResizeHandle() override;

    // `button` in the parent's coordinates; `width` is its width before that was rounded to whole points. While the
    // grip is dragged it stays with the width at which that began.
    void setButton(const QRect &button, double width);
    bool resizing() const { return resize.resizing(); }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void place();

    TaskResize resize;
    QRect button;
    double buttonWidth = 0;
    double pressedAt = 0;  // of the desktop
};

}  // namespace korvane
