// Makes texts from strangers fit to draw and to measure.
#pragma once

#include <QFontMetricsF>
#include <QString>
#include <string>
#include <string_view>
#include <unordered_map>

namespace korvane {

// The text is cut to a length that can be shaped, and has no control characters or line ends. Invalid UTF-8 becomes
// replacement characters.
QString displayText(std::string_view text);

// Measures each text once.
class TextMeasurer {
public:
    explicit TextMeasurer(const QFont &font) : metrics(font) {}

    // In points.
    double width(std::string_view text);

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    QFontMetricsF metrics;
    std::unordered_map<std::string, double, Hash, std::equal_to<>> widths;
};

}  // namespace korvane
