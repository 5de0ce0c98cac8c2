#include "Views/Bar/TaskResizeHandle.h"

#include "Views/Kit/Metrics.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace korvane {

TaskResizeHandle::TaskResizeHandle(Bar &ownBar, QWidget *parent) : QAbstractButton(parent), bar(ownBar)
{
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::SizeHorCursor);
    setAccessibleName(QStringLiteral("Resize"));
    // A press through the accessibility tree keeps the width, as a click without a movement does.
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (TaskResize *grip = bar.grip()) {
            grip->changed(buttonWidth, 0);
            grip->ended();
        }
    });
}

bool TaskResizeHandle::resizing() const
{
    const TaskResize *grip = bar.grip();
    return grip && grip->resizing();
}

void TaskResizeHandle::setButton(const QRect &newButton, double newWidth)
{
    if (resizing())
        return;
    buttonWidth = newWidth;
    button = newButton;
    place();
}

void TaskResizeHandle::place()
{
    const TaskResize *grip = bar.grip();
    if (!grip)
        return;
    const double centre = grip->gripCentreX(button.width());
    setGeometry(button.left() + static_cast<int>(std::lround(centre - Metrics::gripHitWidth / 2.0)),
                button.top() + static_cast<int>(std::lround(Metrics::gripCentreY - Metrics::gripHeight / 2.0)),
                Metrics::gripHitWidth, Metrics::gripHeight);
}

void TaskResizeHandle::mousePressEvent(QMouseEvent *event)
{
    TaskResize *grip = bar.grip();
    if (!grip || event->button() != Qt::LeftButton)
        return;
    pressedAt = event->globalPosition().x();
    grip->changed(buttonWidth, 0);
}

void TaskResizeHandle::mouseMoveEvent(QMouseEvent *event)
{
    TaskResize *grip = bar.grip();
    if (!grip || !grip->resizing())
        return;
    grip->changed(buttonWidth, event->globalPosition().x() - pressedAt);
    place();
}

void TaskResizeHandle::mouseReleaseEvent(QMouseEvent *event)
{
    TaskResize *grip = bar.grip();
    if (grip && event->button() == Qt::LeftButton)
        grip->ended();
}

void TaskResizeHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::gripOpacity)));
    const QRectF capsule((width() - Metrics::gripWidth) / 2.0, 0, Metrics::gripWidth, Metrics::gripHeight);
    painter.drawRoundedRect(capsule, Metrics::gripWidth / 2.0, Metrics::gripWidth / 2.0);
}

}  // namespace korvane
