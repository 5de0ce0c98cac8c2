#include "Views/Kit/TitleText.h"

#include "Views/Kit/Metrics.h"

namespace korvane {
namespace {

// When this many texts were measured, all are forgotten, so that titles of closed windows do not stay.
constexpr std::size_t rememberedTexts = 4096;

}  // namespace

QString displayText(std::string_view text)
{
    // A character takes at most four bytes, so this holds the longest text that is shown.
    const auto bytes = std::min<std::size_t>(text.size(), std::size_t{4} * Metrics::longestText);
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(bytes));
    if (shown.size() > Metrics::longestText) {
        shown.truncate(Metrics::longestText);
        if (shown.back().isHighSurrogate())
            shown.chop(1);
    }
    for (QChar &character : shown)
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator
            || character == QChar::ParagraphSeparator)
            character = u' ';
    return shown;
}

double TextMeasurer::width(std::string_view text)
{
    if (const auto known = widths.find(text); known != widths.end())
        return known->second;
    if (widths.size() >= rememberedTexts)
        widths.clear();
    const double measured = metrics.horizontalAdvance(displayText(text));
    widths.emplace(std::string(text), measured);
    return measured;
}

}  // namespace korvane
