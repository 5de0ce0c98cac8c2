#include "Models/Tasks/WindowMemory.h"
#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

using testing::makeItem;
using testing::pointersTo;

// Two windows of Mail and one of Notes; `active` names the one with the focus.
std::vector<RunningAppItem> desktop(const std::string &active)
{
    std::vector<RunningAppItem> items{makeItem("a", 1, 0, "Mail"), makeItem("b", 1, 1, "Mail"),
                                      makeItem("n", 2, 0, "Notes")};
    for (RunningAppItem &item : items)
        item.isActive = item.id == active;
    return items;
}

class Memory : public ::testing::Test {
protected:
    WindowMemory::Changes see(const std::vector<RunningAppItem> &items)
    {
        return memory.updatePreviousWindows(pointersTo(items));
    }
    bool isPrevious(const std::string &id, const std::string &active = "")
    {
        for (const RunningAppItem &item : desktop(active))
            if (item.id == id)
                return memory.isPreviousWindow(item);
        return false;
    }
    WindowMemory memory;
};

TEST_F(Memory, TheStripStaysWithTheLastActiveWindowWhileNoneIsActive)
{
    see(desktop("a"));
    see(desktop(""));
    EXPECT_EQ(memory.activeBlueStripWindowID(), "a");
    EXPECT_TRUE(memory.isActiveBlueStripWindow(desktop("")[0]));
}

TEST_F(Memory, ClosingTheWindowWithTheStripClearsIt)
{
    see(desktop("a"));
    auto items = desktop("");
    items.erase(items.begin());
    EXPECT_TRUE(see(items).activeStrip);
    EXPECT_FALSE(memory.activeBlueStripWindowID());
}

TEST_F(Memory, WithinAnApplicationTheWindowLeftIsThePreviousOne)
{
    see(desktop("a"));
    see(desktop("b"));
    EXPECT_TRUE(isPrevious("a", "b"));
    EXPECT_FALSE(isPrevious("b", "b"));
    EXPECT_FALSE(isPrevious("n", "b"));
}

TEST_F(Memory, AnApplicationThatLosesTheFocusRemembersTheWindowThatItLost)
{
    see(desktop("a"));
    see(desktop("n"));
    EXPECT_TRUE(isPrevious("a", "n"));
    EXPECT_EQ(memory.previousWindowIDsByApplication().size(), 1U);
}

TEST_F(Memory, AnActiveWindowIsNeverAPreviousOne)
{
    see(desktop("a"));
    see(desktop("n"));
    see(desktop("a"));
    EXPECT_FALSE(isPrevious("a", "a"));
}

TEST_F(Memory, RepeatingTheSameListChangesNothing)
{
    see(desktop("a"));
    see(desktop("n"));
    const auto changes = see(desktop("n"));
    EXPECT_FALSE(changes.activeStrip);
    EXPECT_FALSE(changes.previousWindows);
}

TEST(RecentWindows, AKnownWindowMovesToTheFrontAndTheListKeepsItsLength)
{
    std::vector<std::string> recents{"1", "2", "3", "4", "5", "6"};
    RecentWindows::record(recents, "5");
    EXPECT_EQ(recents, (std::vector<std::string>{"5", "1", "2", "3", "4", "6"}));
}

TEST(RecentWindows, TheNinthPushesOutTheOldest)
{
    std::vector<std::string> recents{"1", "2", "3", "4", "5", "6", "7", "8"};
    RecentWindows::record(recents, "9");
    EXPECT_EQ(recents, (std::vector<std::string>{"9", "1", "2", "3", "4", "5", "6", "7"}));
}

}  // namespace
}  // namespace korvane
