#include "Platform/X11/CompoundText.h"

#include <gtest/gtest.h>
#include <random>

namespace korvane::platform::x11 {
namespace {

TEST(CompoundText, WithoutAnnouncementsItIsLatin)
{
    EXPECT_EQ(compoundTextToUtf8("caf\xe9"), "caf\u00e9");
}

TEST(CompoundText, TheUpperHalfIsThatOfTheAnnouncedPart)
{
    EXPECT_EQ(compoundTextToUtf8("\x1b-F\xe1\xe2"), "\u03b1\u03b2");
    EXPECT_EQ(compoundTextToUtf8("a\x1b-L\xd0\x1b-A\xe9"), "a\u0430\u00e9");
    EXPECT_EQ(compoundTextToUtf8("\x1b-B\xb1"), "\u0105");
}

TEST(CompoundText, TwoBytesMakeACharacterOfTheEasternSets)
{
    EXPECT_EQ(compoundTextToUtf8("\x1b$(B\x46\x7c\x4b\x5c\x1b(B!"), "\u65e5\u672c!");
    EXPECT_EQ(compoundTextToUtf8("\x1b$(A\x56\x50\x1b(Bx"), "\u4e2dx");
    EXPECT_EQ(compoundTextToUtf8("\x1b$)C\xc7\xd1"), "\ud55c");
}

TEST(CompoundText, ASegmentMayBeUtf8)
{
    EXPECT_EQ(compoundTextToUtf8("a\x1b%G\u20ac\x1b%@b"), "a\u20acb");
    EXPECT_EQ(compoundTextToUtf8("\x1b%G\u20ac"), "\u20ac");
}

TEST(CompoundText, ExtendedSegmentsAreLeftOut)
{
    EXPECT_EQ(compoundTextToUtf8(std::string("a\x1b%/1\x80\x83xyzb")), "ab");
    EXPECT_EQ(compoundTextToUtf8("a\x1b%/1\xff\xffxy"), "a");
}

TEST(CompoundText, NoBytesBreakIt)
{
    std::mt19937 random(1);
    const std::string_view likely = "\x1b$()-%/ABCFGL@\x80\xff";
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes;
        for (auto left = random() % 24; left > 0; --left)
            bytes += random() % 2 ? likely[random() % likely.size()] : static_cast<char>(random());
        EXPECT_LE(compoundTextToUtf8(bytes).size(), bytes.size() * 4 + 4);
    }
}

}  // namespace
}  // namespace korvane::platform::x11
