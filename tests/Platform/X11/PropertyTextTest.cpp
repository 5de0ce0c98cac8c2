#include "Platform/X11/PropertyText.h"

#include <gtest/gtest.h>

namespace korvane::platform::x11 {
namespace {

TEST(PropertyText, WhatIsValidStays)
{
    EXPECT_EQ(cleanText(""), "");
    EXPECT_EQ(cleanText("plain"), "plain");
    EXPECT_EQ(cleanText("a\u00e9\u20ac\U0001F600"), "a\u00e9\u20ac\U0001F600");
}

TEST(PropertyText, ControlCharactersAndLineEndsBecomeBlanks)
{
    EXPECT_EQ(cleanText(std::string_view("a\tb\nc\0d\x7f", 8)), "a b c d ");
    EXPECT_EQ(cleanText("\u0085|\u2028|\u2029"), " | | ");
}

TEST(PropertyText, WhatIsNoTextBecomesTheReplacementCharacter)
{
    EXPECT_EQ(cleanText("\xff"), "\ufffd");
    EXPECT_EQ(cleanText("\x80"), "\ufffd");
    EXPECT_EQ(cleanText("\xc0\x80"), "\ufffd\ufffd");
    EXPECT_EQ(cleanText("\xe0\x80\x80"), "\ufffd");
    EXPECT_EQ(cleanText("\xed\xa0\x80"), "\ufffd");
    EXPECT_EQ(cleanText("\xf4\x90\x80\x80"), "\ufffd");
    EXPECT_EQ(cleanText("\xf0\x9f\x98"), "\ufffd");
    EXPECT_EQ(cleanText("\xc3(x"), "\ufffd(x");
}

TEST(PropertyText, TheCutIsAtACharacter)
{
    std::string text, longer;
    for (std::size_t i = 0; i < longestText + 7; ++i) {
        longer += "\U0001F600";
        if (i < longestText)
            text += "\U0001F600";
    }
    EXPECT_EQ(cleanText(longer), text);
    EXPECT_EQ(cleanText(text), text);
    EXPECT_EQ(cleanLatin1(std::string(longestText + 1, 'x')), std::string(longestText, 'x'));
}

TEST(PropertyText, TheOlderEncodingHasOneByteACharacter)
{
    EXPECT_EQ(cleanLatin1("caf\xe9 \x9f"), "caf\u00e9  ");
    EXPECT_EQ(latin1ToUtf8("\xff"), "\u00ff");
}

TEST(PropertyText, AClassIsTwoTextsEachEndedByAZero)
{
    using Texts = std::pair<std::string, std::string>;
    EXPECT_EQ(splitClass(std::string_view("mail\0Mail\0", 10)), (Texts{"mail", "Mail"}));
    EXPECT_EQ(splitClass(std::string_view("mail\0Mail", 9)), (Texts{"mail", "Mail"}));
    EXPECT_EQ(splitClass(std::string_view("mail\0Mail\0more\0", 15)), (Texts{"mail", "Mail"}));
    EXPECT_EQ(splitClass("mail"), (Texts{"mail", ""}));
    EXPECT_EQ(splitClass(std::string_view("\0\0", 2)), (Texts{"", ""}));
    EXPECT_EQ(splitClass(""), (Texts{"", ""}));
}

}  // namespace
}  // namespace korvane::platform::x11
