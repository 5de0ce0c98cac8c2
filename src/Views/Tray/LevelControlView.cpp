#include "Views/Tray/LevelControlView.h"

#include "Models/Tray/SystemLevels.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/Popover.h"
#include "Views/Kit/SymbolPainting.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QWheelEvent>
#include <cmath>
#include <utility>

namespace korvane {
namespace {

constexpr int sliderSteps = 1000;
constexpr QSize buttonSize(Metrics::trayButtonWidth, Metrics::buttonHeight);
// One notch of the wheel, in eighths of a degree.
constexpr double notch = 120;

}  // namespace

LevelControlView::LevelControlView(platform::Platform &system, LevelControlActions actions, const Style &controlStyle,
                                   QWidget *parent)
    : SymbolButton(buttonSize, parent), platform(system), style(controlStyle),
      level(system.loop, {std::move(actions.current), std::move(actions.set), std::move(actions.scrollRate),
                          [this] { showLevel(); }})
{
    setTip(style.tip);
    connect(this, &QAbstractButton::clicked, this, [this] {
        clicked = true;
        level.click();
        clicked = false;
    });
    showLevel();
}

// Deleted first: the popover reports that it closes, and this object must still be complete then.
LevelControlView::~LevelControlView()
{
    delete popover;
}

void LevelControlView::wheelEvent(QWheelEvent *event)
{
    // A touchpad reports pixels that the fingers moved, a wheel reports notches.
    const double delta = event->pixelDelta().isNull() ? event->angleDelta().y() / notch : event->pixelDelta().y();
    event->setAccepted(level.scroll(delta));
}

void LevelControlView::showEvent(QShowEvent *event)
{
    SymbolButton::showEvent(event);
    level.readSystem();
}

void LevelControlView::hideEvent(QHideEvent *event)
{
    SymbolButton::hideEvent(event);
    level.disappeared();
    if (popover)
        popover->close();
}

void LevelControlView::makePopover()
{
    popover = new Popover(platform, *this);
    popover->setName(style.tip);
    auto *content = new QWidget;
    auto *row = new QHBoxLayout(content);
    row->setSpacing(Metrics::sliderSpacing);
    row->setContentsMargins(Metrics::sliderPadding, Metrics::sliderPadding, Metrics::sliderPadding,
                            Metrics::sliderPadding);
    picture = new QLabel;
    picture->setFixedWidth(Metrics::trayButtonWidth);
    picture->setAlignment(Qt::AlignCenter);
    sliderWidget = new QSlider(Qt::Horizontal);
    sliderWidget->setFixedWidth(Metrics::sliderWidth);
    sliderWidget->setRange(0, sliderSteps);
    sliderWidget->setSingleStep(sliderSteps / 100);
    sliderWidget->setPageStep(sliderSteps / 10);
    sliderWidget->setAccessibleName(style.tip);
    percent = new QLabel;
    percent->setFixedWidth(Metrics::percentWidth);
    percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    percent->setFont(systemFont(Metrics::popoverFontSize));
    QPalette light = percent->palette();
    light.setColor(QPalette::WindowText, Qt::white);
    percent->setPalette(light);
    row->addWidget(picture);
    row->addWidget(sliderWidget);
    row->addWidget(percent);
    popover->setContent(content);
    connect(sliderWidget, &QSlider::valueChanged, this,
            [this](int value) { level.slide(static_cast<float>(value) / sliderSteps); });
    connect(popover, &Popover::closed, this, [this] { level.dismissed(); });
}

void LevelControlView::showLevel()
{
    const QString symbol = QString::fromLatin1(style.symbol(level.level()).data());
    setLook({.symbol = symbol, .text = {}, .size = style.size, .opacity = 1, .stretchY = style.stretchY});
    setAccessibleDescription(QStringLiteral("%1%").arg(TrayRules::percent(level.level())));
    if (level.showingSlider() && !popover)
        makePopover();
    if (!popover)
        return;
    showPicture(symbol);
    percent->setText(QStringLiteral("%1%").arg(TrayRules::percent(level.level())));
    {
        const QSignalBlocker quiet(sliderWidget);
        sliderWidget->setValue(static_cast<int>(std::lround(level.level() * sliderSteps)));
    }
    if (!level.showingSlider())
        popover->close();
    else if (!popover->isOpen())
        popover->open(clicked ? Popover::Keyboard::taken : Popover::Keyboard::left);
}

// The symbol changes less often than the level, so its picture is made only when it changes.
void LevelControlView::showPicture(const QString &symbol)
{
    const double ratio = devicePixelRatioF();
    if (pictured == symbol && picture->pixmap(Qt::ReturnByValue).devicePixelRatio() == ratio)
        return;
    pictured = symbol;
    picture->setPixmap(symbolPixmap(symbol, Metrics::sliderSymbolSize, ratio));
}

BrightnessControlView::BrightnessControlView(AppModel &model, platform::Platform &system, QWidget *parent)
    : LevelControlView(system,
                       {[&system] { return SystemBrightness::current(system.brightness); },
                        [&system](float wanted) { return SystemBrightness::set(system.brightness, wanted); },
                        [&model] { return model.settings().brightnessScrollRate; },
                        {}},
                       {QStringLiteral("Screen Brightness"), TrayRules::brightnessSymbol, Metrics::brightnessSize, 1},
                       parent)
{}

VolumeControlView::VolumeControlView(AppModel &model, platform::Platform &system, QWidget *parent)
    : LevelControlView(system,
                       {[&system] { return SystemVolume::current(system.audio); },
                        [&system](float wanted) {
                            SystemVolume::set(system.audio, wanted);
                            return true;
                        },
                        [&model] { return model.settings().volumeScrollRate; },
                        {}},
                       {QStringLiteral("Volume"), TrayRules::volumeSymbol, Metrics::volumeSize, Metrics::volumeStretch},
                       parent),
      changes(system.audio.observeChanges([this] { readSystem(); }))
{}

}  // namespace korvane
