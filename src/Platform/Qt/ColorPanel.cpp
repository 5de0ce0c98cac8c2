#include "Platform/Qt/ColorPanel.h"

#include "Ports/Panels.h"

#include <QColor>

namespace korvane::platform {

ColorPanel::ColorPanel(Panels *windowPanels) : panels(windowPanels)
{
    // Without buttons: there is nothing to confirm, since each colour is taken as it is tried.
    setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
    setWindowFlags(Qt::Dialog | Qt::WindowStaysOnTopHint);
    setWindowTitle(QStringLiteral("Colors"));
    connect(this, &QColorDialog::currentColorChanged, this, [this](const QColor &chosen) {
        const QColor color = chosen.toRgb();
        if (apply && color.isValid())
            apply({color.redF(), color.greenF(), color.blueF()});
    });
}

void ColorPanel::open(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed)
{
    // Neither the one before nor the new one is to hear of the initial colour.
    apply = nullptr;
    if (initial)
        setCurrentColor(QColor::fromRgbF(static_cast<float>(initial->red), static_cast<float>(initial->green),
                                         static_cast<float>(initial->blue)));
    apply = std::move(changed);
    if (panels) {
        PanelTraits traits;
        traits.level = Level::alert;
        traits.canBecomeKey = true;
        panels->apply(winId(), traits);
    }
    show();
    raise();
    if (panels)
        panels->makeKeyAndOrderFront(winId());
    activateWindow();
}

}  // namespace korvane::platform
