// Draws a widget's last picture at an opacity. The widget itself is not drawn again while it fades.
#pragma once

#include <QGraphicsEffect>
#include <QPixmap>

namespace korvane {

class FadeEffect final : public QGraphicsEffect {
    Q_OBJECT

public:
    explicit FadeEffect(QObject *parent) : QGraphicsEffect(parent) { setEnabled(false); }

    // From 0 to 1; at 1 the widget draws itself as usual.
    void setOpacity(double opacity);
    double opacity() const { return current; }

protected:
    void draw(QPainter *painter) override;
    void sourceChanged(ChangeFlags flags) override;

private:
    double current = 1;
    bool asked = false;  // this effect asked for the update, so the widget has not changed
    QPixmap picture;
    QPoint offset;
};

}  // namespace korvane
