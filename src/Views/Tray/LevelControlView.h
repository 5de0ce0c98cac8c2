// The buttons for the brightness of the screen and the volume of the sound. The slider of each stands above it while
// the wheel turns, or after a click.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Models/Tray/Tray.h"
#include "Views/Kit/SymbolButton.h"

#include <QPointer>
#include <string_view>

class QLabel;
class QSlider;

namespace korvane {

class Popover;

class LevelControlView : public SymbolButton {
    Q_OBJECT

public:
    const LevelControl &control() const { return level; }
    // Null until it is first shown.
    QSlider *slider() const { return sliderWidget; }

protected:
    // How the symbol of a level is drawn.
    struct Style {
        QString tip;
        std::string_view (*symbol)(float level);
        double size, stretchY;
    };

    LevelControlView(platform::Platform &platform, LevelControlActions actions, const Style &style, QWidget *parent);
    ~LevelControlView() override;
    // Reads the level from the system; it may have changed.
    void readSystem() { level.readSystem(); }

    void wheelEvent(QWheelEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showLevel();
    void makePopover();
    void showPicture(const QString &symbol);

    platform::Platform &platform;
    Style style;
    LevelControl level;
    QPointer<Popover> popover;
    QLabel *picture = nullptr, *percent = nullptr;
    QSlider *sliderWidget = nullptr;
    QString pictured;      // the symbol that the slider shows now
    bool clicked = false;  // opened by a click; then the slider takes the keys
};

class BrightnessControlView final : public LevelControlView {
    Q_OBJECT

public:
    BrightnessControlView(AppModel &model, platform::Platform &platform, QWidget *parent);
};

class VolumeControlView final : public LevelControlView {
    Q_OBJECT

public:
    VolumeControlView(AppModel &model, platform::Platform &platform, QWidget *parent);

private:
    platform::Subscription changes;
};

}  // namespace korvane
