#include "Views/Tray/ClockView.h"

#include "Models/Tray/Tray.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/ToolTip.h"

#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <cmath>

namespace korvane {
namespace {

constexpr double secondsOfAMinute = 60;

}  // namespace

ClockLine::ClockLine(const QString &tip, QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setFont(systemFont(Metrics::clockFontSize));
    setPlainToolTip(*this, tip);
    setAccessibleDescription(tip);
}

void ClockLine::setLine(const QString &line)
{
    if (text() == line)
        return;
    setText(line);
    setAccessibleName(line);
    update();
}

void ClockLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Qt::white);
    painter.setFont(font());
    painter.drawText(rect().adjusted(0, Metrics::clockTextDrop, 0, Metrics::clockTextDrop),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

ClockView::ClockView(platform::Platform &system, QWidget *parent)
    : QWidget(parent), platform(system), timeLine(new ClockLine(QStringLiteral("Open Clock"), this)),
      dateLine(new ClockLine(QStringLiteral("Open Calendar"), this))
{
    connect(timeLine, &QAbstractButton::clicked, this, [this] { openApplication("com.apple.clock"); });
    connect(dateLine, &QAbstractButton::clicked, this, [this] { openApplication("com.apple.iCal"); });
    clockChanges = platform.loop.observeClockChanges([this] { look(); });
    look();
}

void ClockView::setPaused(bool nowPaused)
{
    if (paused == nowPaused)
        return;
    paused = nowPaused;
    if (paused)
        next.reset();
    else
        look();
}

void ClockView::setRefreshSeconds(std::int64_t seconds)
{
    refreshSeconds = seconds;
}

// The text cannot change before the next minute, unless somebody sets the clock.
void ClockView::look()
{
    if (paused)
        return;
    const double now = platform.loop.wallNow().count();
    const auto moment = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(now * 1000));
    const QLocale locale = QLocale::system();
    timeLine->setLine(locale.toString(moment.time(), QStringLiteral("h:mm AP")));
    dateLine->setLine(locale.toString(moment.date(), QStringLiteral("ddd MM/dd/yy")));
    const double toNextMinute = secondsOfAMinute - std::fmod(now, secondsOfAMinute);
    const double wait = clockChanges
                            ? toNextMinute
                            : std::min(toNextMinute, static_cast<double>(TrayRules::clockInterval(refreshSeconds)));
    next = platform.loop.after(platform::Seconds(wait), [this] { look(); });
}

void ClockView::openApplication(const std::string &bundleIdentifier)
{
    if (const auto path = platform.launching.applicationPath(bundleIdentifier))
        platform.launching.openApplication(*path, true);
}

void ClockView::resizeEvent(QResizeEvent *)
{
    const int half = height() / 2;
    timeLine->setGeometry(-Metrics::clockShift, 0, width(), half);
    dateLine->setGeometry(-Metrics::clockShift, half, width(), height() - half);
}

}  // namespace korvane
