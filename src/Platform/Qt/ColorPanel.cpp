#include "Platform/Qt/ColorPanel.h"

#include "Ports/Panels.h"

#include <QColor>

namespace korvane::platform {

ColorPanel::ColorPanel(Panels *windowPanels) : panels(windowPanels)
{
    // There are no buttons, because there is nothing to confirm: each colour is used as soon as it is tried.
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
    // Neither the previous caller nor the new one must be told about the initial colour.
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
