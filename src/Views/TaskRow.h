// The grounds on which the tabs of a row stand.
#pragma once

#include "Models/TaskLayoutEngine.h"

#include <QWidget>

namespace korvane {

// How a ground is drawn.
struct GroundLook {
    double opacity = 1;
    bool translucent = false;
    friend bool operator==(const GroundLook &, const GroundLook &) = default;
};

// The main row: the bar itself.
class MainRowGround final : public QWidget {
    Q_OBJECT

public:
    explicit MainRowGround(QWidget *parent);
    void setLook(const GroundLook &look);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    GroundLook look;
};

// The card of one overflow row above the bar.
class OverflowRowCard final : public QWidget {
    Q_OBJECT

public:
    explicit OverflowRowCard(QWidget *parent);
    // The row's full height; the card may show only its top strip.
    void setLook(const GroundLook &look, double rowHeight);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    GroundLook look;
    double rowHeight = 0;
};

}  // namespace korvane
