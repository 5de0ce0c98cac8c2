#include "Views/Bar/TaskResizeHandle.h"

#include "Views/Kit/Metrics.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace korvane {

TaskResizeHandle::TaskResizeHandle(TaskResizeActions actions, QWidget *parent)
    : QAbstractButton(parent), resize(std::move(actions))
{
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::SizeHorCursor);
    setAccessibleName(QStringLiteral("Resize"));
    // Pressed through the accessibility tree it keeps the width, as a click without a movement does.
    connect(this, &QAbstractButton::clicked, this, [this] {
        resize.changed(buttonWidth, 0);
        resize.ended();
    });
}

TaskResizeHandle::~TaskResizeHandle()
{
    resize.cancelled();
}

void TaskResizeHandle::setButton(const QRect &newButton, double newWidth)
{
    if (resize.resizing())
        return;
    buttonWidth = newWidth;
    if (button == newButton)
        return;
    button = newButton;
    place();
}

void TaskResizeHandle::place()
{
    const double centre = resize.gripCentreX(button.width());
    setGeometry(button.left() + static_cast<int>(std::lround(centre - Metrics::gripHitWidth / 2.0)),
                button.top() + static_cast<int>(std::lround(Metrics::gripCentreY - Metrics::gripHeight / 2.0)),
                Metrics::gripHitWidth, Metrics::gripHeight);
}

void TaskResizeHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    pressedAt = event->globalPosition().x();
    resize.changed(buttonWidth, 0);
}

void TaskResizeHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (!resize.resizing())
        return;
    resize.changed(buttonWidth, event->globalPosition().x() - pressedAt);
    place();
}

void TaskResizeHandle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        resize.ended();
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
