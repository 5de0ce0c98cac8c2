#include "Views/TaskButton.h"

#include "Views/Metrics.h"
#include "Views/TitleText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace korvane {

TaskButton::TaskButton(IconPixmaps &iconPixmaps, QWidget *parent) : QAbstractButton(parent), icons(iconPixmaps)
{
    setFocusPolicy(Qt::NoFocus);
    setFont(systemFont(metrics::buttonFontSize));
    setAttribute(Qt::WA_AlwaysShowToolTips);
}

void TaskButton::setLook(TaskButtonLook newLook)
{
    if (look == newLook)
        return;
    if (look.text != newLook.text) {
        shownText = displayText(newLook.text);
        elidedIsValid = false;
        setAccessibleName(shownText);
    }
    if (look.toolTip != newLook.toolTip)
        setToolTip(displayText(newLook.toolTip));
    if (look.windowCount != newLook.windowCount)
        elidedIsValid = false;
    look = std::move(newLook);
    update();
}

QSize TaskButton::sizeHint() const
{
    return {metrics::buttonHeight * 4, metrics::buttonHeight};
}

bool TaskButton::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        // Titles come from strangers and are never read as markup.
        const auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), plainToolTip(toolTip()), this);
        return true;
    }
    return QAbstractButton::event(event);
}

void TaskButton::resizeEvent(QResizeEvent *event)
{
    elidedIsValid = false;
    QAbstractButton::resizeEvent(event);
}

QString TaskButton::countText() const
{
    return look.windowCount > 1 ? QString::number(look.windowCount) : QString();
}

QRectF TaskButton::textRectangle() const
{
    const double left = metrics::buttonPadding + metrics::buttonIconSize + metrics::iconTextSpacing;
    double right = width() - metrics::buttonPadding;
    if (const QString count = countText(); !count.isEmpty())
        right -=
            QFontMetricsF(systemFont(metrics::countFontSize, true)).horizontalAdvance(count) + metrics::iconTextSpacing;
    return {left, 0, std::max(0.0, right - left), static_cast<double>(height())};
}

const QString &TaskButton::elidedText()
{
    if (!elidedIsValid) {
        elided = QFontMetricsF(font()).elidedText(shownText, Qt::ElideRight, textRectangle().width());
        elidedIsValid = true;
    }
    return elided;
}

void TaskButton::paintIcon(QPainter &painter, const QRectF &square)
{
    if (!look.glyph.empty()) {
        painter.setFont(systemFont(static_cast<int>(square.width() * metrics::glyphFontScale)));
        painter.drawText(square, Qt::AlignCenter, displayText(look.glyph));
        return;
    }
    const QPixmap pixmap = icons.pixmap(look.icon, metrics::buttonIconSize, devicePixelRatioF());
    if (pixmap.isNull())
        return;
    const QSizeF size = pixmap.deviceIndependentSize();
    painter.drawPixmap(QPointF(square.center().x() - size.width() / 2, square.center().y() - size.height() / 2),
                       pixmap);
}

void TaskButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF whole = rect();

    paintRoundedFill(painter, rect(), metrics::buttonRadius,
                     toColor(look.color.value_or(Rgb{1, 1, 1}), look.fillOpacity));

    painter.setPen(Qt::white);
    paintIcon(painter, {metrics::buttonPadding, (height() - metrics::buttonIconSize) / 2.0, metrics::buttonIconSize,
                        metrics::buttonIconSize});

    painter.setFont(font());
    const QRectF text = textRectangle();
    painter.setClipRect(text);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, elidedText());
    painter.setClipping(false);

    if (const QString count = countText(); !count.isEmpty()) {
        painter.setFont(systemFont(metrics::countFontSize, true));
        painter.setPen(QColor::fromRgbF(1, 1, 1, static_cast<float>(metrics::countOpacity)));
        painter.drawText(whole.adjusted(0, 0, -metrics::buttonPadding, 0), Qt::AlignRight | Qt::AlignVCenter, count);
    }
    if (look.strip) {
        const double y = look.stripAtTop ? 0 : height() - metrics::stripHeight;
        paintStrip(painter, {metrics::stripPadding, y, width() - 2 * metrics::stripPadding, metrics::stripHeight},
                   toColor(look.strip->color, look.strip->opacity));
    }
    if (const auto mark = NotificationMarks::ofStyle(look.markStyle, NotificationMarks::taskbarSize))
        paintNotificationMark(painter, *mark);
}

}  // namespace korvane
