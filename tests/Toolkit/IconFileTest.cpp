#include "Toolkit/IconFile.h"

#include "Toolkit/SvgCost.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace korvane::platform {
namespace {

QByteArray png(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(QColor(255, 0, 0, 128));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

QByteArray svg(const QByteArray &body)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
           "viewBox=\"0 0 10 10\">"
           + body + "</svg>";
}

// Every level draws the one below ten times.
QByteArray bomb(int levels)
{
    QByteArray body = "<defs><g id=\"l0\"><path d=\"M0 0L9 9\"/></g>";
    for (int level = 1; level <= levels; ++level) {
        body += "<g id=\"l" + QByteArray::number(level) + "\">";
        for (int i = 0; i < 10; ++i)
            body += "<use xlink:href=\"#l" + QByteArray::number(level - 1) + "\"/>";
        body += "</g>";
    }
    return svg(body + "</defs><use xlink:href=\"#l" + QByteArray::number(levels) + "\"/>");
}

}  // namespace

TEST(IconFile, ALargePictureIsMadeSmallerAndItsColoursArePremultiplied)
{
    const ImagePtr icon = decodeIcon(png(200, 200), 64);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 64);
    EXPECT_EQ(icon->height, 64);
    const auto middle = static_cast<std::size_t>(4 * (32 * 64 + 32));
    EXPECT_NEAR(icon->pixels[middle], 128, 2);
    EXPECT_EQ(icon->pixels[middle + 1], 0);
    EXPECT_NEAR(icon->pixels[middle + 3], 128, 2);
}

TEST(IconFile, ASmallPictureKeepsItsSize)
{
    EXPECT_EQ(decodeIcon(png(22, 22), 64)->width, 22);
}

TEST(IconFile, AnOblongPictureStandsInTheMiddleOfASquare)
{
    const ImagePtr icon = decodeIcon(png(200, 100), 64);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 64);
    EXPECT_EQ(icon->height, 64);
    EXPECT_EQ(icon->pixels[3], 0) << "the corner is clear";
    EXPECT_GT(icon->pixels[4 * (32 * 64 + 32) + 3], 100);
}

TEST(IconFile, ADrawingIsRenderedAtTheSizeAskedFor)
{
    const ImagePtr icon = decodeIcon(svg("<rect width=\"10\" height=\"10\" fill=\"#0f0\"/>"), 64);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 64);
    EXPECT_EQ(icon->pixels[4 * (32 * 64 + 32) + 1], 255);
}

TEST(IconFile, WhatIsNoPictureGivesNothing)
{
    for (const QByteArray &contents : {QByteArray(), QByteArray("garbage"), QByteArray("<html></html>"),
                                       QByteArray("<svg"), png(64, 64).left(60), QByteArray(5000, '\0')})
        EXPECT_FALSE(decodeIcon(contents, 64)) << contents.left(20).constData();
    EXPECT_FALSE(decodeIcon(png(8, 8), 0));
    EXPECT_FALSE(decodeIcon(png(8, 8), 1 << 20));
}

TEST(IconFile, ABitmapOfAbsurdSizeIsNotDecoded)
{
    EXPECT_FALSE(decodeIcon(png(5000, 2), 64));
}

TEST(IconFile, ADrawingThatRepeatsItselfWithoutEndIsNotRendered)
{
    EXPECT_TRUE(decodeIcon(bomb(2), 64));
    EXPECT_FALSE(decodeIcon(bomb(12), 64));
}

TEST(IconFile, OnlyRegularFilesAreRead)
{
    QTemporaryDir directory;
    const auto path = [&directory](const char *name) {
        return std::filesystem::path(directory.filePath(QLatin1String(name)).toStdString());
    };
    QFile file(directory.filePath(QStringLiteral("icon.png")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(png(16, 16));
    file.close();
    EXPECT_TRUE(loadIconFile(path("icon.png"), 64));
    EXPECT_FALSE(loadIconFile(path("missing.png"), 64));
    EXPECT_FALSE(loadIconFile("", 64));
    EXPECT_FALSE(loadIconFile(directory.path().toStdString(), 64));
    ASSERT_EQ(::mkfifo(path("pipe.png").c_str(), 0600), 0);
    EXPECT_FALSE(loadIconFile(path("pipe.png"), 64));
}

TEST(SvgCost, CountsWhatReferencesStandFor)
{
    EXPECT_EQ(svgCost(svg("<path/><path/>"), 1000), 3);
    EXPECT_EQ(svgCost(svg("<g id=\"a\"><path/></g><use href=\"#a\"/>"), 1000), 1 + 2 + 3);
    EXPECT_EQ(svgCost(bomb(30), 1000), 1000);
}

TEST(SvgCost, ACircleAndABottomlessNestCostEverything)
{
    EXPECT_EQ(svgCost(svg("<g id=\"a\"><use href=\"#a\"/></g>"), 1000), 1000);
    EXPECT_EQ(svgCost(svg(QByteArray("<g>").repeated(500) + QByteArray("</g>").repeated(500)), 1000), 1000);
    EXPECT_EQ(svgCost("<svg><g></svg>", 1000), 1000);
    EXPECT_EQ(svgCost("", 1000), 1000);
}

}  // namespace korvane::platform
