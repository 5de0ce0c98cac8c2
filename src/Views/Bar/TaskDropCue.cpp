#include "Views/Bar/TaskDropCue.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"

#include <QPainter>

namespace korvane {
namespace {

// The cue needs room around the button, for the outer half of the outline and for the bar left of the edge.
constexpr int margin = Metrics::cueCapsuleShift;

}  // namespace

TaskDropCue::TaskDropCue(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void TaskDropCue::showOn(const QRect &button, Kind newKind)
{
    const QRect place = button.adjusted(-margin, -margin, margin, margin);
    if (isVisible() && geometry() == place && kind == newKind)
        return;
    kind = newKind;
    setGeometry(place);
    update();
    show();
    raise();
}

void TaskDropCue::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor blue = toColor(*TabColors::storedTabColor("Blue"));
    const QRectF button = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    if (kind == Kind::into) {
        painter.setPen(QPen(blue, Metrics::cueStroke));
        painter.drawRoundedRect(button, Metrics::cueRadius, Metrics::cueRadius);
        return;
    }
    const QRectF capsule(button.left() - Metrics::cueCapsuleShift,
                         button.center().y() - Metrics::cueCapsuleHeight / 2.0, Metrics::cueCapsuleWidth,
                         Metrics::cueCapsuleHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blue);
    painter.drawRoundedRect(capsule, capsule.width() / 2, capsule.width() / 2);
}

}  // namespace korvane
