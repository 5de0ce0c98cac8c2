// A small plain button that shows one of the symbols, or a short text, and nothing else.
#pragma once

#include <QAbstractButton>
#include <QString>

namespace korvane {

class SymbolButton : public QAbstractButton {
    Q_OBJECT

public:
    // Where the picture lies in the button.
    struct Look {
        QString symbol;       // its name; empty when there is a text
        QString text;         // shown in place of a symbol
        double size = 10;     // of the symbol's square or of the font, in points
        double opacity = 1;   // of the whole button
        double stretchY = 1;  // of the symbol, vertically
        friend bool operator==(const Look &, const Look &) = default;
    };

    // The size never changes.
    SymbolButton(const QSize &size, QWidget *parent);

    // Repaints when the look differs.
    void setLook(const Look &look);
    const Look &currentLook() const { return look; }
    // The tool tip. It is also the button's name in the accessibility tree.
    void setTip(const QString &tip);

    QSize sizeHint() const override { return fixedSize; }

Q_SIGNALS:
    // The pointer came or left.
    void hoverChanged(bool hovered);

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QSize fixedSize;
    Look look;
};

}  // namespace korvane
