// A plain line of a group's window list that can be pressed: with the pointer, or with the keys while its popover has
// the keyboard.
#pragma once

#include "Models/Tasks/TaskMenus.h"

#include <QAbstractButton>

namespace korvane {

class ListButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit ListButton(QWidget *parent);

    // Whether this button receives the keys. The toolkit cannot tell, because the button's window never has the focus
    // of the desktop.
    void setHighlighted(bool highlighted);

Q_SIGNALS:
    // Its context menu has closed.
    void menuClosed();

protected:
    // An empty menu means that there is none.
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
