#include "Platform/Qt/QtDialogs.h"

#include "Platform/Qt/AlertBox.h"
#include "Platform/Qt/ColorPanel.h"

#include <QLineEdit>

namespace korvane::platform {

QtDialogs::QtDialogs(Panels *windowPanels) : panels(windowPanels) {}

QtDialogs::~QtDialogs() = default;

int QtDialogs::runModal(const Alert &alert, double horizontalCenterFraction)
{
    AlertBox box(alert);
    QLineEdit *field = nullptr;
    if (alert.field) {
        field = new QLineEdit(QString::fromStdString(alert.field->text));
        field->setPlaceholderText(QString::fromStdString(alert.field->placeholder));
        field->setFixedSize(alert.field->width, alert.field->height);
        field->setAccessibleName(QString::fromStdString(alert.informative));
        field->selectAll();
        box.setAccessory(field);
        field->setFocus();
    }
    const int answer = box.run(horizontalCenterFraction, panels);
    if (field)
        alert.field->text = field->text().toStdString();
    return answer;
}

void QtDialogs::openColorPanel(const std::optional<Rgb> &initial, std::function<void(const Rgb &)> changed)
{
    if (!colorPanel)
        colorPanel = std::make_unique<ColorPanel>(panels);
    colorPanel->open(initial, std::move(changed));
}

}  // namespace korvane::platform
