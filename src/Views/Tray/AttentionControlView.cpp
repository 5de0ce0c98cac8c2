#include "Views/Tray/AttentionControlView.h"

#include "Models/Tasks/NotificationMark.h"
#include "Views/Kit/ListButton.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/Popover.h"
#include "Views/Kit/TitleText.h"

#include <QFontMetrics>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

namespace korvane {
namespace {

constexpr platform::Seconds hoverTime{1.2};

class AttentionRow final : public ListButton {
public:
    AttentionRow(ViewServices &viewServices, const AttentionAppItem &shown, Choice<NotificationBadgeStyle> style,
                 QWidget *parent)
        : ListButton(parent), services(viewServices), item(shown), name(displayText(shown.name)),
          markStyle(std::move(style))
    {
        setAccessibleName(name);
        setMinimumSize(Metrics::attentionRowWidth, Metrics::attentionRowHeight);
    }
    QSize sizeHint() const override
    {
        const int text = QFontMetrics(systemFont(Metrics::popoverFontSize)).horizontalAdvance(name) + 1;
        const int others = 2 * Metrics::rowPadding + Metrics::attentionIconSize + Metrics::attentionRowSpacing
                           + roomForMark(NotificationMarks::ofStyle(markStyle, Metrics::attentionMarkSize));
        return {
            std::clamp(others + text, Metrics::attentionRowWidth, Metrics::attentionRowWidth + Metrics::widestListText),
            Metrics::attentionRowHeight};
    }

protected:
    void paintContent(QPainter &painter) override
    {
        const int side = Metrics::attentionIconSize;
        const QRect place(Metrics::rowPadding, (height() - side) / 2, side, side);
        const QPixmap picture = services.icons.pixmap(item.icon, side, devicePixelRatioF());
        if (!picture.isNull())
            painter.drawPixmap(place, picture);
        const int left = place.right() + 1 + Metrics::attentionRowSpacing;
        const auto mark = NotificationMarks::ofStyle(markStyle, Metrics::attentionMarkSize);
        const int right = width() - Metrics::rowPadding - roomForMark(mark);
        painter.setFont(systemFont(Metrics::popoverFontSize));
        painter.drawText(QRect(left, 0, right - left, height()), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(name, Qt::ElideRight, right - left));
        if (mark) {
            painter.translate(width() - Metrics::rowPadding - mark->boxWidth, (height() - mark->boxHeight) / 2);
            paintNotificationMark(painter, *mark);
        }
    }

private:
    static int roomForMark(const std::optional<NotificationMark> &mark)
    {
        return mark ? static_cast<int>(mark->boxWidth) + Metrics::attentionRowSpacing : 0;
    }

    ViewServices &services;
    AttentionAppItem item;
    QString name;
    Choice<NotificationBadgeStyle> markStyle;
};

QLabel *label(const QString &text, bool heading, QWidget *parent)
{
    auto *made = new QLabel(text, parent);
    made->setFont(systemFont(Metrics::popoverFontSize, heading));
    QPalette light = made->palette();
    light.setColor(QPalette::WindowText,
                   QColor::fromRgbF(1, 1, 1, heading ? 1.0F : static_cast<float>(Metrics::secondaryOpacity)));
    made->setPalette(light);
    return made;
}

}  // namespace

AttentionControlView::AttentionControlView(AppModel &appModel, ViewServices &viewServices, platform::Platform &system,
                                           bool isCompact, QWidget *parent)
    : SymbolButton({Metrics::trayButtonWidth, isCompact ? Metrics::smallButtonHeight : Metrics::buttonHeight}, parent),
      model(appModel), services(viewServices), platform(system), compact(isCompact),
      hover(system.loop, hoverTime, [this](bool showing) { showList(showing); })
{
    connect(this, &SymbolButton::hoverChanged, this, [this](bool hovered) { hover.hover(hovered); });
    connect(this, &QAbstractButton::clicked, this, [this] {
        clicked = true;
        hover.click();
        clicked = false;
    });
    updateFromModel();
}

// Deleted first: the popover reports that it closes, and this object must still be complete then.
AttentionControlView::~AttentionControlView()
{
    delete popover;
}

Popover *AttentionControlView::openList() const
{
    return popover && popover->isOpen() ? popover.data() : nullptr;
}

void AttentionControlView::updateFromModel()
{
    setTip(model.attentionApps().empty() ? QStringLiteral("No apps need attention") : QStringLiteral("Notifications"));
    const bool styleChanged = markStyle != model.settings().notificationBadgeStyle;
    if (styleChanged) {
        markStyle = model.settings().notificationBadgeStyle;
        update();
    }
    if (openList() && (styleChanged || listed != model.attentionApps()))
        fillList();
}

// Hiding this button also closes its list, and cancels a list that the resting pointer was about to open.
void AttentionControlView::hideEvent(QHideEvent *event)
{
    SymbolButton::hideEvent(event);
    hover.hover(false);
    hover.dismissed();
}

void AttentionControlView::paintEvent(QPaintEvent *)
{
    const auto mark = NotificationMarks::ofStyle(markStyle, Metrics::attentionButtonMarkSize);
    if (!mark)
        return;
    QPainter painter(this);
    painter.translate((width() - mark->boxWidth) / 2,
                      (height() - mark->boxHeight) / 2 + TrayRules::attentionBadgeYOffset(compact, markStyle));
    paintNotificationMark(painter, *mark);
}

void AttentionControlView::showList(bool showing)
{
    if (!showing) {
        if (popover)
            popover->close();
        return;
    }
    if (!popover) {
        popover = new Popover(platform, *this);
        popover->setName(QStringLiteral("Notifications"));
        connect(popover, &Popover::closed, this, [this] { hover.dismissed(); });
    }
    auto *content = new QWidget;
    column = new QVBoxLayout(content);
    column->setSpacing(Metrics::listSpacing);
    column->setContentsMargins(0, Metrics::listPadding, 0, Metrics::listPadding);
    fillList();
    popover->setContent(content);
    popover->open(clicked ? Popover::Keyboard::taken : Popover::Keyboard::left);
}

void AttentionControlView::fillList()
{
    listed = model.attentionApps();
    column->setContentsMargins(0, Metrics::listPadding, 0, Metrics::listPadding * (listed.empty() ? 1 : 2));
    while (QLayoutItem *old = column->takeAt(0)) {
        if (old->widget())
            old->widget()->deleteLater();
        delete old;
    }
    QWidget *content = column->parentWidget();
    auto *title = label(QStringLiteral("Notifications"), true, content);
    title->setContentsMargins(Metrics::rowPadding, Metrics::attentionTitleDrop, Metrics::rowPadding, 0);
    column->addWidget(title);
    auto *divider = new QFrame(content);
    divider->setFixedHeight(Metrics::listDividerHeight);
    divider->setAutoFillBackground(true);
    QPalette line = divider->palette();
    line.setColor(QPalette::Window, QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::dividerOpacity)));
    divider->setPalette(line);
    column->addWidget(divider);
    if (listed.empty()) {
        auto *none = label(QStringLiteral("No apps need attention"), false, content);
        none->setContentsMargins(Metrics::rowPadding, 0, Metrics::rowPadding, Metrics::attentionTitleDrop);
        column->addWidget(none);
    }
    for (const AttentionAppItem &item : listed) {
        auto *row = new AttentionRow(services, item, markStyle, content);
        connect(row, &QAbstractButton::clicked, this, [this, item] {
            hover.dismissed();
            model.activateAttentionApp(item);
        });
        column->addWidget(row);
        row->show();
    }
}

}  // namespace korvane
