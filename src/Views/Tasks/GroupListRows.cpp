#include "Views/Tasks/GroupListRows.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/TitleText.h"
#include "Views/Tasks/CloseGlyph.h"
#include "Views/Tasks/TaskCommands.h"

#include <QLineEdit>
#include <QPainter>
#include <cmath>

namespace korvane {
namespace {

QFont listFont(bool heading = false)
{
    return systemFont(metrics::popoverFontSize, heading);
}

// Left of the text and right of it, without the text itself.
constexpr int headerSurroundings = 2 * metrics::rowPadding + metrics::headerIconSize + 2 * metrics::rowSpacing
                                   + static_cast<int>(metrics::headerChevronSize);
constexpr int rowSurroundings = 2 * metrics::rowPadding + metrics::rowIconSize + metrics::rowSpacing;

int widthFor(const QString &text, const QFont &font, int surroundings)
{
    const double wanted = QFontMetricsF(font).horizontalAdvance(text);
    return std::max(metrics::listWidth,
                    surroundings + static_cast<int>(std::ceil(std::min<double>(wanted, metrics::widestListText))));
}

void drawTitle(QPainter &painter, const QRect &place, const QString &text, const QFont &font)
{
    painter.setFont(font);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width()));
}

QPalette fieldPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::transparent);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::PlaceholderText,
                     QColor::fromRgbF(1, 1, 1, static_cast<float>(metrics::secondaryOpacity)));
    return palette;
}

}  // namespace

// ---------------------------------------------------------------------------------------------------- heading

GroupListHeader::GroupListHeader(const TaskButtonHost &listHost, const RunningAppGroup &shown, QWidget *parent)
    : ListButton(parent), host(listHost)
{
    if (shown.isCustom) {
        field = new QLineEdit(QString::fromStdString(shown.appName), this);
        field->setFrame(false);
        field->setFont(listFont(true));
        field->setPalette(fieldPalette());
        field->setPlaceholderText(QStringLiteral("Group Name"));
        field->setAccessibleName(QStringLiteral("Group Name"));
        const auto rename = [this] { host.model.renameCustomGroup(group, field->text().toStdString()); };
        connect(field, &QLineEdit::textEdited, this, rename);
        connect(field, &QLineEdit::returnPressed, this, rename);
    }
    setGroup(shown);
}

void GroupListHeader::setGroup(const RunningAppGroup &newGroup)
{
    const QString newTitle = displayText(newGroup.displayName());
    const bool looksTheSame =
        newTitle == title && newGroup.icon == group.icon && newGroup.customIconGlyph == group.customIconGlyph;
    group = newGroup;
    if (looksTheSame)
        return;
    title = newTitle;
    setAccessibleName(title);
    updateGeometry();
    update();
}

QSize GroupListHeader::sizeHint() const
{
    return {widthFor(title, listFont(true), headerSurroundings), metrics::headerTopPadding + metrics::headerIconSize};
}

QRect GroupListHeader::textRectangle() const
{
    const int left = metrics::rowPadding + metrics::headerIconSize + metrics::rowSpacing;
    return {left, metrics::headerTopPadding, width() - headerSurroundings, metrics::headerIconSize};
}

void GroupListHeader::resizeEvent(QResizeEvent *event)
{
    ListButton::resizeEvent(event);
    if (field)
        field->setGeometry(textRectangle().adjusted(-metrics::fieldTextMargin, 0, 0, 0));
}

Menu GroupListHeader::contextMenu() const
{
    return TaskCommands::headerMenu(host, group);
}

void GroupListHeader::paintContent(QPainter &painter)
{
    paintIcon(painter,
              {static_cast<double>(metrics::rowPadding), static_cast<double>(metrics::headerTopPadding),
               static_cast<double>(metrics::headerIconSize), static_cast<double>(metrics::headerIconSize)},
              group.icon, group.customIconGlyph.value_or(""), host.services.icons);
    if (!field)
        drawTitle(painter, textRectangle(), title, listFont(true));
    painter.setOpacity(metrics::secondaryOpacity);
    painter.drawPixmap(
        QPointF(width() - metrics::rowPadding - metrics::headerChevronSize,
                metrics::headerTopPadding + (metrics::headerIconSize - metrics::headerChevronSize) / 2),
        symbolPixmap(QStringLiteral("chevron.up.bold"), metrics::headerChevronSize, devicePixelRatioF()));
}

