#include "Views/Tasks/TaskButton.h"

#include "Views/Kit/ContextMenu.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/SymbolPainting.h"
#include "Views/Kit/TitleText.h"
#include "Views/Kit/ToolTip.h"
#include "Views/Tasks/AccessibleTask.h"
#include "Views/Tasks/CloseGlyph.h"
#include "Views/Tasks/RunningAppButton.h"
#include "Views/Tasks/RunningAppGroupButton.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

namespace korvane {

TaskButton::TaskButton(const TaskButtonHost &buttonHost, QWidget *parent) : QAbstractButton(parent), host(buttonHost)
{
    installTaskbarAccessibility();
    setFocusPolicy(Qt::NoFocus);
    setFont(systemFont(Metrics::buttonFontSize));
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
        setPlainToolTip(*this, displayText(newLook.toolTip));
    if (look.chevron != newLook.chevron)
        elidedIsValid = false;
    if (newLook.closeGlyph && !closeGlyph) {
        closeGlyph = new CloseGlyph(this);
        closeGlyph->place();
        closeGlyph->show();
        // Called at the next turn: a question may follow, and the button may be deleted while the question is open.
        connect(
            closeGlyph, &QAbstractButton::clicked, this, [this] { closeEntry(); }, Qt::QueuedConnection);
    } else if (!newLook.closeGlyph) {
        delete std::exchange(closeGlyph, nullptr);
    }
    look = std::move(newLook);
    update();
}

QSize TaskButton::sizeHint() const
{
    return {Metrics::buttonHeight * 4, Metrics::buttonHeight};
}

// ---------------------------------------------------------------------------------------------------- input

void TaskButton::contextMenuEvent(QContextMenuEvent *event)
{
    openMenuAt(event->x());
}

void TaskButton::openMenu()
{
    openMenuAt(width() / 2);
}

void TaskButton::openMenuAt(int x)
{
    openUpwards(*makeContextMenu(contextMenu(), *this), mapToGlobal(QPoint(x, 0)));
}

void TaskButton::mousePressEvent(QMouseEvent *event)
{
    dragStart.pressed(*event);
    QAbstractButton::mousePressEvent(event);
}

void TaskButton::mouseMoveEvent(QMouseEvent *event)
{
    if (!host.beginDrag || !dragStart.begins(*event)) {
        QAbstractButton::mouseMoveEvent(event);
        return;
    }
    // After a drag, the press is no longer a click.
    setDown(false);
    const Drag carried = drag();
    host.beginDrag(*this, carried.id, carried.windowIDs);
    // The button may be deleted by now, so nothing here may use it.
}

// ---------------------------------------------------------------------------------------------------- drawing

void TaskButton::resizeEvent(QResizeEvent *event)
{
    elidedIsValid = false;
    if (closeGlyph)
        closeGlyph->place();
    QAbstractButton::resizeEvent(event);
}

QRectF TaskButton::textRectangle() const
{
    const double left = Metrics::buttonPadding + Metrics::buttonIconSize + Metrics::iconTextSpacing;
    double right = width() - Metrics::buttonPadding;
    if (look.chevron)
        right -= Metrics::iconTextSpacing + Metrics::chevronSize;
    return {left, 0, std::max(0.0, right - left), static_cast<double>(height())};
}

const QStaticText &TaskButton::elidedText()
{
    if (!elidedIsValid) {
        const QFontMetricsF measure(font());
        const QString cut = measure.elidedText(shownText, Qt::ElideRight, textRectangle().width());
        // A right-to-left title ends on its left, but it also stands beside its icon.
        QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
        option.setTextDirection(Qt::LayoutDirectionAuto);
        option.setWrapMode(QTextOption::NoWrap);
        elided.setTextFormat(Qt::PlainText);
        elided.setTextOption(option);
        elided.setText(cut);
        elided.prepare({}, font());
        elidedWidth = measure.horizontalAdvance(cut);
        elidedIsValid = true;
    }
    return elided;
}

// The chevron stands right behind the end of the text.
void TaskButton::paintChevron(QPainter &painter, const QRectF &text)
{
    const double x = text.left() + std::min(elidedWidth, text.width()) + Metrics::iconTextSpacing;
    const double y = (height() - Metrics::chevronSize) / 2;
    painter.setOpacity(Metrics::chevronOpacity);
    paintSymbol(painter, QStringLiteral("chevron.up.bold"), {x, y, Metrics::chevronSize, Metrics::chevronSize});
    painter.setOpacity(1);
}

void TaskButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    paintRoundedFill(painter, rect(), Metrics::buttonRadius,
                     toColor(look.color.value_or(Rgb{1, 1, 1}), look.fillOpacity));

    painter.setPen(Qt::white);
    paintIcon(painter,
              {Metrics::buttonPadding, (height() - Metrics::buttonIconSize) / 2.0, Metrics::buttonIconSize,
               Metrics::buttonIconSize},
              look.icon, look.glyph, host.services.icons);

    painter.setFont(font());
    const QRectF text = textRectangle();
    painter.setClipRect(text);
    const QStaticText &title = elidedText();
    painter.drawStaticText(QPointF(text.left(), (height() - title.size().height()) / 2), title);
    painter.setClipping(false);
    if (look.chevron)
        paintChevron(painter, text);

    if (look.strip) {
        const double y = look.stripAtTop ? 0 : height() - Metrics::stripHeight;
        paintStrip(painter, {Metrics::stripPadding, y, width() - 2 * Metrics::stripPadding, Metrics::stripHeight},
                   toColor(look.strip->color, look.strip->opacity));
    }
    if (const auto mark = NotificationMarks::ofStyle(look.markStyle, NotificationMarks::taskbarSize))
        paintNotificationMark(painter, *mark);
}

TaskButton *makeTaskButton(const TaskButtonHost &host, const TaskbarEntry &entry, bool stripAtTop, QWidget *parent)
{
    TaskButton *button = nullptr;
    if (entry.group)
        button = new RunningAppGroupButton(host, parent);
    else
        button = new RunningAppButton(host, parent);
    button->setEntry(entry, stripAtTop);
    return button;
}

}  // namespace korvane
