// The lines of a group's window list: its heading, one line for each window, and the line that hides all windows.
#pragma once

#include "Views/Kit/DragStart.h"
#include "Views/Kit/ListButton.h"
#include "Views/Tasks/TaskButtonHost.h"
#include "Views/Tasks/TaskButtonLook.h"

class QLineEdit;

namespace korvane {

class CloseGlyph;

class GroupListHeader final : public ListButton {
    Q_OBJECT

public:
    // A custom group's heading shows its name in a field, so that the name can be changed.
    GroupListHeader(const TaskButtonHost &host, const RunningAppGroup &group, QWidget *parent);

    void setGroup(const RunningAppGroup &group);
    // Null for an automatic group.
    QLineEdit *nameField() const { return field; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    Menu contextMenu() const override;
    void paintContent(QPainter &painter) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QRect textRectangle() const;

    const TaskButtonHost &host;
    RunningAppGroup group;
    QString title;
    QLineEdit *field = nullptr;
};

class GroupWindowRow final : public ListButton {
    Q_OBJECT

public:
    GroupWindowRow(const TaskButtonHost &host, const RunningAppItem &item, QWidget *parent);

    void setItem(const RunningAppItem &item);
    const RunningAppItem &shownItem() const { return item; }
    const TaskButtonLook &currentLook() const { return look; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    Menu contextMenu() const override;
    void paintContent(QPainter &painter) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    const TaskButtonHost &host;
    RunningAppItem item;
    TaskButtonLook look;
    QString title;
    CloseGlyph *closeGlyph = nullptr;  // null when the look has no close glyph
    DragStart dragStart;
};

class HideAllRow final : public ListButton {
    Q_OBJECT

public:
    explicit HideAllRow(QWidget *parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintContent(QPainter &painter) override;
};

}  // namespace korvane
