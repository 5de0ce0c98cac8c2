// The one way to give a widget a tool tip.
#pragma once

#include <QString>

class QWidget;

namespace korvane {

// Texts come from strangers: what looks like markup is shown as it stands. The tip also shows over a window that is not
// the active one, which a bar never is.
void setPlainToolTip(QWidget &widget, const QString &text);

}  // namespace korvane
