#include "Views/Bar/MainRowView.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/SymbolButton.h"

#include <QPainter>

namespace korvane {
namespace {

constexpr QSize smallButton(Metrics::trayButtonWidth, Metrics::smallButtonHeight);

void place(QWidget &widget, const QRect &rectangle)
{
    if (widget.geometry() != rectangle)
        widget.setGeometry(rectangle);
}

}  // namespace

MainRowView::MainRowView(QWidget *parent)
    : QWidget(parent), tabs(new QWidget(this)), arrowButton(new SymbolButton(smallButton, this)),
      closeAllButton(new SymbolButton(smallButton, this)), hideAllButton(new SymbolButton(smallButton, this))
{
    tabs->setAccessibleName(QStringLiteral("Tasks"));
    closeAllButton->setLook({.symbol = {},
                             .text = QStringLiteral("❌"),
                             .size = Metrics::closeAllSize,
                             .opacity = Metrics::closeAllOpacity});
    closeAllButton->setTip(QStringLiteral("Close All Windows"));
    hideAllButton->setLook({.symbol = QStringLiteral("arrow.down"),
                            .text = {},
                            .size = Metrics::hideAllSize,
                            .opacity = Metrics::hideAllOpacity});
    hideAllButton->setTip(QStringLiteral("Hide All Visible Windows"));
    arrowButton->hide();
}

void MainRowView::setLook(const GroundLook &newLook)
{
    if (look == newLook)
        return;
    look = newLook;
    update();
}

void MainRowView::arrange(const TaskbarGeometry &geometry)
{
    place(*this, geometry.mainRow);
    place(*tabs, geometry.tabs);
    place(*arrowButton, geometry.arrow);
    place(*closeAllButton, geometry.closeAll);
    place(*hideAllButton, geometry.hideAll);
    if (divider != geometry.divider) {
        divider = geometry.divider;
        update();
    }
}

void MainRowView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintTaskbarBackground(painter, rect(), look.opacity, look.translucent);
    if (!divider.isEmpty())
        painter.fillRect(divider, QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::dividerOpacity)));
}

}  // namespace korvane
