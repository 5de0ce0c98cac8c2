// A rounded panel above the control it belongs to: a list, a slider. It never takes the focus, so the active window of
// the desktop stays active.
#pragma once

#include "Ports/Platform.h"

#include <QPointer>
#include <QWidget>

namespace korvane {

class Popover final : public QWidget {
    Q_OBJECT

public:
    enum class Keyboard {
        left,  // the window with the focus keeps it: when a hovering pointer or the wheel opens the popover
        taken  // grabbed while open: Tab and the arrows move between the controls, Return presses, Escape closes
    };

    // The popover belongs to the anchor and is deleted with it.
    Popover(platform::Platform &platform, QWidget &anchor);
    ~Popover() override;

    // The name in the accessibility tree.
    void setName(const QString &name);
    // Takes ownership of the content and replaces the one before. When the content's size hint changes, the open
    // popover is resized and its lower edge stays in place.
    void setContent(QWidget *content);
    // Shows it above the anchor. If it is already open, this can only take the keyboard.
    void open(Keyboard keyboard);
    bool isOpen() const { return isVisible(); }
    // Whether any popover of the program is open. A bar must not hide while one of its popovers is open.
    static bool anyOpen() { return openCount > 0; }

Q_SIGNALS:
    void opened();
    // For whatever reason it closed.
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
