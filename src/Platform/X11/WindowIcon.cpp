#include "Platform/X11/WindowIcon.h"

#include <algorithm>

namespace korvane::platform::x11 {
namespace {

constexpr std::uint32_t wantedSide = 64, longestSide = 4096;

struct Picture {
    std::uint32_t width = 0, height = 0;
    std::span<const std::uint32_t> pixels;

    std::uint32_t side() const { return std::min(width, height); }
};

bool better(const Picture &left, const Picture &right)
{
    const bool enough = left.side() >= wantedSide, otherEnough = right.side() >= wantedSide;
    if (enough != otherEnough)
        return enough;
    return enough ? left.side() < right.side() : left.side() > right.side();
}

Picture choose(std::span<const std::uint32_t> data)
{
    Picture best;
    while (data.size() > 2) {
        const std::uint32_t width = data[0], height = data[1];
        if (width == 0 || height == 0 || width > longestSide || height > longestSide)
            break;
        const std::size_t count = static_cast<std::size_t>(width) * height;
        if (count > data.size() - 2)
            break;
        const Picture picture{width, height, data.subspan(2, count)};
        if (best.width == 0 || better(picture, best))
            best = picture;
        data = data.subspan(2 + count);
    }
    return best;
}

}  // namespace

ImagePtr windowIcon(std::span<const std::uint32_t> data)
{
    const Picture picture = choose(data);
    if (picture.width == 0)
        return nullptr;
    // Each pixel of the result is the mean of a square of the source. Nobody draws more than a few dozen pixels.
    const std::uint32_t factor = std::max(1U, picture.side() / wantedSide);
    auto image = std::make_shared<Image>();
    image->width = static_cast<int>(picture.width / factor);
    image->height = static_cast<int>(picture.height / factor);
    image->pixels.reserve(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * 4);
    const std::uint64_t area = static_cast<std::uint64_t>(factor) * factor;
    for (std::uint32_t row = 0; row < static_cast<std::uint32_t>(image->height); ++row) {
        for (std::uint32_t column = 0; column < static_cast<std::uint32_t>(image->width); ++column) {
            std::uint64_t sums[4] = {};
            for (std::uint32_t y = row * factor; y < (row + 1) * factor; ++y) {
                for (std::uint32_t x = column * factor; x < (column + 1) * factor; ++x) {
                    const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(y) * picture.width + x];
                    const std::uint64_t alpha = pixel >> 24;
                    sums[0] += (pixel >> 16 & 0xff) * alpha;
                    sums[1] += (pixel >> 8 & 0xff) * alpha;
                    sums[2] += (pixel & 0xff) * alpha;
                    sums[3] += alpha * 255;
                }
            }
            for (const std::uint64_t sum : sums)
                image->pixels.push_back(static_cast<std::uint8_t>((sum + area * 127) / (area * 255)));
        }
    }
    return image;
}

}  // namespace korvane::platform::x11
