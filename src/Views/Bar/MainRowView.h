// The bar itself: its background, the room for the tabs, and the controls at its end.
#pragma once

#include "Views/Bar/TaskbarGeometry.h"
#include "Views/Kit/GroundLook.h"

#include <QWidget>

namespace korvane {

class SymbolButton;

class MainRowView final : public QWidget {
    Q_OBJECT

public:
    explicit MainRowView(QWidget *parent);

    void setLook(const GroundLook &look);
    // Puts the row and its controls where they belong.
    void arrange(const TaskbarGeometry &geometry);

    // The tabs' parent. It cuts off the parts of tabs that reach into the controls.
    QWidget &tabArea() { return *tabs; }
    // Shown while there are overflow rows.
    SymbolButton &arrow() { return *arrowButton; }
    SymbolButton &closeAll() { return *closeAllButton; }
    SymbolButton &hideAll() { return *hideAllButton; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    GroundLook look;
    QRect divider;
    QWidget *tabs;
    SymbolButton *arrowButton, *closeAllButton, *hideAllButton;
};

}  // namespace korvane
