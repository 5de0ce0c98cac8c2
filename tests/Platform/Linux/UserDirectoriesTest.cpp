#include "Platform/Linux/UserDirectories.h"

#include "tests/Platform/Linux/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace korvane::platform {

TEST(UserDirectories, AnAbsoluteVariableIsTaken)
{
    const ScopedVariable home("HOME", "/home/x");
    const ScopedVariable config("XDG_CONFIG_HOME", "/elsewhere/config");
    EXPECT_EQ(userConfigDirectory(), "/elsewhere/config");
}

TEST(UserDirectories, AnEmptyOrRelativeVariableCountsAsMissing)
{
    const ScopedVariable home("HOME", "/home/x");
    for (const char *value : {"", "relative/config"}) {
        const ScopedVariable config("XDG_CONFIG_HOME", value);
        const ScopedVariable cache("XDG_CACHE_HOME", value);
        const ScopedVariable data("XDG_DATA_HOME", value);
        EXPECT_EQ(userConfigDirectory(), "/home/x/.config");
        EXPECT_EQ(userCacheDirectory(), "/home/x/.cache");
        EXPECT_EQ(userDataDirectory(), "/home/x/.local/share");
    }
}

TEST(UserDirectories, DataIsLookedForInTheUsersDirectoryFirstAndNowhereTwice)
{
    const ScopedVariable data("XDG_DATA_HOME", "/mine");
    const ScopedVariable list("XDG_DATA_DIRS", "/a::relative:/b:/a:/mine");
    EXPECT_EQ(dataDirectories(), (std::vector<std::filesystem::path>{"/mine", "/a", "/b"}));
    const ScopedVariable none("XDG_DATA_DIRS", "");
    EXPECT_EQ(dataDirectories(), (std::vector<std::filesystem::path>{"/mine", "/usr/local/share", "/usr/share"}));
}

TEST(UserDirectories, TheRunningExecutableIsThisTest)
{
    EXPECT_EQ(runningExecutable().filename(), "platform_linux_tests");
}

}  // namespace korvane::platform
