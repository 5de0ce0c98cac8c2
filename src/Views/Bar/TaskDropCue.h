// What a drag shows on the button beneath it: an outline where the drop would group, a bar at the left edge where it
// would reorder. The cue lies over the bar and takes no hits.
#pragma once

#include <QWidget>

namespace korvane {

class TaskDropCue final : public QWidget {
    Q_OBJECT

public:
    enum class Kind { before, into };

    explicit TaskDropCue(QWidget *parent);
    // `button` in the parent's coordinates.
    void showOn(const QRect &button, Kind kind);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Kind kind = Kind::into;
};

}  // namespace korvane
