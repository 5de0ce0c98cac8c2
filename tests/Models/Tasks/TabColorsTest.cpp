#include "Models/Tasks/TabColors.h"
#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;

TEST(TabColors, AreReadInEitherCaseAndWrittenInCapitals)
{
    const auto lower = TabColors::storedTabColor("Custom:#0d1f36");
    ASSERT_TRUE(lower);
    EXPECT_EQ(lower, TabColors::storedTabColor("Custom:#0D1F36"));
    EXPECT_EQ(TabColors::storedCustomColor(*lower), "Custom:#0D1F36");
}

TEST(TabColors, WhatIsNotSixHexadecimalDigitsIsNoColour)
{
    for (const char *text : {"Custom:#12345", "Custom:#GGGGGG", "Custom:#1234567", "Custom:#+12345", "Custom:# 12345",
                             "custom:#123456", "#123456", "red", "", "Default"})
        EXPECT_FALSE(TabColors::storedTabColor(text)) << text;
    EXPECT_FALSE(TabColors::storedTabColor(std::nullopt));
}

TEST(TabColors, HalvesAreRoundedAwayFromZero)
{
    EXPECT_EQ(TabColors::storedCustomColor({0.5, 0, 1}), "Custom:#8000FF");
}

TEST(TabColors, EveryColourOfThePaletteButTheDefaultIsOne)
{
    for (const auto &color : TabColors::palette)
        EXPECT_EQ(TabColors::storedTabColor(std::string(color.text)).has_value(), color.text != "Default");
}

class LiveColors : public ModelFixture {
protected:
    LiveColors()
    {
        addApplication(1, "Mail", 1);
        start();
        model->setDefaultAppColorName("Blue", "org.example.Mail", {});
    }
    std::optional<std::string> color() { return model->liveTabColorName(idOf(1, 0)); }
};

TEST_F(LiveColors, TheDefaultChosenAsADefaultRemovesTheKey)
{
    EXPECT_EQ(desktop.defaults.dictionary("defaultAppColors")->at("org.example.Mail"), "Blue");
    model->setDefaultAppColorName(std::nullopt, "org.example.Mail", {});
    EXPECT_FALSE(desktop.defaults.dictionary("defaultAppColors")->contains("org.example.Mail"));
    EXPECT_FALSE(color());
}

TEST_F(LiveColors, ATabMadePlainStaysPlainUntilTheRepaint)
{
    EXPECT_EQ(color(), "Blue");
    model->setLiveTabColorName(std::nullopt, idOf(1, 0));
    model->refresh();
    advance(10);
    EXPECT_FALSE(color());
    model->manualRefreshAndRepaint();
    EXPECT_EQ(color(), "Blue");
}

TEST_F(LiveColors, AColourSetByHandSurvivesRefreshesAndGoesWithItsWindow)
{
    model->setLiveTabColorName("Red", idOf(1, 0));
    model->manualRefreshAndRepaint();
    advance(10);
    EXPECT_EQ(color(), "Red");
    desktop.applications.closeWindow(1, hashOf(1, 0));
    advance(0.1);
    EXPECT_FALSE(color());
    EXPECT_TRUE(model->manualLiveColorIDs().empty());
}

TEST_F(LiveColors, ANewDefaultOvertakesTheColourThatWasSetByHand)
{
    model->setLiveTabColorName("Red", idOf(1, 0));
    model->setDefaultAppColorName("Green", "org.example.Mail", {idOf(1, 0)});
    EXPECT_EQ(color(), "Green");
}

TEST_F(LiveColors, ASettingOfTheSameColourTellsNobody)
{
    model->setLiveTabColorName("Red", idOf(1, 0));
    auto told = countPublished(ModelProperty::modelChanged);
    model->setLiveTabColorName("Red", idOf(1, 0));
    EXPECT_EQ(told->value, 0);
    model->setLiveTabColorName("Gray", idOf(1, 0));
    EXPECT_EQ(told->value, 1);
}

}  // namespace
}  // namespace korvane
