#include "Platform/Linux/IconTheme.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

class IconThemeTest : public testing::Test {
protected:
    IconThemeTest()
    {
        writeFile(folder() / "Paper/index.theme",
                  "[Icon Theme]\nName=Paper\nInherits=Base,Paper\nDirectories=16/apps,48/apps,256/apps,any/apps,../up\n"
                  "[16/apps]\nSize=16\n[48/apps]\nSize=48\n[256/apps]\nSize=256\n"
                  "[any/apps]\nSize=48\nMinSize=8\nMaxSize=512\nType=Scalable\n[../up]\nSize=64\n");
        writeFile(folder() / "Base/index.theme",
                  "[Icon Theme]\nDirectories=64,64@2\n[64]\nSize=64\n[64@2]\nSize=64\nScale=2\n");
        writeFile(folder() / "hicolor/index.theme", "[Icon Theme]\nDirectories=32/apps\n[32/apps]\nSize=32\n");
    }

    std::filesystem::path folder() const { return directory.path() / "icons"; }
    std::filesystem::path add(const std::string &path)
    {
        writeFile(folder() / path, "picture");
        return folder() / path;
    }
    std::filesystem::path find(std::string_view name, int side = 64, const std::string &theme = "Paper")
    {
        return IconTheme(theme, {folder(), directory.path() / "pixmaps"}).find(name, side);
    }

    TemporaryDirectory directory;
};

}  // namespace

TEST_F(IconThemeTest, TheNextLargerSizeIsTakenBeforeASmaller)
{
    const auto small = add("Paper/16/apps/editor.png");
    const auto middle = add("Paper/48/apps/editor.png");
    EXPECT_EQ(find("editor"), middle);
    const auto large = add("Paper/256/apps/editor.png");
    EXPECT_EQ(find("editor"), large);
    EXPECT_EQ(find("editor", 48), middle);
    EXPECT_EQ(find("editor", 10), small);
}

TEST_F(IconThemeTest, ADrawingForAllSizesFitsBest)
{
    add("Paper/256/apps/editor.png");
    const auto drawing = add("Paper/any/apps/editor.svg");
    EXPECT_EQ(find("editor"), drawing);
}

TEST_F(IconThemeTest, WhatAThemeLacksComesFromThoseItInheritsFromAndThenFromTheCommonOne)
{
    const auto common = add("hicolor/32/apps/tool.png");
    EXPECT_EQ(find("tool"), common);
    const auto inherited = add("Base/64@2/tool.png");
    EXPECT_EQ(find("tool"), inherited);
    const auto better = add("Base/64/tool.png");
    EXPECT_EQ(find("tool"), better);
    EXPECT_EQ(find("tool", 64, ""), common);
    EXPECT_EQ(find("tool", 64, "NoSuchTheme"), common);
}

TEST_F(IconThemeTest, PicturesWithoutAThemeAreTheLastResort)
{
    writeFile(directory.path() / "pixmaps/old-tool.xpm", "picture");
    EXPECT_EQ(find("old-tool"), directory.path() / "pixmaps/old-tool.xpm");
    EXPECT_EQ(find("old-tool.xpm"), directory.path() / "pixmaps/old-tool.xpm");
}

TEST_F(IconThemeTest, AnEndingInTheNameIsNoPartOfIt)
{
    const auto file = add("Paper/48/apps/editor.png");
    EXPECT_EQ(find("editor.png"), file);
    const auto dotted = add("Paper/48/apps/org.example.Tool.png");
    EXPECT_EQ(find("org.example.Tool"), dotted);
}

TEST_F(IconThemeTest, AnAbsolutePathStandsForItself)
{
    const auto file = add("elsewhere/x.png");
    EXPECT_EQ(find(file.string()), file);
    EXPECT_EQ(find("/nowhere/x.png"), "");
}

TEST_F(IconThemeTest, NamesThatLeadElsewhereFindNothing)
{
    writeFile(folder() / "up/secret.png", "picture");
    for (const std::string &name : {std::string(), std::string("."), std::string(".."), std::string("../up/secret"),
                                    std::string("a/b"), std::string("x\0y", 3), std::string(5000, 'x')})
        EXPECT_EQ(find(name), "") << name;
    EXPECT_EQ(find("secret"), "") << "a theme's list of folders does not lead out of it";
}

TEST_F(IconThemeTest, ABrokenIndexIsNoTheme)
{
    const auto common = add("hicolor/32/apps/tool.png");
    for (const char *text :
         {"", "garbage", "[Icon Theme]\nDirectories=a\n[a]\nSize=zz\n", "[Icon Theme]\nInherits=Paper\n"}) {
        writeFile(folder() / "Paper/index.theme", text);
        EXPECT_EQ(find("tool"), common) << text;
    }
}

}  // namespace korvane::platform
