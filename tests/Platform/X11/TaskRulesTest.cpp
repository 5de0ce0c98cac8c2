#include "Platform/X11/TaskRules.h"

#include <gtest/gtest.h>
#include <map>

namespace korvane::platform::x11 {
namespace {

class TaskRules : public ::testing::Test {
protected:
    WindowRecord &add(WindowId id)
    {
        windows[id].id = id;
        return windows[id];
    }
    bool task(WindowId id) { return isTask(windows.at(id), find); }
    WindowId taskOf(WindowId id)
    {
        const WindowRecord *window = taskFor(id, find);
        return window ? window->id : 0;
    }

    std::map<WindowId, WindowRecord> windows;
    FindWindow find = [this](WindowId id) -> const WindowRecord * {
        const auto known = windows.find(id);
        return known == windows.end() ? nullptr : &known->second;
    };
};

TEST_F(TaskRules, OrdinaryWindowsAreTasksAndOthersAreNot)
{
    EXPECT_TRUE((add(1), task(1)));
    add(2).kind = WindowKind::dock;
    add(3).kind = WindowKind::desktop;
    add(4).kind = WindowKind::transitory;
    add(5).skipsTaskbar = true;
    for (WindowId id = 2; id <= 5; ++id)
        EXPECT_FALSE(task(id)) << id;
}

TEST_F(TaskRules, ADialogIsATaskUnlessItIsModalForOne)
{
    add(1);
    add(2).transientFor = 1;
    auto &modal = add(3);
    modal.transientFor = 1;
    modal.modal = true;
    EXPECT_TRUE(task(2));
    EXPECT_FALSE(task(3));
    // Its owner is none, so somebody has to stand for both.
    windows[1].skipsTaskbar = true;
    EXPECT_TRUE(task(3));
    windows.erase(1);
    EXPECT_TRUE(task(3));
}

TEST_F(TaskRules, ADialogOfADialogLeadsToTheTask)
{
    add(1);
    for (const WindowId id : {2U, 3U}) {
        add(id).transientFor = id - 1;
        windows[id].modal = true;
    }
    // The second is modal for one that is no task.
    EXPECT_FALSE(task(2));
    EXPECT_TRUE(task(3));
    EXPECT_EQ(taskOf(2), 1U);
    EXPECT_EQ(taskOf(3), 3U);
    windows[3].skipsTaskbar = true;
    EXPECT_EQ(taskOf(3), 1U);
    EXPECT_EQ(taskOf(99), 0U);
}

TEST_F(TaskRules, WindowsThatNameThemselvesOrEachOtherDoNotHang)
{
    auto &self = add(1);
    self.transientFor = 1;
    self.modal = true;
    EXPECT_TRUE(task(1));
    for (const WindowId id : {2U, 3U}) {
        add(id).transientFor = 5 - id;
        windows[id].modal = true;
    }
    // One of the two at least is left.
    EXPECT_TRUE(task(2) || task(3));
    windows[2].skipsTaskbar = windows[3].skipsTaskbar = true;
    EXPECT_EQ(taskOf(2), 0U);
}

}  // namespace
}  // namespace korvane::platform::x11
