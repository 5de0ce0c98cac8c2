#include "Views/Tasks/CloseGlyph.h"

#include "Views/Kit/Metrics.h"

namespace korvane {

CloseGlyph::CloseGlyph(QWidget *parent) : SymbolButton({Metrics::closeGlyphSide, Metrics::closeGlyphSide}, parent)
{
    setLook({.symbol = QStringLiteral("xmark.bold"),
             .text = {},
             .size = Metrics::closeGlyphSize,
             .opacity = Metrics::closeGlyphOpacity});
    setTip(QStringLiteral("Close"));
}

void CloseGlyph::place()
{
    move(parentWidget()->width() - width(), 0);
}

}  // namespace korvane
