// The button of one entry of a task row: what tasks and groups have in common. It draws a look and reports what a
// person does with the button; it holds no rule.
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

    // Shows the entry. It must be of the kind that the button was made for. Repaints only when the look differs.
    virtual void setEntry(const TaskbarEntry &entry, bool stripAtTop) = 0;
    const TaskButtonLook &currentLook() const { return look; }
    // Opens the menu above the button.
    void openMenu();

    QSize sizeHint() const override;

protected:
    struct Drag {
        std::string id;
        std::set<std::string> windowIDs;
    };

    virtual Menu contextMenu() const = 0;
    virtual Drag drag() const = 0;
    // Closes the window. A group that stands for several windows asks whether to quit instead.
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
    QStaticText elided;  // the text as it was last cut; shaped once and then painted many times
    double elidedWidth = 0;
    bool elidedIsValid = false;
    CloseGlyph *closeGlyph = nullptr;  // null when the look has no close glyph
    DragStart dragStart;
};

// Makes the button that fits the entry's kind. It already shows the entry.
TaskButton *makeTaskButton(const TaskButtonHost &host, const TaskbarEntry &entry, bool stripAtTop, QWidget *parent);

}  // namespace korvane
