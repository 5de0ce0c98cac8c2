#include "Toolkit/Images.h"

#include <cstring>

namespace korvane::platform {

QImage toQImage(const Image &image)
{
    if (image.width <= 0 || image.height <= 0)
        return {};
    const auto rowBytes = static_cast<std::size_t>(image.width) * 4;
    if (image.pixels.size() / rowBytes != static_cast<std::size_t>(image.height) || image.pixels.size() % rowBytes != 0)
        return {};
    return QImage(image.pixels.data(), image.width, image.height, static_cast<qsizetype>(rowBytes),
                  QImage::Format_RGBA8888_Premultiplied)
        .copy();
}

ImagePtr fromQImage(const QImage &picture)
{
    if (picture.isNull())
        return nullptr;
    const QImage source = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    if (source.isNull())
        return nullptr;
    auto image = std::make_shared<Image>();
    image->width = source.width();
    image->height = source.height();
    const auto rowBytes = static_cast<std::size_t>(source.width()) * 4;
    image->pixels.resize(rowBytes * static_cast<std::size_t>(source.height()));
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(image->pixels.data() + rowBytes * static_cast<std::size_t>(y), source.constScanLine(y), rowBytes);
    return image;
}

}  // namespace korvane::platform
