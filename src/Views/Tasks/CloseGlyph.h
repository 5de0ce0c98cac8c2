// The small cross in the corner of a task.
#pragma once

#include "Views/Kit/SymbolButton.h"

namespace korvane {

class CloseGlyph final : public SymbolButton {
    Q_OBJECT

public:
    explicit CloseGlyph(QWidget *parent);

    // Moves the glyph into the upper right corner of its parent.
    void place();
};

}  // namespace korvane
