// The card of one overflow row above the bar: its background, its tabs, the controls of the first row, the end cap.
#pragma once

#include "Views/Bar/TaskbarGeometry.h"
#include "Views/Kit/GroundLook.h"

#include <QWidget>

namespace korvane {

class SymbolButton;

class OverflowRowCard final : public QWidget {
    Q_OBJECT

public:
    // Only the row nearest the bar has the controls.
    OverflowRowCard(bool withControls, QWidget *parent);

    void setLook(const GroundLook &look);
    // A tucked card shows only its top strip. `mediaWidth` is the room that the sliders' buttons need; 0 for none.
    void arrange(const CardPlace &place, int mediaWidth);
    void setLocked(bool locked);

    // The tabs' parent.
    QWidget &tabArea() { return *tabs; }
    // Null on the rows further up.
    SymbolButton *lockButton() { return lock; }
    SymbolButton *refreshButton() { return refresh; }
    // Where the sliders' buttons stand on this card.
    const QRect &mediaPlace() const { return media; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    GroundLook look;
    double rowHeight = 0;
    QRect media;
    QWidget *tabs;
    SymbolButton *lock = nullptr, *refresh = nullptr;
};

}  // namespace korvane
