// The one way to give a widget a tool tip.
#pragma once

#include <QString>

class QWidget;

namespace korvane {

// Texts come from strangers, so markup is shown as plain text. The tip also shows when the widget's window is not the
// active one; a bar never is the active window.
void setPlainToolTip(QWidget &widget, const QString &text);

}  // namespace korvane
