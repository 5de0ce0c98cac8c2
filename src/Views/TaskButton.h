// The button of one entry of a task row. It draws its look and reports the click; it holds no rule.
#pragma once

#include "Views/Painting.h"
#include "Views/TaskButtonLook.h"

#include <QAbstractButton>

namespace korvane {

class TaskButton : public QAbstractButton {
    Q_OBJECT

public:
    TaskButton(IconPixmaps &icons, QWidget *parent);

    // Repaints when the look differs, and tells the accessibility tree of a new name.
    void setLook(TaskButtonLook look);
    const TaskButtonLook &currentLook() const { return look; }

    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void paintIcon(QPainter &painter, const QRectF &square);
    QRectF textRectangle() const;
    const QString &elidedText();
    QString countText() const;

    IconPixmaps &icons;
    TaskButtonLook look;
    QString shownText;  // the whole text, fit to draw
    QString elided;     // as it was cut last
    bool elidedIsValid = false;
};

}  // namespace korvane