// ---------------------------------------------------------------------------------------------------- windows

GroupWindowRow::GroupWindowRow(const TaskButtonHost &listHost, const RunningAppItem &shown, QWidget *parent)
    : ListButton(parent), host(listHost)
{
    setItem(shown);
}

void GroupWindowRow::setItem(const RunningAppItem &newItem)
{
    item = newItem;
    TaskButtonLook newLook = TaskButtonLooks::ofWindowRow(host.model, item);
    if (newLook == look)
        return;
    if (newLook.text != look.text) {
        title = displayText(newLook.text);
        setAccessibleName(title);
        updateGeometry();
    }
    if (newLook.closeGlyph && !closeGlyph) {
        closeGlyph = new CloseGlyph(this);
        closeGlyph->place();
        closeGlyph->show();
        connect(
            closeGlyph, &QAbstractButton::clicked, this, [this] { host.model.closeFrontWindow(RunningAppItem(item)); },
            Qt::QueuedConnection);
    } else if (!newLook.closeGlyph) {
        delete std::exchange(closeGlyph, nullptr);
    }
    look = std::move(newLook);
    update();
}

QSize GroupWindowRow::sizeHint() const
{
    return {widthFor(title, listFont(), rowSurroundings), metrics::rowHeight};
}

void GroupWindowRow::resizeEvent(QResizeEvent *event)
{
    ListButton::resizeEvent(event);
    if (closeGlyph)
        closeGlyph->place();
}

Menu GroupWindowRow::contextMenu() const
{
    return TaskCommands::rowMenu(host, item);
}

void GroupWindowRow::mousePressEvent(QMouseEvent *event)
{
    dragStart.pressed(*event);
    ListButton::mousePressEvent(event);
}

void GroupWindowRow::mouseMoveEvent(QMouseEvent *event)
{
    if (!host.beginDrag || !dragStart.begins(*event)) {
        ListButton::mouseMoveEvent(event);
        return;
    }
    setDown(false);
    const RunningAppItem carried = item;
    host.beginDrag(*this, TaskCommands::rowDragID(carried), {carried.id});
    // The row may be gone by now.
}

void GroupWindowRow::paintContent(QPainter &painter)
{
    paintIcon(painter,
              {static_cast<double>(metrics::rowPadding), (height() - metrics::rowIconSize) / 2.0,
               static_cast<double>(metrics::rowIconSize), static_cast<double>(metrics::rowIconSize)},
              look.icon, {}, host.services.icons);
    const int left = metrics::rowPadding + metrics::rowIconSize + metrics::rowSpacing;
    drawTitle(painter, {left, 0, width() - rowSurroundings, height()}, title, listFont());
    if (look.strip)
        paintStrip(painter,
                   {metrics::stripPadding, height() - metrics::stripHeight, width() - 2 * metrics::stripPadding,
                    metrics::stripHeight},
                   toColor(look.strip->color, look.strip->opacity));
    if (const auto mark = NotificationMarks::ofStyle(look.markStyle, NotificationMarks::taskbarSize))
        paintNotificationMark(painter, *mark);
}

// ---------------------------------------------------------------------------------------------------- hiding all

HideAllRow::HideAllRow(QWidget *parent) : ListButton(parent)
{
    setText(QStringLiteral("Hide All Windows"));
    setAccessibleName(text());
}

QSize HideAllRow::sizeHint() const
{
    return {widthFor(text(), listFont(), rowSurroundings), metrics::hideAllRowHeight};
}

void HideAllRow::paintContent(QPainter &painter)
{
    const double size = metrics::hideAllRowSymbolSize;
    painter.drawPixmap(QPointF(metrics::rowPadding, std::round((height() - size) / 2)),
                       symbolPixmap(QStringLiteral("arrow.down"), size, devicePixelRatioF()));
    const int left = metrics::rowPadding + static_cast<int>(size) + metrics::rowSpacing;
    drawTitle(painter, {left, 0, width() - left - metrics::rowPadding, height()}, text(), listFont());
}

}  // namespace korvane
