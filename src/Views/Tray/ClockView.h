// The time and the date at the end of the bar, each a button that opens its application.
#pragma once

#include "Ports/Platform.h"

#include <QAbstractButton>
#include <QWidget>

namespace korvane {

// One line of the clock.
class ClockLine final : public QAbstractButton {
    Q_OBJECT

public:
    ClockLine(const QString &tip, QWidget *parent);
    // Repaints when the line differs.
    void setLine(const QString &line);

protected:
    void paintEvent(QPaintEvent *event) override;
};

class ClockView final : public QWidget {
    Q_OBJECT

public:
    ClockView(platform::Platform &platform, QWidget *parent);

    // While a tab's width is being set the bar stays still, and so does its clock.
    void setPaused(bool paused);
    // The longest time between two updates, on a system that does not report when its clock is set.
    void setRefreshSeconds(std::int64_t seconds);

    QString time() const { return timeLine->text(); }
    QString date() const { return dateLine->text(); }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void look();
    void openApplication(const std::string &bundleIdentifier);

    platform::Platform &platform;
    ClockLine *timeLine, *dateLine;
    std::int64_t refreshSeconds = 2;
    bool paused = false;
    platform::Subscription next, clockChanges;
};

}  // namespace korvane
