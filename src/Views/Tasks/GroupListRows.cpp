#include "Views/Tasks/GroupListRows.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/SymbolPainting.h"
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
    return systemFont(Metrics::popoverFontSize, heading);
}

// The width of everything left and right of the text, without the text itself.
constexpr int headerSurroundings = 2 * Metrics::rowPadding + Metrics::headerIconSize + 2 * Metrics::rowSpacing
                                   + static_cast<int>(Metrics::headerChevronSize);
constexpr int rowSurroundings = 2 * Metrics::rowPadding + Metrics::rowIconSize + Metrics::rowSpacing;

int widthFor(const QString &text, const QFont &font, int surroundings)
{
    const double wanted = QFontMetricsF(font).horizontalAdvance(text);
    return std::max(Metrics::listWidth,
                    surroundings + static_cast<int>(std::ceil(std::min<double>(wanted, Metrics::widestListText))));
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
                     QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::secondaryOpacity)));
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
    return {widthFor(title, listFont(true), headerSurroundings), Metrics::headerTopPadding + Metrics::headerIconSize};
}

QRect GroupListHeader::textRectangle() const
{
    const int left = Metrics::rowPadding + Metrics::headerIconSize + Metrics::rowSpacing;
    return {left, Metrics::headerTopPadding, width() - headerSurroundings, Metrics::headerIconSize};
}

void GroupListHeader::resizeEvent(QResizeEvent *event)
{
    ListButton::resizeEvent(event);
    if (field)
        field->setGeometry(textRectangle().adjusted(-Metrics::fieldTextMargin, 0, 0, 0));
}

Menu GroupListHeader::contextMenu() const
{
    return TaskCommands::headerMenu(host, group);
}

void GroupListHeader::paintContent(QPainter &painter)
{
    paintIcon(painter,
              {static_cast<double>(Metrics::rowPadding), static_cast<double>(Metrics::headerTopPadding),
               static_cast<double>(Metrics::headerIconSize), static_cast<double>(Metrics::headerIconSize)},
              group.icon, group.customIconGlyph.value_or(""), host.services.icons);
    if (!field)
        drawTitle(painter, textRectangle(), title, listFont(true));
    painter.setOpacity(Metrics::secondaryOpacity);
    const double size = Metrics::headerChevronSize;
    paintSymbol(painter, QStringLiteral("chevron.up.bold"),
                {width() - Metrics::rowPadding - size, Metrics::headerTopPadding + (Metrics::headerIconSize - size) / 2,
                 size, size});
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
    return {widthFor(title, listFont(), rowSurroundings), Metrics::rowHeight};
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
    // The row may be deleted by now, so nothing here may use it.
}

void GroupWindowRow::paintContent(QPainter &painter)
{
    paintIcon(painter,
              {static_cast<double>(Metrics::rowPadding), (height() - Metrics::rowIconSize) / 2.0,
               static_cast<double>(Metrics::rowIconSize), static_cast<double>(Metrics::rowIconSize)},
              look.icon, {}, host.services.icons);
    const int left = Metrics::rowPadding + Metrics::rowIconSize + Metrics::rowSpacing;
    drawTitle(painter, {left, 0, width() - rowSurroundings, height()}, title, listFont());
    if (look.strip)
        paintStrip(painter,
                   {Metrics::stripPadding, height() - Metrics::stripHeight, width() - 2 * Metrics::stripPadding,
                    Metrics::stripHeight},
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
    return {widthFor(text(), listFont(), rowSurroundings), Metrics::hideAllRowHeight};
}

void HideAllRow::paintContent(QPainter &painter)
{
    const double size = Metrics::hideAllRowSymbolSize;
    paintSymbol(painter, QStringLiteral("arrow.down"),
                {static_cast<double>(Metrics::rowPadding), (height() - size) / 2, size, size});
    const int left = Metrics::rowPadding + static_cast<int>(size) + Metrics::rowSpacing;
    drawTitle(painter, {left, 0, width() - left - Metrics::rowPadding, height()}, text(), listFont());
}

}  // namespace korvane
