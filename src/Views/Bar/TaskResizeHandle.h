// The grip at the right edge of a tab whose width is being set. The tab keeps its width while the grip is dragged.
#pragma once

#include "Models/Bar/Bar.h"

#include <QAbstractButton>

namespace korvane {

class TaskResizeHandle final : public QAbstractButton {
    Q_OBJECT

public:
    // The handle stands on the bar's armed entry and moves when another entry is armed. `bar` outlives the handle.
    TaskResizeHandle(Bar &bar, QWidget *parent);

    // `button` in the parent's coordinates. `width` is the button's width before it was rounded to whole points. While
    // the grip is dragged, the handle keeps the width that the button had when the drag began.
    void setButton(const QRect &button, double width);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool resizing() const;
    void place();

    Bar &bar;
    QRect button;
    double buttonWidth = 0;
    double pressedAt = 0;  // in desktop coordinates
};

}  // namespace korvane
