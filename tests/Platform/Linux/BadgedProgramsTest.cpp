#include "Platform/Linux/BadgedPrograms.h"

#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

TEST(BadgedPrograms, AProcessBecomesTheApplicationOfItsEntry)
{
    std::vector<std::string> asked;
    const auto programs =
        badgedPrograms({{"org.example.Mail.desktop", "7"}, {"gone.desktop", "1"}},
                       {{"gone.desktop", 3}, {"org.example.Mail.desktop", 42}}, [&](std::string_view identifier) {
                           asked.emplace_back(identifier);
                           return identifier == "gone"
                                      ? std::nullopt
                                      : std::optional<ApplicationIdentity>(
                                          {"Post", "com.apple.mail", "/a/org.example.Mail.desktop", "post"});
                       });
    EXPECT_EQ(asked, (std::vector<std::string>{"gone", "org.example.Mail"}));
    EXPECT_EQ(programs.labels.size(), 2U);
    ASSERT_EQ(programs.processes.size(), 1U);
    EXPECT_EQ(programs.processes[0].snapshot.pid, 42);
    EXPECT_EQ(programs.processes[0].snapshot.localizedName, "Post");
    EXPECT_EQ(programs.processes[0].snapshot.bundleIdentifier, "com.apple.mail");
    EXPECT_EQ(programs.processes[0].snapshot.bundlePath, "/a/org.example.Mail.desktop");
    EXPECT_EQ(programs.processes[0].iconName, "post");
}

}  // namespace
}  // namespace korvane::platform
