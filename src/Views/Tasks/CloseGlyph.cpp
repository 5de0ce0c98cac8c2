#include "Views/Tasks/CloseGlyph.h"

#include "Views/Kit/Metrics.h"

namespace korvane {

CloseGlyph::CloseGlyph(QWidget *parent) : SymbolButton({metrics::closeGlyphSide, metrics::closeGlyphSide}, parent)
{
    setLook({.symbol = QStringLiteral("xmark.bold"),
             .text = {},
             .size = metrics::closeGlyphSize,
             .opacity = metrics::closeGlyphOpacity});
    setTip(QStringLiteral("Close"));
}

void CloseGlyph::place()
{
    move(parentWidget()->width() - width(), 0);
}

}  // namespace korvane
