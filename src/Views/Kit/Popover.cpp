#include "Views/Kit/Popover.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace korvane {

Popover::Popover(platform::Platform &system, QWidget &owner)
    : QWidget(&owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::X11BypassWindowManagerHint),
      platform(system), anchor(&owner)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    // The popover must not inherit the anchor's font.
    setFont(systemFont(Metrics::popoverFontSize));
}

// Hidden first, so that a popover that is deleted while open no longer counts as open.
Popover::~Popover()
{
    if (isVisible())
        hide();
}

void Popover::setName(const QString &name)
{
    setWindowTitle(name);
    setAccessibleName(name);
}

void Popover::setContent(QWidget *newContent)
{
    if (content && content != newContent)
        content->deleteLater();
    content = newContent;
    content->setParent(this);
    content->installEventFilter(this);
    content->show();
}

void Popover::open(Keyboard wanted)
{
    if (!content || !anchor)
        return;
    if (wanted == Keyboard::taken)
        keyboard = Keyboard::taken;
    if (isVisible()) {
        takeKeyboard();
        return;
    }
    keyboard = wanted;
    place();
    show();
    raise();
    takeKeyboard();
}

void Popover::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    ++openCount;
    presses = platform.events.observePresses([this] { pressedSomewhere(); });
    Q_EMIT opened();
}

void Popover::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    --openCount;
    presses.reset();
    if (windowHandle() && keyboard == Keyboard::taken)
        windowHandle()->setKeyboardGrabEnabled(false);
    Q_EMIT closed();
}

// A grab brings the keys, as for a menu: with a real focus this program would become the active one.
void Popover::takeKeyboard()
{
    if (keyboard != Keyboard::taken || !windowHandle())
        return;
    windowHandle()->setKeyboardGrabEnabled(true);
    if (!focusWidget())
        focusNextChild();
}

void Popover::place()
{
    content->adjustSize();
    const QSize size = content->sizeHint().expandedTo(content->minimumSize());
    const QRect opener(anchor->mapToGlobal(QPoint()), anchor->size());
    const QScreen *screen = anchor->screen();
    const QRect bounds = screen ? screen->geometry() : QRect(QPoint(), size);
    QRect place(QPoint(), size.boundedTo(bounds.size()));
    place.moveCenter(opener.center());
    place.moveBottom(opener.top() - Metrics::popoverGap - 1);
    place.moveLeft(std::clamp(
        place.left(), bounds.left() + Metrics::popoverGap,
        std::max(bounds.left() + Metrics::popoverGap, bounds.right() - Metrics::popoverGap - place.width() + 1)));
    place.moveTop(std::max(place.top(), bounds.top()));
    setGeometry(place);
    content->setGeometry(rect());
}

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == content && event->type() == QEvent::LayoutRequest && isVisible())
        place();
    return QWidget::eventFilter(watched, event);
}

void Popover::keyPressEvent(QKeyEvent *event)
{
    auto *button = qobject_cast<QAbstractButton *>(focusWidget());
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (button)
            button->click();
        break;
    case Qt::Key_Down:
        focusNextChild();
        break;
    case Qt::Key_Up:
        focusPreviousChild();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

// A press on the anchor is left to the anchor. A press in a menu belongs to the control that opened the menu.
void Popover::pressedSomewhere()
{
    if (QApplication::activePopupWidget())
        return;
    const QPoint pointer = QCursor::pos();
    if (frameGeometry().contains(pointer))
        return;
    if (anchor && QRect(anchor->mapToGlobal(QPoint()), anchor->size()).contains(pointer))
        return;
    close();
}

void Popover::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Metrics::popoverRadius, Metrics::popoverRadius);
    painter.fillPath(shape, Metrics::popoverGround);
    painter.strokePath(shape, QPen(Metrics::popoverStroke, 1));
}

}  // namespace korvane
