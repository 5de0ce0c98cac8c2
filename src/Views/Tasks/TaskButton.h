// The button of one entry of a task row: what tasks and groups have in common. It draws a look and reports what a
// person does with it; it holds no rule.
#pragma once

#include "Models/Tasks/TaskMenus.h"
#include "Views/Kit/DragStart.h"
#include "Views/Tasks/TaskButtonHost.h"
#include "Views/Tasks/TaskButtonLook.h"

#include <QAbstractButton>
#include <QStaticText>
#include <memory>

class QMenu;

namespace korvane {

class CloseGlyph;

class TaskButton : public QAbstractButton {
    Q_OBJECT

public:
    // The host outlives the button.
    TaskButton(const TaskButtonHost &host, QWidget *parent);

    // Shows the entry, which is of the kind that the button was made for. Repaints only when the look differs.
    virtual void setEntry(const TaskbarEntry &entry, bool stripAtTop) = 0;
    const TaskButtonLook &currentLook() const { return look; }
    // Above the button.
    void openMenu();

    QSize sizeHint() const override;

protected:
    struct Drag {
        std::string id;
        std::set<std::string> windowIDs;
    };

    virtual Menu contextMenu() const = 0;
    virtual Drag drag() const = 0;
    // Closes the window, or what a group asks for in its place.
    virtual void closeEntry() = 0;

    void setLook(TaskButtonLook look);

    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    const TaskButtonHost &host;

private:
    void openMenuAt(int x);
    QRectF textRectangle() const;
    const QStaticText &elidedText();
    void paintChevron(QPainter &painter, const QRectF &text);

    TaskButtonLook look;
    QString shownText;   // the whole text, fit to draw
    QStaticText elided;  // as it was cut last, shaped once for all its paints
    double elidedWidth = 0;
    bool elidedIsValid = false;
    CloseGlyph *closeGlyph = nullptr;  // there while the look has one
    DragStart dragStart;
};

// The button that fits the entry's kind, already showing it.
TaskButton *makeTaskButton(const TaskButtonHost &host, const TaskbarEntry &entry, bool stripAtTop, QWidget *parent);

}  // namespace korvane
