// A rounded panel that stands above the control it belongs to: a list, a slider. It never takes the focus, so the
// active window of the desktop stays what it is.
#pragma once

#include "Ports/Platform.h"

#include <QPointer>
#include <QWidget>

namespace korvane {

class Popover final : public QWidget {
    Q_OBJECT

public:
    enum class Keyboard {
        left,  // it goes on to whoever has the focus: for what a hovering pointer or the wheel has opened
        taken  // grabbed while open: Tab and the arrows move between the controls, Return presses, Escape closes
    };

    // Belongs to the anchor and goes with it.
    Popover(platform::Platform &platform, QWidget &anchor);
    ~Popover() override;

    // Named for the accessibility tree.
    void setName(const QString &name);
    // Takes the content over, in place of the one before. A change of its size hint resizes the open popover, its lower
    // edge staying where it is.
    void setContent(QWidget *content);
    // Shows it above the anchor. Of an open one only the keyboard may still be taken.
    void open(Keyboard keyboard);
    bool isOpen() const { return isVisible(); }
    // Whether any popover of the program is open: a bar that holds one must not go away beneath it.
    static bool anyOpen() { return openCount > 0; }

Q_SIGNALS:
    void opened();
    // By whatever closed it.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void place();
    void takeKeyboard();
    void pressedSomewhere();

    platform::Platform &platform;
    QPointer<QWidget> anchor;
    QWidget *content = nullptr;
    Keyboard keyboard = Keyboard::left;
    platform::Subscription presses;
    static inline int openCount = 0;
};

}  // namespace korvane
