#include "Platform/Qt/QtIcons.h"

#include "Toolkit/Images.h"
#include "Toolkit/Symbols.h"

#include <QPainter>
#include <QSvgRenderer>

static void loadResources()
{
    Q_INIT_RESOURCE(korvane);
}

namespace korvane::platform {
namespace {

constexpr int ownIconSide = 128;
constexpr int symbolSide = 64;

}  // namespace

ImagePtr QtIcons::ownIcon()
{
    if (!own) {
        loadResources();
        QImage picture(ownIconSide, ownIconSide, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        QSvgRenderer(QStringLiteral(":/korvane/korvane.svg")).render(&painter);
        painter.end();
        own = fromQImage(picture);
    }
    return own;
}

ImagePtr QtIcons::symbol(std::string_view name)
{
    if (const auto known = symbols.find(name); known != symbols.end())
        return known->second;
    ImagePtr picture = fromQImage(symbolImage(name, symbolSide, Qt::white));
    // The program chooses the names, so there are few; only names with a drawing are kept.
    if (picture)
        symbols.emplace(std::string(name), picture);
    return picture;
}

}  // namespace korvane::platform
