#include "Platform/Linux/InstanceLock.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::platform {
namespace {

namespace fs = std::filesystem;
using Outcome = InstanceLock::Outcome;

class SingleLock : public ::testing::Test {
protected:
    Outcome take(InstanceLock &one) { return one.take({folder}, "one.lock"); }

    TemporaryDirectory directory;
    fs::path folder = directory.path() / "korvane";
    InstanceLock lock;
};

TEST_F(SingleLock, IsTakenOnceAndFreeAgainWhenItsOwnerHasGone)
{
    InstanceLock second, third;
    {
        InstanceLock first;
        EXPECT_EQ(take(first), Outcome::taken);
        EXPECT_EQ(take(second), Outcome::heldByOther);
        EXPECT_EQ(second.take({folder}, "other.lock"), Outcome::taken);
    }
    EXPECT_EQ(take(third), Outcome::taken);
}

TEST_F(SingleLock, OfAProcessThatDiedIsFree)
{
    const pid_t child = fork();
    if (child == 0) {
        // What it holds is let go of by the system alone.
        auto *first = new InstanceLock;
        _exit(take(*first) == Outcome::taken ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(fs::exists(folder / "one.lock"));
    EXPECT_EQ(take(lock), Outcome::taken);
}

TEST_F(SingleLock, LiesInAFolderForTheOwnerAlone)
{
    fs::create_directory(folder);
    fs::permissions(folder, fs::perms::all);
    EXPECT_EQ(take(lock), Outcome::taken);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder / "one.lock").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SingleLock, IsTakenInTheFirstFolderThatServes)
{
    EXPECT_EQ(lock.take({directory.path() / "missing" / "korvane", folder}, "one.lock"), Outcome::taken);
    EXPECT_TRUE(fs::exists(folder / "one.lock"));
    InstanceLock other;
    EXPECT_EQ(other.take({directory.path() / "missing" / "korvane"}, "one.lock"), Outcome::unavailable);
}

TEST_F(SingleLock, AFileOrAPipeOrALinkInThePlaceOfTheFolderIsReportedWithoutWaiting)
{
    writeFile(folder, "a file");
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_EQ(lock.obstacle(), folder);
    fs::remove(folder);
    ASSERT_EQ(mkfifo(folder.c_str(), 0666), 0);
    EXPECT_EQ(take(lock), Outcome::obstructed);
    fs::remove(folder);
    fs::create_directory(directory.path() / "elsewhere");
    fs::create_directory_symlink(directory.path() / "elsewhere", folder);
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_TRUE(fs::is_empty(directory.path() / "elsewhere"));
}

TEST_F(SingleLock, APipeOrALinkInThePlaceOfTheFileIsReportedWithoutWaiting)
{
    fs::create_directory(folder);
    ASSERT_EQ(mkfifo((folder / "one.lock").c_str(), 0666), 0);
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_EQ(lock.obstacle(), folder / "one.lock");
    fs::remove(folder / "one.lock");
    fs::create_symlink(directory.path() / "target", folder / "one.lock");
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_FALSE(fs::exists(directory.path() / "target"));
}

TEST_F(SingleLock, AnotherUsersFolderOrFileIsReported)
{
    constexpr uid_t somebodyElse = 65534;
    fs::create_directory(folder);
    writeFile(folder / "one.lock", "");
    if (::chown((folder / "one.lock").c_str(), somebodyElse, somebodyElse) != 0)
        GTEST_SKIP() << "only the system's administrator can make another user's file";
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_EQ(lock.obstacle(), folder / "one.lock");
    ASSERT_EQ(::chown(folder.c_str(), somebodyElse, somebodyElse), 0);
    EXPECT_EQ(take(lock), Outcome::obstructed);
    EXPECT_EQ(lock.obstacle(), folder);
}

TEST_F(SingleLock, ARuntimeFolderThatIsNotOursIsPassedOver)
{
    const auto count = [](const std::string &runtime) {
        const ScopedVariable variable("XDG_RUNTIME_DIR", runtime);
        return InstanceLock::standardFolders().size();
    };
    EXPECT_EQ(count(directory.path().string()), 2U);
    EXPECT_EQ(count(""), 1U);
    EXPECT_EQ(count("relative"), 1U);
    EXPECT_EQ(count((directory.path() / "missing").string()), 1U);
    fs::create_directory_symlink(directory.path(), directory.path() / "link");
    EXPECT_EQ(count((directory.path() / "link").string()), 1U);
}

}  // namespace
}  // namespace korvane::platform
