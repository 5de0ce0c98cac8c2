#include "tests/Ports/DefaultsContract.h"

#include <cmath>
#include <limits>

namespace korvane::platform {
namespace {

using Strings = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

void setOneOfEach(Defaults &defaults)
{
    defaults.setBoolean("boolean", false);
    defaults.setInteger("integer", -7);
    defaults.setNumber("number", 0.65);
    defaults.setString("string", "⚠️ <Korvane> & \"co\"\n\ttwo ]]>");
    defaults.setStrings("strings", {"a", "", "ⓚ"});
    defaults.setDictionary("dictionary", {{"com.apple.finder", "Custom:#0D1F36"}, {"", "empty key"}, {"k", ""}});
    defaults.setData("data", Bytes{0, 1, 254, 255, '<'});
}

void expectOneOfEach(Defaults &defaults)
{
    EXPECT_EQ(defaults.boolean("boolean"), false);
    EXPECT_EQ(defaults.integer("integer"), -7);
    EXPECT_EQ(defaults.number("number"), 0.65);
    EXPECT_EQ(defaults.string("string"), "⚠️ <Korvane> & \"co\"\n\ttwo ]]>");
    EXPECT_EQ(defaults.strings("strings"), (Strings{"a", "", "ⓚ"}));
    EXPECT_EQ(defaults.dictionary("dictionary"),
              (StringMap{{"com.apple.finder", "Custom:#0D1F36"}, {"", "empty key"}, {"k", ""}}));
    EXPECT_EQ(defaults.data("data"), (Bytes{0, 1, 254, 255, '<'}));
}

// Whether only the readers named in the letters give a value: b, i, n, s, l (list), d (dictionary), x (data).
std::string readersOf(Defaults &defaults, std::string_view key)
{
    std::string readers;
    const auto note = [&readers](char letter, bool present) {
        if (present)
            readers += letter;
    };
    note('b', defaults.boolean(key).has_value());
    note('i', defaults.integer(key).has_value());
    note('n', defaults.number(key).has_value());
    note('s', defaults.string(key).has_value());
    note('l', defaults.strings(key).has_value());
    note('d', defaults.dictionary(key).has_value());
    note('x', defaults.data(key).has_value());
    return readers;
}

}  // namespace

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DefaultsContract);

TEST_P(DefaultsContract, AnUnknownKeyIsAbsentInEveryType)
{
    EXPECT_FALSE(defaults().has("nothing"));
    EXPECT_EQ(readersOf(defaults(), "nothing"), "");
}

TEST_P(DefaultsContract, ValuesOfEveryTypeReadAsTheyWereSet)
{
    setOneOfEach(defaults());
    expectOneOfEach(defaults());
}

TEST_P(DefaultsContract, ValuesOfEveryTypeSurviveARestart)
{
    setOneOfEach(defaults());
    harness->reopen();
    expectOneOfEach(defaults());
    harness->reopen();
    expectOneOfEach(defaults());
}

TEST_P(DefaultsContract, AValueOfAnotherTypeReadsAsAbsentAndAnIntegerAlsoAsANumber)
{
    setOneOfEach(defaults());
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(readersOf(defaults(), "boolean"), "b");
        EXPECT_EQ(readersOf(defaults(), "integer"), "in");
        EXPECT_EQ(readersOf(defaults(), "number"), "n");
        EXPECT_EQ(readersOf(defaults(), "string"), "s");
        EXPECT_EQ(readersOf(defaults(), "strings"), "l");
        EXPECT_EQ(readersOf(defaults(), "dictionary"), "d");
        EXPECT_EQ(readersOf(defaults(), "data"), "x");
        for (const char *key : {"boolean", "integer", "number", "string", "strings", "dictionary", "data"})
            EXPECT_TRUE(defaults().has(key)) << key;
        harness->reopen();
    }
}

TEST_P(DefaultsContract, ANumberWithoutAFractionStaysANumber)
{
    defaults().setNumber("whole", 3.0);
    harness->reopen();
    EXPECT_EQ(defaults().number("whole"), 3.0);
    EXPECT_FALSE(defaults().integer("whole"));
}

TEST_P(DefaultsContract, NumbersKeepTheirLastBitOverARestart)
{
    const double numbers[] = {0.1, 1.0 / 3, -2.5e-9, 1e21, 123456.789, std::nextafter(18.0, 19.0), -0.25, 1e-300, 0.0};
    for (const double &number : numbers)
        defaults().setNumber(std::to_string(&number - numbers), number);
    harness->reopen();
    for (const double &number : numbers)
        EXPECT_EQ(defaults().number(std::to_string(&number - numbers)), number);
}

TEST_P(DefaultsContract, IntegersOfTheWholeRangeSurviveARestart)
{
    const std::int64_t integers[] = {0,
                                     1,
                                     -1,
                                     std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int64_t>::max(),
                                     std::numeric_limits<std::int64_t>::min()};
    for (const auto &integer : integers)
        defaults().setInteger(std::to_string(&integer - integers), integer);
    harness->reopen();
    for (const auto &integer : integers)
        EXPECT_EQ(defaults().integer(std::to_string(&integer - integers)), integer);
}

TEST_P(DefaultsContract, EmptyValuesArePresent)
{
    defaults().setString("string", "");
    defaults().setStrings("strings", {});
    defaults().setDictionary("dictionary", {});
    defaults().setData("data", {});
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(defaults().string("string"), "");
        EXPECT_EQ(defaults().strings("strings"), Strings());
        EXPECT_EQ(defaults().dictionary("dictionary"), StringMap());
        EXPECT_EQ(defaults().data("data"), Bytes());
        harness->reopen();
    }
}

TEST_P(DefaultsContract, ALaterValueTakesThePlaceOfTheEarlierAlsoOfAnotherType)
{
    defaults().setBoolean("key", true);
    defaults().setString("key", "now text");
    harness->reopen();
    EXPECT_EQ(readersOf(defaults(), "key"), "s");
    EXPECT_EQ(defaults().string("key"), "now text");
}

TEST_P(DefaultsContract, ARemovedKeyIsGoneForGood)
{
    defaults().setInteger("gone", 1);
    defaults().setInteger("kept", 2);
    harness->reopen();
    defaults().remove("gone");
    defaults().remove("never there");
    EXPECT_FALSE(defaults().has("gone"));
    harness->reopen();
    EXPECT_FALSE(defaults().has("gone"));
    EXPECT_EQ(defaults().integer("kept"), 2);
}

TEST_P(DefaultsContract, RemovingAllLeavesNothing)
{
    setOneOfEach(defaults());
    harness->reopen();
    defaults().removeAll();
    EXPECT_FALSE(defaults().has("boolean"));
    harness->reopen();
    EXPECT_FALSE(defaults().has("boolean"));
    EXPECT_FALSE(defaults().has("data"));
    defaults().setBoolean("boolean", true);
    EXPECT_EQ(defaults().boolean("boolean"), true);
}

TEST_P(DefaultsContract, BrokenTextDoesNotCostTheOtherSettings)
{
    defaults().setInteger("kept", 5);
    defaults().setString("odd", std::string("a\0\x01\x1b[2J\xff\xed\xa0\x80 z", 13));
    harness->reopen();
    EXPECT_EQ(defaults().integer("kept"), 5);
    const auto odd = defaults().string("odd");
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->front(), 'a');
    EXPECT_EQ(odd->back(), 'z');
}

}  // namespace korvane::platform
