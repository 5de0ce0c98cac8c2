#include "tests/Ports/TextContract.h"

#include <string>

namespace korvane::platform {

using namespace std::string_literals;

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TextContract);

TEST_P(TextContract, CaseIsIgnoredAlsoBeyondAscii)
{
    EXPECT_EQ(text->caseInsensitive("Finder", "fINDER"), 0);
    EXPECT_EQ(text->caseInsensitive("ÄÖÜ", "äöü"), 0);
    EXPECT_EQ(text->caseInsensitive("ΑΒΓ", "αβγ"), 0);
    EXPECT_NE(text->caseInsensitive("Finder", "Finders"), 0);
    EXPECT_NE(text->caseInsensitive("a", "ä"), 0);
}

TEST_P(TextContract, TheOrderIsAntisymmetric)
{
    const char *words[] = {"", "a", "B", "c", "Zebra", "äpfel", "éclair", "日本"};
    for (const char *left : words)
        for (const char *right : words) {
            const int forward = text->localizedCaseInsensitive(left, right);
            const int backward = text->localizedCaseInsensitive(right, left);
            EXPECT_EQ(forward > 0, backward < 0) << left << " and " << right;
            EXPECT_EQ(forward == 0, backward == 0) << left << " and " << right;
        }
}

TEST_P(TextContract, LettersSortWithoutRegardToCase)
{
    EXPECT_LT(text->localizedCaseInsensitive("alpha", "Beta"), 0);
    EXPECT_LT(text->localizedCaseInsensitive("Alpha", "beta"), 0);
    EXPECT_EQ(text->localizedCaseInsensitive("Alpha", "aLPHA"), 0);
}

TEST_P(TextContract, BlanksOfEveryKindAreTrimmedAtBothEndsOnly)
{
    EXPECT_EQ(text->trimmed(" \t\r\n a b \n"), "a b");
    EXPECT_EQ(text->trimmed("\u00a0\u2003x\u3000\u2029"), "x");
    EXPECT_EQ(text->trimmed("\u2028\u0085"), "");
    EXPECT_EQ(text->trimmed(""), "");
    EXPECT_EQ(text->trimmed("plain"), "plain");
}

TEST_P(TextContract, TheFirstCharacterIsWhatAPersonSees)
{
    EXPECT_EQ(text->firstCharacter(""), "");
    EXPECT_EQ(text->firstCharacter("Korvane"), "K");
    EXPECT_EQ(text->firstCharacter("e\u0301clair"), "e\u0301");
    EXPECT_EQ(text->firstCharacter("👍🏽 yes"), "👍🏽");
    EXPECT_EQ(text->firstCharacter("👩‍👩‍👧x"), "👩‍👩‍👧");
    EXPECT_EQ(text->firstCharacter("🇩🇪🇫🇷"), "🇩🇪");
}

TEST_P(TextContract, BrokenTextIsSurvived)
{
    const std::string broken = "\xff\xfe\xc3"s;
    EXPECT_EQ(text->trimmed(broken), broken);
    text->firstCharacter(broken);
    EXPECT_EQ(text->caseInsensitive(broken, broken), 0);
    EXPECT_EQ(text->localizedCaseInsensitive(broken, broken), 0);
    const std::string withZero = "a\0b"s;
    EXPECT_NE(text->caseInsensitive(withZero, "a"), 0);
}

}  // namespace korvane::platform
