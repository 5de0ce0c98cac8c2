#include "Ports/ObserverList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace korvane::platform {
namespace {

using testing::ElementsAre;

class ObserverListTest : public testing::Test {
protected:
    // An observer that notes that it was told.
    Subscription add(const std::string &name)
    {
        return list->add([this, name] { told.push_back(name); });
    }

    std::optional<ObserverList<>> list{std::in_place};
    std::vector<std::string> told;
};

TEST_F(ObserverListTest, TellsEverybodyInTheOrderOfTheirComing)
{
    const auto first = add("first"), second = add("second"), third = add("third");
    list->notify();
    EXPECT_THAT(told, ElementsAre("first", "second", "third"));
}

TEST_F(ObserverListTest, HandsTheArgumentsToEachObserver)
{
    ObserverList<std::string, int> texts;
    std::string seen;
    const auto note = [&](const std::string &text, int number) { seen += text + std::to_string(number) + " "; };
    const auto one = texts.add(note), other = texts.add(note);
    texts.notify("a text too long for the small buffer of a string ", 7);
    EXPECT_EQ(seen, "a text too long for the small buffer of a string 7 "
                    "a text too long for the small buffer of a string 7 ");
}

TEST_F(ObserverListTest, AnEndedSubscriptionIsNotToldAndNotCounted)
{
    auto ending = add("ending");
    const auto staying = add("staying");
    EXPECT_EQ(list->count(), 2u);
    ending.reset();
    EXPECT_EQ(list->count(), 1u);
    list->notify();
    EXPECT_THAT(told, ElementsAre("staying"));
}

TEST_F(ObserverListTest, AnEndedSubscriptionGivesBackWhatItsObserverHeld)
{
    auto held = std::make_shared<int>(0);
    auto subscription = list->add([held] {});
    subscription.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(ObserverListTest, AnObserverMayEndItselfAndGoOnWithWhatItHolds)
{
    Subscription subscription;
    subscription = list->add([this, &subscription, name = std::string("what only the observer itself holds")] {
        subscription.reset();
        told.push_back(name);
    });
    const auto other = add("other");
    list->notify();
    list->notify();
    EXPECT_THAT(told, ElementsAre("what only the observer itself holds", "other", "other"));
}

TEST_F(ObserverListTest, AnObserverThatEndsMeanwhileIsNotToldAnyMore)
{
    Subscription later;
    const auto ending = list->add([&] { later.reset(); });
    later = add("later");
    const auto last = add("last");
    list->notify();
    EXPECT_THAT(told, ElementsAre("last"));
}

TEST_F(ObserverListTest, AnObserverThatIsAddedMeanwhileWaitsForTheNextTime)
{
    Subscription added;
    const auto adding = list->add([&] {
        if (!added)
            added = add("added");
    });
    list->notify();
    EXPECT_TRUE(told.empty());
    list->notify();
    EXPECT_THAT(told, ElementsAre("added"));
}

TEST_F(ObserverListTest, ToldAnewWhileItTellsEverybodyHearsBoth)
{
    bool again = true;
    const auto repeating = list->add([&] {
        if (std::exchange(again, false))
            list->notify();
    });
    const auto other = add("other");
    list->notify();
    EXPECT_THAT(told, ElementsAre("other", "other"));
}

TEST_F(ObserverListTest, ASubscriptionMayOutliveTheList)
{
    auto subscription = add("observer");
    list.reset();
    subscription.reset();
    EXPECT_TRUE(told.empty());
}

TEST_F(ObserverListTest, NobodyElseIsToldOnceTheListIsDestroyed)
{
    const auto destroying = list->add([this] { list.reset(); });
    const auto later = add("later");
    list->notify();
    EXPECT_FALSE(list);
    EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace korvane::platform
