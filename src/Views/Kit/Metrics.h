// Every size, radius, opacity and colour that is drawn, once and by name. Values that the layout rules also use are
// taken from LayoutMetrics. Points; opacities from 0 to 1.
#pragma once

#include "Models/Bar/LayoutMetrics.h"

#include <QColor>

namespace korvane::Metrics {

// The bar
using LayoutMetrics::barHeight;
inline constexpr double gradientTopOpacity = 0.30;
inline constexpr double gradientBottomOpacity = 0.54;
inline constexpr QColor material(46, 49, 56, 235);  // under the gradient, when the desktop can shine through
inline constexpr QColor opaqueMaterial(46, 49, 56);

inline constexpr int barEndPadding = 2;  // between the last control and the screen's edge
inline constexpr int dividerPadding = 5;
inline constexpr double dividerOpacity = 0.16;  // of white
inline constexpr int narrowestEndZone = 4;      // behind the last tab, for drops

// The controls at the end of the bar
inline constexpr int trayButtonWidth = 18;
inline constexpr int smallButtonHeight = 14;
inline constexpr int clockWidth = 82;
inline constexpr double arrowSize = 10;
inline constexpr double lockSize = 9;
inline constexpr double refreshSize = 9;
inline constexpr double closeAllSize = 6;
inline constexpr double closeAllOpacity = 0.75;
inline constexpr double hideAllSize = 10;
inline constexpr double hideAllOpacity = 0.82;
inline constexpr int bufferTrailingPadding = 10;

inline constexpr int clockFontSize = 11;
inline constexpr int clockTextDrop = 1;
inline constexpr int clockShift = 1;  // to the left
inline constexpr double brightnessSize = 11;
inline constexpr double volumeSize = 10;
inline constexpr double volumeStretch = 1.15;
inline constexpr int sliderSpacing = 10;
inline constexpr int sliderPadding = 12;
inline constexpr int sliderWidth = 150;
inline constexpr int percentWidth = 38;
inline constexpr double sliderSymbolSize = 13;
inline constexpr double attentionButtonMarkSize = 14;
inline constexpr int attentionMarkSize = 11;  // on a row of the list
inline constexpr int attentionRowWidth = 210;
inline constexpr int attentionRowHeight = 28;
inline constexpr int attentionRowSpacing = 8;
inline constexpr int attentionIconSize = 22;
inline constexpr int attentionTitleDrop = 6;

// A drag over the bar
inline constexpr double cueRadius = 4;
inline constexpr double cueStroke = 2;
inline constexpr int cueCapsuleWidth = 3;
inline constexpr int cueCapsuleHeight = 30;
inline constexpr int cueCapsuleShift = 3;  // to the left of the button's edge
inline constexpr int endCapZoneHeight = 38;

// The grip of a tab whose width is being set
inline constexpr int gripWidth = 3;
inline constexpr int gripHeight = 17;
inline constexpr int gripHitWidth = 13;
inline constexpr double gripCentreY = 19.5;  // from the top of the button
inline constexpr double gripOpacity = 0.95;

// An overflow row's card
inline constexpr int cardRadius = 8;
inline constexpr double cardStrokeWidth = 0.5;
inline const QColor cardStroke = QColor::fromRgbF(0.025F, 0.028F, 0.035F, 0.2F);
using LayoutMetrics::cardPadding;
using LayoutMetrics::endCapWidth;
inline constexpr int endCapHeight = 28;
inline constexpr double endCapRadius = 2;
inline constexpr double endCapFill = 0.1;
inline constexpr double endCapStroke = 0.18;
inline constexpr int endCapFontSize = 10;
inline constexpr double endCapTextOpacity = 0.32;

// A task's button
inline constexpr int buttonHeight = 28;
using LayoutMetrics::buttonIconSize;
using LayoutMetrics::buttonPadding;
using LayoutMetrics::buttonSpacing;
using LayoutMetrics::iconTextSpacing;
inline constexpr int buttonFontSize = 12;
inline constexpr int buttonRadius = 4;
inline constexpr double stripHeight = 2;
inline constexpr double stripPadding = 7;
inline constexpr double glyphFontScale = 0.64;  // of the icon's square
inline constexpr double chevronSize = 8;
inline constexpr double chevronOpacity = 0.65;
inline constexpr int closeGlyphSide = 11;
inline constexpr double closeGlyphSize = 5;
inline constexpr double closeGlyphOpacity = 0.55;

// A panel above the control it belongs to
inline constexpr double popoverRadius = 8;
inline constexpr int popoverGap = 4;  // to the control and to the screen's edges
inline constexpr int popoverFontSize = 13;
inline constexpr QColor popoverGround(38, 40, 46, 250);
inline constexpr QColor popoverStroke(255, 255, 255, 46);
inline constexpr QColor popoverControl(84, 88, 98);  // a scroll bar and its track
inline constexpr QColor popoverTrack(52, 55, 62);

// A group's window list
inline constexpr int listSpacing = 4;
inline constexpr int listPadding = 4;
inline constexpr int listDividerHeight = 1;
inline constexpr int listWidth = 220;       // at least
inline constexpr int widestListText = 420;  // a longer text is cut
inline constexpr int listScrollHeight = 420;
inline constexpr int rowHeight = 28;
inline constexpr int rowPadding = 8;
inline constexpr int rowSpacing = 8;
inline constexpr int rowIconSize = 20;
inline constexpr double rowFocusOpacity = 0.12;  // of white
inline constexpr int headerTopPadding = 6;
inline constexpr int headerIconSize = 22;
inline constexpr double headerChevronSize = 10;
inline constexpr int fieldTextMargin = 2;  // the toolkit's own margin between a field's edge and its text
inline constexpr double secondaryOpacity = 0.55;
inline constexpr int hideAllRowHeight = 30;
inline constexpr double hideAllRowSymbolSize = 13;

// Changes of height
inline constexpr double heightAnimationSeconds = 0.1;
inline constexpr double animationFrameSeconds = 1.0 / 60;

// Texts come from strangers: a longer one is cut before it is shaped.
inline constexpr int longestText = 4096;
inline constexpr int widestMenuText = 420;

}  // namespace korvane::Metrics
