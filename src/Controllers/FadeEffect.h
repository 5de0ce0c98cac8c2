// Draws a widget's last picture at an opacity. While it fades nothing of the widget is drawn anew.
#pragma once

#include <QGraphicsEffect>
#include <QPixmap>

namespace korvane {

class FadeEffect final : public QGraphicsEffect {
    Q_OBJECT

public:
    explicit FadeEffect(QObject *parent) : QGraphicsEffect(parent) { setEnabled(false); }

    // From 0 to 1; at 1 the widget draws itself as ever.
    void setOpacity(double opacity);
    double opacity() const { return current; }

protected:
    void draw(QPainter *painter) override;
    void sourceChanged(ChangeFlags flags) override;

private:
    double current = 1;
    bool asked = false;  // by this effect, which changes nothing of the widget
    QPixmap picture;
    QPoint offset;
};

}  // namespace korvane
