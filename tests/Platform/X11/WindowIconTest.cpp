#include "Platform/X11/WindowIcon.h"

#include <gtest/gtest.h>
#include <random>

namespace korvane::platform::x11 {
namespace {

void add(std::vector<std::uint32_t> &data, std::uint32_t width, std::uint32_t height, std::uint32_t pixel)
{
    data.push_back(width);
    data.push_back(height);
    data.insert(data.end(), static_cast<std::size_t>(width) * height, pixel);
}

TEST(WindowIcon, TheSmallestOfAtLeastTheSizeWantedIsTaken)
{
    std::vector<std::uint32_t> data;
    for (const std::uint32_t side : {16U, 128U, 64U, 32U, 256U})
        add(data, side, side, 0xff000000 | side);
    const auto icon = windowIcon(data);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 64);
    EXPECT_EQ(icon->pixels[2], 64);
}

TEST(WindowIcon, ElseTheLargestIsTaken)
{
    std::vector<std::uint32_t> data;
    for (const std::uint32_t side : {16U, 48U, 32U})
        add(data, side, side, 0xffffffff);
    EXPECT_EQ(windowIcon(data)->width, 48);
}

TEST(WindowIcon, ALargeOneIsMadeSmallerByMeans)
{
    std::vector<std::uint32_t> data{512, 256};
    for (int i = 0; i < 512 * 256; ++i)
        data.push_back(i % 2 ? 0xff0000ff : 0x00ff0000);
    const auto icon = windowIcon(data);
    EXPECT_EQ(icon->width, 128);
    EXPECT_EQ(icon->height, 64);
    ASSERT_EQ(icon->pixels.size(), 128U * 64 * 4);
    // Half of it is transparent, whatever colour it has there.
    EXPECT_EQ(icon->pixels[0], 0);
    EXPECT_NEAR(icon->pixels[2], 128, 1);
    EXPECT_NEAR(icon->pixels[3], 128, 1);
}

TEST(WindowIcon, ColoursArePremultiplied)
{
    const std::vector<std::uint32_t> data{2, 1, 0x80ff8000, 0xff010203};
    EXPECT_EQ(windowIcon(data)->pixels, (std::vector<std::uint8_t>{128, 64, 0, 128, 1, 2, 3, 255}));
}

TEST(WindowIcon, WhatCannotBeAPictureIsNone)
{
    using Data = std::vector<std::uint32_t>;
    for (const Data &data : {Data{}, Data{1}, Data{1, 1}, Data{0, 5, 1, 2, 3}, Data{2, 2, 1, 2, 3},
                             Data{0xffffffff, 0xffffffff, 0}, Data{0x10000, 0x10000, 0}, Data{5000, 1, 0}})
        EXPECT_EQ(windowIcon(data), nullptr);
    EXPECT_EQ(windowIcon(Data{1, 1, 0xffffffff, 9, 9, 0})->width, 1);
}

TEST(WindowIcon, NoDataBreaksIt)
{
    std::mt19937 random(1);
    for (int round = 0; round < 5'000; ++round) {
        std::vector<std::uint32_t> data(random() % 300);
        for (auto &number : data)
            number = random() % 4 ? static_cast<std::uint32_t>(random() % 20) : static_cast<std::uint32_t>(random());
        if (const auto icon = windowIcon(data)) {
            ASSERT_EQ(icon->pixels.size(), static_cast<std::size_t>(icon->width * icon->height * 4));
        }
    }
}

}  // namespace
}  // namespace korvane::platform::x11
