// A plain line of a group's window list that can be pressed: by the pointer, or by the keys that its popover has taken.
#pragma once

#include "Models/Tasks/TaskMenus.h"

#include <QAbstractButton>

namespace korvane {

class ListButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit ListButton(QWidget *parent);

    // Whether it is the one that the keys are for. Its window never has the focus of the desktop, so that the toolkit
    // does not say so.
    void setHighlighted(bool highlighted);

Q_SIGNALS:
    // Its context menu has closed.
    void menuClosed();

protected:
    // Empty for none.
    virtual Menu contextMenu() const { return {}; }
    virtual void paintContent(QPainter &painter) = 0;

    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void openMenu(const QPoint &place);

    bool isHighlighted = false;
};

}  // namespace korvane
