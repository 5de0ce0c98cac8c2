// Counts what widgets repaint.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>

namespace korvane::testing {

// Counts the paint events of every widget of the program while it lives.
class PaintCounter final : public QObject {
public:
    PaintCounter() { qApp->installEventFilter(this); }
    int count() const { return paints; }
    // Of widgets of that class and of those derived from it.
    template <typename Widget> int countOf() const { return counts.value(&Widget::staticMetaObject); }
    void reset()
    {
        paints = 0;
        counts.clear();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            ++paints;
            for (const QMetaObject *type = watched->metaObject(); type; type = type->superClass())
                ++counts[type];
        }
        return false;
    }

private:
    int paints = 0;
    QHash<const QMetaObject *, int> counts;
};

// Serves everything that waits, also what it brings about.
inline void settle()
{
    for (int i = 0; i < 5; ++i) {
        QApplication::sendPostedEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
}

}  // namespace korvane::testing
