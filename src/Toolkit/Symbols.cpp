#include "Toolkit/Symbols.h"

#include <QFile>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#include <algorithm>

// The macro must be used outside of a namespace. Without it the linker drops the resources of a static library.
static void loadResources()
{
    Q_INIT_RESOURCE(korvane);
}

namespace korvane::platform {
namespace {

constexpr int largestSymbolSide = 1024;

bool isPlainName(std::string_view name)
{
    return !name.empty() && name.size() <= 64 && std::all_of(name.begin(), name.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') || character == '.';
    });
}

}  // namespace

QImage symbolImage(std::string_view name, int side, const QColor &color)
{
    if (!isPlainName(name) || side < 1 || side > largestSymbolSide)
        return {};
    loadResources();
    const QString path =
        QStringLiteral(":/korvane/symbols/%1.svg").arg(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
    if (!QFile::exists(path))
        return {};
    QSvgRenderer drawing(path);
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

}  // namespace korvane::platform
