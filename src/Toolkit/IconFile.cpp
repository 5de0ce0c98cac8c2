#include "Toolkit/IconFile.h"

#include "Toolkit/Images.h"
#include "Toolkit/SvgCost.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <functional>

namespace korvane::platform {
namespace {

constexpr qint64 largestIconFile = 4 << 20;
constexpr qsizetype largestDrawing = 1 << 20;
constexpr int largestIconSide = 4096;
constexpr int largestAnswer = 1024;
constexpr int costliestDrawing = 20000;  // how many elements may be drawn

bool looksLikeDrawing(const QByteArray &contents)
{
    const QByteArray start = contents.left(1024);
    return start.trimmed().startsWith('<') || start.contains("<svg");
}

QImage inSquare(QSize size, int side, const std::function<void(QPainter &, const QRectF &)> &draw)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    const QSizeF fitted = QSizeF(size).scaled(side, side, Qt::KeepAspectRatio);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    draw(painter, QRectF(QPointF((side - fitted.width()) / 2, (side - fitted.height()) / 2), fitted));
    return picture;
}

QImage drawingIn(const QByteArray &contents, int side)
{
    if (contents.size() > largestDrawing || svgCost(contents, costliestDrawing) >= costliestDrawing)
        return {};
    QSvgRenderer drawing;
    if (!drawing.load(contents))
        return {};
    QSize size = drawing.defaultSize();
    if (size.isEmpty())
        size = QSize(side, side);
    return inSquare(size, side,
                    [&drawing](QPainter &painter, const QRectF &place) { drawing.render(&painter, place); });
}

QImage bitmapIn(QByteArray contents, int side)
{
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    // Some formats have no size in their header; their size is known only after decoding. The reader limits the memory
    // for it.
    if (size.isValid() && (size.isEmpty() || size.width() > largestIconSide || size.height() > largestIconSide))
        return {};
    const QImage picture = reader.read();
    if (picture.isNull() || picture.width() > largestIconSide || picture.height() > largestIconSide)
        return {};
    const int longer = std::max(picture.width(), picture.height());
    if (longer > side) {
        const QImage smaller = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        return smaller.isNull() ? smaller : inSquare(smaller.size(), side, [&](QPainter &painter, const QRectF &place) {
            painter.drawImage(place.toRect(), smaller);
        });
    }
    return inSquare(picture.size(), longer, [&](QPainter &painter, const QRectF &place) {
        painter.drawImage(place.toRect().topLeft(), picture);
    });
}

}  // namespace

ImagePtr decodeIcon(const QByteArray &contents, int side)
{
    if (contents.isEmpty() || side < 1 || side > largestAnswer)
        return nullptr;
    return fromQImage(looksLikeDrawing(contents) ? drawingIn(contents, side) : bitmapIn(contents, side));
}

ImagePtr loadIconFile(const std::filesystem::path &path, int side)
{
    QFile file(QFile::decodeName(path.c_str()));
    // Opening a pipe or a device could block.
    const QFileInfo about(file);
    if (path.empty() || !about.isFile() || about.size() > largestIconFile || !file.open(QIODevice::ReadOnly))
        return nullptr;
    return decodeIcon(file.read(largestIconFile), side);
}

}  // namespace korvane::platform
