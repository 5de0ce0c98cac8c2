// Over a made-up tree of devices.
#include "Platform/Linux/Backlight.h"

#include "tests/Platform/Linux/ManualLoop.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Ports/LevelContracts.h"

#include <cmath>
#include <fstream>
#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

class BacklightHarness final : public BrightnessHarness {
public:
    Brightness &brightness() override { return backlight; }
    void changeElsewhere(float level) override
    {
        const auto folder = directory.path() / "panel";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "max_brightness") << 1000;
        std::ofstream(folder / "brightness") << std::lround(level * 1000);
    }

private:
    TemporaryDirectory directory;
    ManualLoop loop;
    Backlight backlight{loop, {}, directory.path()};
};

INSTANTIATE_TEST_SUITE_P(Backlight, BrightnessContract, ::testing::Values([]() -> std::unique_ptr<BrightnessHarness> {
                             return std::make_unique<BacklightHarness>();
                         }));

class BacklightTree : public ::testing::Test {
protected:
    void add(const std::string &name, const std::string &type, int brightness, int maximum)
    {
        const auto folder = directory.path() / name;
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "type") << type << "\n";
        std::ofstream(folder / "brightness") << brightness << "\n";
        std::ofstream(folder / "max_brightness") << maximum << "\n";
    }
    std::string file(const std::string &name) const
    {
        std::ifstream stream(directory.path() / name / "brightness");
        std::string text;
        stream >> text;
        return text;
    }
    Backlight make()
    {
        return {loop,
                [this](const std::string &device, std::uint32_t brightness) {
                    asked.emplace_back(device, brightness);
                    return sessionAnswers;
                },
                directory.path()};
    }

    TemporaryDirectory directory;
    ManualLoop loop;
    std::vector<std::pair<std::string, std::uint32_t>> asked;
    bool sessionAnswers = true;
};

TEST_F(BacklightTree, TheLevelIsThePartOfTheMaximum)
{
    add("panel", "raw", 300, 1200);
    auto backlight = make();
    EXPECT_FLOAT_EQ(backlight.current().value(), 0.25F);
    EXPECT_TRUE(backlight.set(0.5F));
    EXPECT_EQ(file("panel"), "600");
    EXPECT_FLOAT_EQ(backlight.current().value(), 0.5F);
    EXPECT_TRUE(asked.empty());
}

TEST_F(BacklightTree, TheFirmwaresDeviceComesBeforeTheOthers)
{
    add("a_raw", "raw", 1, 10);
    add("b_firmware", "firmware", 2, 10);
    add("c_platform", "platform", 3, 10);
    auto backlight = make();
    EXPECT_FLOAT_EQ(backlight.current().value(), 0.2F);
    EXPECT_TRUE(backlight.set(1));
    EXPECT_EQ(file("b_firmware"), "10");
    EXPECT_EQ(file("a_raw"), "1");
}

TEST_F(BacklightTree, WithoutADeviceThereIsNothingToSet)
{
    auto backlight = make();
    EXPECT_FALSE(backlight.current());
    EXPECT_FALSE(backlight.set(0.5F));
    EXPECT_FALSE(Backlight(loop, {}, directory.path() / "missing").current());
}

TEST_F(BacklightTree, NonsenseInTheFilesIsNoDevice)
{
    add("zero", "raw", 5, 0);
    add("text", "raw", 5, 10);
    std::ofstream(directory.path() / "text" / "brightness") << "bright";
    EXPECT_FALSE(make().current());
    add("beyond", "raw", 500, 10);
    EXPECT_FLOAT_EQ(make().current().value(), 1.0F);
}

// A file of the kernel that nobody may write, whoever runs this.
TEST_F(BacklightTree, WhereTheFileIsNotToBeWrittenTheSessionIsAskedAndItsWishIsShownForAWhile)
{
    add("panel", "raw", 0, 1000);
    const auto file = directory.path() / "panel" / "brightness";
    std::filesystem::remove(file);
    std::filesystem::create_symlink("/proc/sys/kernel/cap_last_cap", file);
    auto backlight = make();
    const float before = backlight.current().value();
    ASSERT_GT(before, 0);
    ASSERT_LT(before, 0.5F);
    EXPECT_TRUE(backlight.set(0.8F));
    EXPECT_EQ(asked, (std::vector<std::pair<std::string, std::uint32_t>>{{"panel", 800}}));
    EXPECT_FLOAT_EQ(backlight.current().value(), 0.8F);
    loop.now = Seconds(0.5);
    EXPECT_FLOAT_EQ(backlight.current().value(), before);
    sessionAnswers = false;
    EXPECT_FALSE(backlight.set(0.9F));
    EXPECT_FLOAT_EQ(backlight.current().value(), before);
}

}  // namespace
}  // namespace korvane::platform
